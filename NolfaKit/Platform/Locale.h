#pragma once

#include <string>
#include <string_view>

namespace nolfa {

/// A user's language and region, each empty when not known.
struct Locale {
    std::string language; ///< ISO 639, lower case: "fr"
    std::string region; ///< ISO 3166, upper case: "CA"

    /// The system's locale, from LC_ALL, LC_MESSAGES or LANG, the first that is set. "C" and "POSIX" say nothing.
    /// Thread-safe as long as nobody changes the environment.
    [[nodiscard]] static Locale current();

    /// From a name such as "fr_CA.UTF-8@euro".
    [[nodiscard]] static Locale fromName(std::string_view name);

    bool operator==(const Locale &) const = default;
};

} // namespace nolfa
