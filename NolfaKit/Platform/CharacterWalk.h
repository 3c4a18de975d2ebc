#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace nolfa {

/// What a user-perceived character is, by its first code point: of the property White_Space; Alphabetic or with a
/// numeric type; anything else.
enum class CharacterClass : std::uint8_t { whitespace, word, other };

/// Walks the user-perceived characters (extended grapheme clusters) of a text in UTF-8. Each broken byte sequence is a
/// character of the class @c other. Plain ASCII takes no table and no library. Not thread-safe.
class CharacterWalk {
public:
    /// @param text  must outlive the walk
    explicit CharacterWalk(std::string_view text)
        : m_text(text)
    {
    }

    /// Moves to the next character; the first call to the first. False behind the last.
    bool next()
    {
        m_begin = m_end;
        if (m_begin == m_text.size())
            return false;
        if (!isAlone(m_begin))
            return nextWide();
        m_kind = asciiClass(m_text[m_begin]);
        m_end = m_begin + 1;
        return true;
    }

    /// Takes the ASCII letters and digits that follow into the current character. To be called on a character of the
    /// class @c word, by who doesn't tell one from the next.
    void joinWord()
    {
        while (m_end < m_text.size() && isAlone(m_end) && asciiClass(m_text[m_end]) == CharacterClass::word)
            ++m_end;
    }

    [[nodiscard]] CharacterClass kind() const { return m_kind; }
    /// Where the current character begins and ends, in bytes.
    [[nodiscard]] std::size_t begin() const { return m_begin; }
    [[nodiscard]] std::size_t end() const { return m_end; }
    [[nodiscard]] std::string_view character() const { return m_text.substr(m_begin, m_end - m_begin); }

private:
    static constexpr std::array<CharacterClass, 128> asciiClasses = [] {
        std::array<CharacterClass, 128> classes{};
        for (std::size_t c = 0; c < classes.size(); ++c) {
            const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
            classes[c] = isBlank                     ? CharacterClass::whitespace
                : isLetter || (c >= '0' && c <= '9') ? CharacterClass::word
                                                     : CharacterClass::other;
        }
        return classes;
    }();

    static bool isASCII(char c) { return static_cast<unsigned char>(c) < 0x80; }
    static CharacterClass asciiClass(char c) { return asciiClasses[static_cast<unsigned char>(c)]; }

    /// Whether the byte there is a character by itself: ASCII that nothing can join. Only a line feed joins ASCII.
    [[nodiscard]] bool isAlone(std::size_t index) const
    {
        return isASCII(m_text[index])
            && (index + 1 == m_text.size() || (isASCII(m_text[index + 1]) && m_text[index] != '\r'));
    }

    bool nextWide();
    void findBreaks();

    std::string_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    CharacterClass m_kind = CharacterClass::other;
    /// Ends of characters in a stretch that only the full rules can part, and which of them comes next.
    std::vector<std::size_t> m_breaks;
    std::size_t m_nextBreak = 0;
};

} // namespace nolfa
