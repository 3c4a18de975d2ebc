#include "Compare/TextFold.h"

#include "Platform/CharacterWalk.h"
#include "Platform/Unicode.h"

#include <algorithm>

namespace nolfa::TextFold {

namespace {

struct Ignored {
    bool whitespace;
    bool letterCase;
    bool markers;
};

bool isMarker(char c)
{
    return std::ranges::find(emphasisMarkers, c) != emphasisMarkers.end();
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// What folding makes of an ASCII character: itself, its small letter, a blank, or nothing.
using ASCIITable = std::array<char, 128>;
constexpr char nothing = '\0';
/// A NUL of the text is no "nothing": such texts take the general way.

ASCIITable asciiTable(Ignored ignored)
{
    ASCIITable table{};
    for (std::size_t i = 1; i < table.size(); ++i) {
        const char c = static_cast<char>(i);
        table[i] = ignored.markers && isMarker(c)        ? nothing
            : ignored.whitespace && isBlank(c)           ? ' '
            : ignored.letterCase && c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a')
                                                         : c;
    }
    return table;
}

/// All steps in one pass. Absent when the text is more than plain ASCII.
bool foldASCII(std::string_view text, Ignored ignored, std::string &result)
{
    static const std::array<ASCIITable, 8> tables = [] {
        std::array<ASCIITable, 8> all{};
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = asciiTable({(i & 1U) != 0, (i & 2U) != 0, (i & 4U) != 0});
        return all;
    }();
    const ASCIITable &table
        = tables[(ignored.whitespace ? 1U : 0U) | (ignored.letterCase ? 2U : 0U) | (ignored.markers ? 4U : 0U)];
    result.resize(text.size());
    char *end = result.data();
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == 0 || byte >= table.size())
            return false;
        const char folded = table[byte];
        // A second blank in a row goes, and so does one at the start.
        const bool isKept = folded != nothing
            && (folded != ' ' || !ignored.whitespace || (end != result.data() && *(end - 1) != ' '));
        *end = folded;
        end += isKept ? 1 : 0;
    }
    result.resize(static_cast<std::size_t>(end - result.data()));
    return true;
}

void removeMarkers(std::string &text)
{
    if (std::ranges::none_of(text, isMarker))
        return;
    std::string rest;
    rest.reserve(text.size());
    for (CharacterWalk walk(text); walk.next();) {
        const std::string_view character = walk.character();
        if (character.size() > 1 || !isMarker(character.front()))
            rest += character;
    }
    text = std::move(rest);
}

void collapseWhitespace(std::string &text)
{
    std::string rest;
    rest.reserve(text.size());
    bool isParted = false;
    for (CharacterWalk walk(text); walk.next();) {
        if (walk.kind() == CharacterClass::whitespace) {
            isParted = !rest.empty();
            continue;
        }
        if (isParted)
            rest += ' ';
        isParted = false;
        rest += walk.character();
    }
    text = std::move(rest);
}

} // namespace

std::string fold(std::string_view text, bool ignoreWhitespace, bool ignoreCase, bool ignoreFormattingMarkers)
{
    std::string result;
    if (!foldASCII(text, {ignoreWhitespace, ignoreCase, ignoreFormattingMarkers}, result)) {
        result = text;
        if (ignoreFormattingMarkers)
            removeMarkers(result);
        if (ignoreCase)
            result = Unicode::lowercased(result);
        if (ignoreWhitespace)
            collapseWhitespace(result);
    }
    const std::string_view trimmed = Unicode::trimmed(result);
    if (trimmed.size() == result.size())
        return result;
    return std::string(trimmed);
}

std::string loose(std::string_view text)
{
    return fold(text, true, true, true);
}

} // namespace nolfa::TextFold
