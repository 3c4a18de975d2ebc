#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace nolfa {

/// A JSON value. Objects keep the order in which their members were added or stood in the text.
struct JSON {
    using Array = std::vector<JSON>;
    using Object = std::vector<std::pair<std::string, JSON>>;

    std::variant<std::nullptr_t, bool, double, std::string, Array, Object> value = nullptr;

    JSON() = default;
    JSON(bool boolean)
        : value(boolean)
    {
    }
    JSON(double number)
        : value(number)
    {
    }
    JSON(int number)
        : value(static_cast<double>(number))
    {
    }
    JSON(std::string text)
        : value(std::move(text))
    {
    }
    JSON(std::string_view text)
        : value(std::string(text))
    {
    }
    JSON(const char *text)
        : value(std::string(text))
    {
    }
    JSON(Array items)
        : value(std::move(items))
    {
    }
    JSON(Object members)
        : value(std::move(members))
    {
    }

    /// Strict JSON in UTF-8; a byte-order mark is accepted. Absent for anything else.
    [[nodiscard]] static std::optional<JSON> parse(std::string_view text);

    /// Indented by two blanks, UTF-8, without a line feed at the end. Invalid UTF-8 becomes U+FFFD.
    [[nodiscard]] std::string text() const;

    /// The last member of that name, or none, also when this is no object.
    [[nodiscard]] const JSON *find(std::string_view name) const;

    /// The value if it is a string.
    [[nodiscard]] std::optional<std::string> string() const;

    bool operator==(const JSON &) const = default;
};

} // namespace nolfa
