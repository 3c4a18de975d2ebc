#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// Text in UTF-8 by the rules of Unicode. All functions are pure and thread-safe.
namespace Unicode {

[[nodiscard]] bool isValidUTF8(std::string_view text);

/// Appends a code point; U+FFFD for what is none.
void append(std::string &text, char32_t codePoint);

/// User-perceived characters (extended grapheme clusters), those that hold @p except left out. 0 means none is.
[[nodiscard]] std::size_t countCharacters(std::string_view text, char32_t except = 0);

/// The bytes of the first code point; 0 when the text is empty or begins with a broken sequence.
[[nodiscard]] std::size_t firstLength(std::string_view text);

/// The first code point, if it is a letter of any language (property Alphabetic), taken off the text.
[[nodiscard]] std::optional<char32_t> takeLetter(std::string_view &text);

/// Takes decimal digits of any script (category Nd) off the front. False when there is none.
bool takeDigits(std::string_view &text);

/// Takes white space (property White_Space) off the front. False when there is none.
bool takeWhiteSpace(std::string_view &text);

/// The first code point of the full upper-casing of one.
[[nodiscard]] char32_t uppercased(char32_t codePoint);

/// The characters that stand for a number in any script.
[[nodiscard]] std::string numericCharacters(std::string_view text);

/// Bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::string repaired(std::string_view text);

/// Full lower-casing of any language, final sigma included.
[[nodiscard]] std::string lowercased(std::string_view text);

/// Without the whitespace and newlines at both ends: category Z, tab, U+000A to U+000D and U+0085.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Without the whitespace at both ends: category Zs and the tab.
[[nodiscard]] std::string_view trimmedOfBlanks(std::string_view text);

/// The text with control characters (C0, DEL, C1) shown as "?" and invalid bytes as U+FFFD: one safe line.
[[nodiscard]] std::string printable(std::string_view text);

/// UTF-16 or UTF-32 with a byte-order mark, as UTF-8 without it. Absent when there is no mark, or the bytes
/// don't follow it.
[[nodiscard]] std::optional<std::string> decodedByMark(std::string_view bytes);

/// ISO Latin 1 as UTF-8. Every byte is a character.
[[nodiscard]] std::string decodedLatin1(std::string_view bytes);

} // namespace Unicode

} // namespace nolfa
