#include "Platform/JSON.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

namespace nolfa {

namespace {

using Foreign = nlohmann::ordered_json;

/// Builds our value from the parser's events, so that no second tree is made on the way. Depth costs heap, not
/// stack, while reading; it is limited all the same because a value is destroyed, compared and written recursively.
class Builder : public nlohmann::json_sax<Foreign> {
public:
    static constexpr std::size_t deepest = 1000;

    bool null() override { return add(JSON()); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return add(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t & /*text*/) override { return add(value); }
    bool string(string_t &value) override { return add(std::move(value)); }
    bool binary(binary_t & /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override { return open(JSON::Object()); }
    bool start_array(std::size_t /*size*/) override { return open(JSON::Array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t &name) override
    {
        m_names.back() = std::move(name);
        return true;
    }
    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &) override { return false; }

    JSON result;

private:
    bool open(JSON container)
    {
        if (m_open.size() == deepest)
            return false;
        m_open.push_back(std::move(container));
        m_names.emplace_back();
        return true;
    }

    bool close()
    {
        JSON finished = std::move(m_open.back());
        m_open.pop_back();
        m_names.pop_back();
        return add(std::move(finished));
    }

    bool add(JSON item)
    {
        if (m_open.empty())
            result = std::move(item);
        else if (auto *items = std::get_if<JSON::Array>(&m_open.back().value))
            items->push_back(std::move(item));
        else
            std::get<JSON::Object>(m_open.back().value).emplace_back(std::move(m_names.back()), std::move(item));
        return true;
    }

    std::vector<JSON> m_open;
    std::vector<std::string> m_names;
};

Foreign foreign(const JSON &json);

struct ToForeign {
    Foreign operator()(std::nullptr_t) const { return nullptr; }
    Foreign operator()(bool value) const { return value; }
    Foreign operator()(double value) const
    {
        // Counts look like counts.
        constexpr double exact = 9007199254740992.0;
        if (std::trunc(value) == value && std::abs(value) <= exact)
            return static_cast<std::int64_t>(value);
        return value;
    }
    Foreign operator()(const std::string &value) const { return value; }
    Foreign operator()(const JSON::Array &items) const
    {
        Foreign result = Foreign::array();
        for (const JSON &item : items)
            result.push_back(foreign(item));
        return result;
    }
    Foreign operator()(const JSON::Object &members) const
    {
        Foreign result = Foreign::object();
        for (const auto &[name, value] : members)
            result[name] = foreign(value);
        return result;
    }
};

Foreign foreign(const JSON &json)
{
    return std::visit(ToForeign(), json.value);
}

} // namespace

std::optional<JSON> JSON::parse(std::string_view text)
{
    Builder builder;
    if (!Foreign::sax_parse(text, &builder))
        return std::nullopt;
    return std::move(builder.result);
}

std::string JSON::text() const
{
    return foreign(*this).dump(2, ' ', false, Foreign::error_handler_t::replace);
}

const JSON *JSON::find(std::string_view name) const
{
    const auto *members = std::get_if<Object>(&value);
    if (members == nullptr)
        return nullptr;
    const auto found
        = std::find_if(members->rbegin(), members->rend(), [name](const auto &member) { return member.first == name; });
    return found == members->rend() ? nullptr : &found->second;
}

std::optional<std::string> JSON::string() const
{
    const auto *text = std::get_if<std::string>(&value);
    return text == nullptr ? std::nullopt : std::optional(*text);
}

} // namespace nolfa
