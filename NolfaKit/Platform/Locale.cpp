#include "Platform/Locale.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace nolfa {

namespace {

template <typename Change> std::string mapped(std::string_view text, Change change)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [change](unsigned char c) { return static_cast<char>(change(c)); });
    return result;
}

bool isRegion(std::string_view subtag)
{
    const auto isLetter = [](unsigned char c) { return std::isalpha(c) != 0; };
    const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
    return (subtag.size() == 2 && std::ranges::all_of(subtag, isLetter))
        || (subtag.size() == 3 && std::ranges::all_of(subtag, isDigit));
}

} // namespace

Locale Locale::current()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char *value = std::getenv(name);
        if (value != nullptr && *value != 0)
            return fromName(value);
    }
    return {};
}

Locale Locale::fromName(std::string_view name)
{
    name = name.substr(0, name.find_first_of(".@"));
    const std::size_t languageEnd = std::min(name.find_first_of("_-"), name.size());
    const std::string language = mapped(name.substr(0, languageEnd), [](unsigned char c) { return std::tolower(c); });
    if (language.size() < 2 || language.size() > 3)
        return {};
    Locale result{language, {}};
    // A script may stand between language and region: zh_Hant_TW.
    while (result.region.empty() && name.size() > languageEnd) {
        name.remove_prefix(std::min(name.find_first_of("_-") + 1, name.size()));
        const std::string_view subtag = name.substr(0, name.find_first_of("_-"));
        if (isRegion(subtag))
            result.region = mapped(subtag, [](unsigned char c) { return std::toupper(c); });
        if (name.find_first_of("_-") == std::string_view::npos)
            break;
    }
    return result;
}

} // namespace nolfa
