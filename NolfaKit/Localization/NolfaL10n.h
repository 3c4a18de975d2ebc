#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// What the user chose to read. @c system follows the machine.
enum class NolfaLanguage { system, en, fr };

namespace NolfaLanguages {

inline constexpr std::array allCases{NolfaLanguage::system, NolfaLanguage::en, NolfaLanguage::fr};

} // namespace NolfaLanguages

/// "system", "en" or "fr"; also the identity in lists.
[[nodiscard]] std::string_view rawValue(NolfaLanguage language);
[[nodiscard]] std::optional<NolfaLanguage> languageFromRawValue(std::string_view text);

/// What the language menu shows.
[[nodiscard]] std::string title(NolfaLanguage language);

/// "en" or "fr". @c system asks the machine's locale at each call.
[[nodiscard]] std::string resolvedCode(NolfaLanguage language);

/// The language in force, one for the process. Thread-safe.
namespace NolfaL10n {

[[nodiscard]] NolfaLanguage current();
void setCurrent(NolfaLanguage language);

/// For text recognition, the language in force first: "fr-FR" and "en-US".
[[nodiscard]] std::vector<std::string> ocrLanguages();

} // namespace NolfaL10n

/// The one of two texts that is in the language in force, chosen anew at each call. All text that a user sees comes
/// through here. Thread-safe.
[[nodiscard]] std::string T(std::string en, std::string fr);

} // namespace nolfa
