#include "Platform/Unicode.h"

#include "Platform/CharacterWalk.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace nolfa::Unicode {

namespace {

bool isASCII(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// ICU counts in 32 bits; a longer text is a fault of the caller's, and is cut.
std::int32_t length(std::string_view text)
{
    return static_cast<std::int32_t>(std::min<std::size_t>(text.size(), std::numeric_limits<std::int32_t>::max()));
}

/// How many bytes of ASCII the text begins with, give or take a few.
std::int32_t asciiLength(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080'8080'8080'8080;
    std::size_t count = 0;
    for (std::uint64_t word = 0; count + sizeof word <= text.size(); count += sizeof word) {
        std::memcpy(&word, text.data() + count, sizeof word);
        if ((word & highBits) != 0)
            break;
    }
    return length(text.substr(0, count));
}

constexpr UChar32 replacement = 0xFFFD;
constexpr UChar32 broken = -1;

// ICU's macros are C, with casts and conversions of their own.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wconversion"

void append(std::string &text, UChar32 codePoint)
{
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t size = 0;
    U8_APPEND_UNSAFE(bytes.data(), size, codePoint);
    text.append(bytes.data(), size);
}

/// The code point that begins at @p index, which moves behind it; @c broken for a broken sequence.
UChar32 next(std::string_view text, std::int32_t &index)
{
    UChar32 codePoint = 0;
    U8_NEXT(text.data(), index, length(text), codePoint);
    return codePoint < 0 ? broken : codePoint;
}

/// The code point that ends before @p index, which moves to its start.
UChar32 previous(std::string_view text, std::int32_t &index)
{
    UChar32 codePoint = 0;
    U8_PREV(text.data(), 0, index, codePoint);
    return codePoint < 0 ? broken : codePoint;
}

#pragma GCC diagnostic pop

/// Calls @p visit with every code point; a broken sequence counts as U+FFFD.
template <typename Visit> void forEachCodePoint(std::string_view text, Visit visit)
{
    for (std::int32_t index = 0; index < length(text);) {
        const UChar32 codePoint = next(text, index);
        visit(codePoint == broken ? replacement : codePoint);
    }
}

template <typename Predicate> std::string_view trimmedOf(std::string_view text, Predicate isOutside)
{
    // Blanks around plain letters are what nearly every call is about.
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    const auto isPlain = [](char c) { return c > ' ' && c < 0x7F; };
    if (text.empty() || (isPlain(text.front()) && isPlain(text.back())))
        return text;
    std::int32_t start = 0;
    for (std::int32_t index = 0; index < length(text);) {
        if (!isOutside(next(text, index)))
            break;
        start = index;
    }
    text.remove_prefix(static_cast<std::size_t>(start));
    std::int32_t end = length(text);
    for (std::int32_t index = end; index > 0;) {
        if (!isOutside(previous(text, index)))
            break;
        end = index;
    }
    return text.substr(0, static_cast<std::size_t>(end));
}

template <typename Predicate> bool takeWhile(std::string_view &text, Predicate isWanted)
{
    std::int32_t end = 0;
    for (std::int32_t index = 0; index < length(text); end = index) {
        const UChar32 codePoint = next(text, index);
        if (codePoint == broken || !isWanted(codePoint))
            break;
    }
    text.remove_prefix(static_cast<std::size_t>(end));
    return end > 0;
}

/// The general category as a bit; a broken sequence has none.
std::uint32_t mask(UChar32 codePoint)
{
    return codePoint == broken ? 0 : 1U << static_cast<unsigned>(u_charType(codePoint));
}

bool isBlank(UChar32 codePoint)
{
    return codePoint == '\t' || (mask(codePoint) & U_GC_ZS_MASK) != 0;
}

bool isWhitespaceOrNewline(UChar32 codePoint)
{
    return codePoint == '\t' || (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85
        || (mask(codePoint) & U_GC_Z_MASK) != 0;
}

} // namespace

void append(std::string &text, char32_t codePoint)
{
    const bool isCharacter = codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
    append(text, isCharacter ? static_cast<UChar32>(codePoint) : replacement);
}

std::size_t countCharacters(std::string_view text, char32_t except)
{
    if (isASCII(text)) {
        // Only a carriage return before a line feed makes one character of two.
        std::size_t count = text.size();
        for (std::size_t at = text.find("\r\n"); at != std::string_view::npos; at = text.find("\r\n", at + 2))
            --count;
        return except == 0 || except > 0x7F
            ? count
            : count - static_cast<std::size_t>(std::ranges::count(text, static_cast<char>(except)));
    }
    std::string excluded;
    append(excluded, except);
    // Broken sequences count as what they are shown as.
    const std::string shown = repaired(text);
    std::size_t count = 0;
    for (CharacterWalk walk(shown); walk.next();)
        count += except == 0 || walk.character().find(excluded) == std::string_view::npos ? 1 : 0;
    return count;
}

bool isValidUTF8(std::string_view text)
{
    for (std::int32_t index = 0; index < length(text);) {
        index += asciiLength(text.substr(static_cast<std::size_t>(index)));
        if (index < length(text) && next(text, index) == broken)
            return false;
    }
    return true;
}

std::size_t firstLength(std::string_view text)
{
    std::int32_t index = 0;
    return text.empty() || next(text, index) == broken ? 0 : static_cast<std::size_t>(index);
}

std::optional<char32_t> takeLetter(std::string_view &text)
{
    std::int32_t index = 0;
    const UChar32 codePoint = text.empty() ? broken : next(text, index);
    if (codePoint == broken || u_isUAlphabetic(codePoint) == 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(index));
    return static_cast<char32_t>(codePoint);
}

bool takeDigits(std::string_view &text)
{
    return takeWhile(text, [](UChar32 codePoint) { return u_isdigit(codePoint) != 0; });
}

bool takeWhiteSpace(std::string_view &text)
{
    return takeWhile(text, [](UChar32 codePoint) { return u_isUWhiteSpace(codePoint) != 0; });
}

char32_t uppercased(char32_t codePoint)
{
    icu::UnicodeString text(static_cast<UChar32>(codePoint));
    return static_cast<char32_t>(text.toUpper(icu::Locale::getRoot()).char32At(0));
}

std::string numericCharacters(std::string_view text)
{
    std::string result;
    forEachCodePoint(text, [&result](UChar32 codePoint) {
        constexpr std::uint32_t numbers = U_GC_N_MASK;
        if ((mask(codePoint) & numbers) != 0)
            append(result, codePoint);
    });
    return result;
}

std::string repaired(std::string_view text)
{
    if (isValidUTF8(text))
        return std::string(text);
    std::string result;
    forEachCodePoint(text, [&result](UChar32 codePoint) { append(result, codePoint); });
    return result;
}

std::string lowercased(std::string_view text)
{
    std::string result;
    if (isASCII(text)) {
        result.resize(text.size());
        std::ranges::transform(
            text, result.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        return result;
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&result);
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), length(text)), sink, nullptr, status);
    return result;
}

