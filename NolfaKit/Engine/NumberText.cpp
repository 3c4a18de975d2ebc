#include "Engine/NumberText.h"

#include "Platform/CNumber.h"

#include <charconv>

namespace nolfa::NumberText {

namespace {

/// Whether the text is as most numbers are: digits with a point somewhere, few enough to be exact in one step.
bool isPlain(std::string_view text)
{
    constexpr std::size_t most = 32;
    if (text.size() > most || text.front() == '.' || text.back() == '.')
        return false;
    bool hasPoint = false;
    for (const char c : text) {
        if (c == '.' && !hasPoint)
            hasPoint = true;
        else if (c < '0' || c > '9')
            return false;
    }
    return true;
}

} // namespace

std::optional<std::int64_t> integer(std::string_view text)
{
    const bool hasPlus = text.starts_with('+');
    if (hasPlus)
        text.remove_prefix(1);
    if (hasPlus && text.starts_with('-'))
        return std::nullopt;
    std::int64_t value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    return failure == std::errc() && stop == end && !text.empty() ? std::optional(value) : std::nullopt;
}

std::optional<double> number(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    if (isPlain(text)) {
        double value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    }
    // No form of a number begins with anything else; this spares the common words a copy.
    constexpr std::string_view firsts = "0123456789+-.iInN";
    if (firsts.find(text.front()) == std::string_view::npos)
        return std::nullopt;
    return CNumber::parse(text);
}

} // namespace nolfa::NumberText
