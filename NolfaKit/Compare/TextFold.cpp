#include "Compare/TextFold.h"

#include "Platform/CancellationError.h"
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

const ASCIITable &tableFor(Ignored ignored)
{
    static const std::array<ASCIITable, 8> tables = [] {
        std::array<ASCIITable, 8> all{};
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = asciiTable({(i & 1U) != 0, (i & 2U) != 0, (i & 4U) != 0});
        return all;
    }();
    return tables[(ignored.whitespace ? 1U : 0U) | (ignored.letterCase ? 2U : 0U) | (ignored.markers ? 4U : 0U)];
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

/// Folds a text piece by piece.
class Folder {
public:
    Folder(Ignored ignored, std::size_t size)
        : m_ignored(ignored)
        , m_table(tableFor(ignored))
    {
        m_result.reserve(size);
    }

    void take(std::string_view piece)
    {
        if (!takeASCII(piece))
            takeAny(piece);
    }

    std::string result()
    {
        const std::string_view trimmed = Unicode::trimmed(m_result);
        return trimmed.size() == m_result.size() ? std::move(m_result) : std::string(trimmed);
    }

private:
    /// All steps in one pass. @return false, and nothing is done, when the piece is more than plain ASCII
    bool takeASCII(std::string_view piece)
    {
        const std::size_t start = m_result.size();
        m_result.resize(start + piece.size());
        char *end = m_result.data() + start;
        bool isAtBlank = m_isAtBlank;
        for (const char c : piece) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte == 0 || byte >= m_table.size()) {
                m_result.resize(start);
                return false;
            }
            const char folded = m_table[byte];
            const bool isSpare = folded == nothing || (folded == ' ' && m_ignored.whitespace && isAtBlank);
            *end = folded;
            end += isSpare ? 0 : 1;
            isAtBlank = isSpare ? isAtBlank : folded == ' ';
        }
        m_isAtBlank = isAtBlank;
        m_result.resize(static_cast<std::size_t>(end - m_result.data()));
        return true;
    }

    void takeAny(std::string_view piece)
    {
        std::string text(piece);
        if (m_ignored.markers)
            removeMarkers(text);
        if (m_ignored.letterCase)
            text = Unicode::lowercased(text);
        if (m_ignored.whitespace)
            collapseWhitespace(text);
        else
            m_result += text;
    }

    void collapseWhitespace(std::string_view text)
    {
        for (CharacterWalk walk(text); walk.next();) {
            const bool isBlank = walk.kind() == CharacterClass::whitespace;
            if (isBlank && m_isAtBlank)
                continue;
            m_result += isBlank ? " " : walk.character();
            m_isAtBlank = isBlank;
        }
    }

    const Ignored m_ignored;
    const ASCIITable &m_table;
    std::string m_result;
    /// Where whitespace is ignored: a blank here would be the second in a row, or the first of all.
    bool m_isAtBlank = true;
};

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Where a piece may end: before a blank that follows an ASCII letter or digit, no step of folding looks across.
std::size_t pieceEnd(std::string_view text, std::size_t from)
{
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == ' ' && isWordCharacter(text[i - 1]))
            return i;
    }
    return text.size();
}

} // namespace

std::string fold(std::string_view text, bool ignoreWhitespace, bool ignoreCase, bool ignoreFormattingMarkers,
    const std::stop_token &stop)
{
    constexpr std::size_t piece = 1U << 16U;
    Folder folder({ignoreWhitespace, ignoreCase, ignoreFormattingMarkers}, text.size());
    while (text.size() > piece) {
        throwIfStopped(stop);
        const std::size_t end = pieceEnd(text, piece);
        folder.take(text.substr(0, end));
        text.remove_prefix(end);
    }
    folder.take(text);
    return folder.result();
}

std::string loose(std::string_view text, const std::stop_token &stop)
{
    return fold(text, true, true, true, stop);
}

} // namespace nolfa::TextFold