std::string_view trimmed(std::string_view text)
{
    return trimmedOf(text, isWhitespaceOrNewline);
}

std::string_view trimmedOfBlanks(std::string_view text)
{
    return trimmedOf(text, isBlank);
}

std::string printable(std::string_view text)
{
    std::string result;
    forEachCodePoint(text, [&result](UChar32 codePoint) {
        // A line separator breaks a line as well as a line feed does.
        const bool isControl
            = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x2028 || codePoint == 0x2029;
        append(result, isControl ? '?' : codePoint);
    });
    return result;
}

std::optional<std::string> decodedByMark(std::string_view bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t markLength = 0;
    const char *name = ucnv_detectUnicodeSignature(bytes.data(), length(bytes), &markLength, &status);
    if (U_FAILURE(status) || name == nullptr)
        return std::nullopt;
    const std::string_view encoding(name);
    if (!encoding.starts_with("UTF-16") && !encoding.starts_with("UTF-32"))
        return std::nullopt;

    UConverter *converter = ucnv_open(name, &status);
    if (U_FAILURE(status))
        return std::nullopt;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    const std::string_view body = bytes.substr(static_cast<std::size_t>(markLength));
    const icu::UnicodeString text(body.data(), length(body), converter, status);
    ucnv_close(converter);
    if (U_FAILURE(status))
        return std::nullopt;
    std::string result;
    text.toUTF8String(result);
    return result;
}

std::string decodedLatin1(std::string_view bytes)
{
    std::string result;
    result.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes)
        append(result, static_cast<unsigned char>(byte));
    return result;
}

} // namespace nolfa::Unicode
