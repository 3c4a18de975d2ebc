#pragma once

#include "Platform/CharacterWalk.h"

#include <string_view>

namespace nolfa {

/// The one pass over a text that cuts it into words; see WordTokenizer for what a word is.
class WordCutter {
public:
    explicit WordCutter(std::string_view text)
        : m_text(text)
        , m_walk(text)
    {
    }

    /// The next word; empty behind the last.
    std::string_view next()
    {
        while (m_walk.next()) {
            switch (m_walk.kind()) {
            case CharacterClass::whitespace:
                m_isTrailing = m_joins = m_isAfterWordCharacter = false;
                if (const std::string_view word = cut(m_walk.begin()); !word.empty()) {
                    m_start = m_walk.end();
                    m_isInWord = false;
                    return word;
                }
                m_start = m_walk.end();
                m_isInWord = false;
                break;
            case CharacterClass::word:
                if (const std::string_view word = takeWordCharacters(); !word.empty())
                    return word;
                break;
            case CharacterClass::other:
                takeOther();
                break;
            }
        }
        const std::string_view last = cut(m_text.size());
        m_start = m_text.size();
        return last;
    }

private:
    [[nodiscard]] std::string_view cut(std::size_t end) const { return m_text.substr(m_start, end - m_start); }

    /// The word that ends here, if one does.
    std::string_view takeWordCharacters()
    {
        const bool isCut = m_isTrailing && !m_joins;
        const std::string_view word = isCut ? cut(m_walk.begin()) : std::string_view();
        if (isCut)
            m_start = m_walk.begin();
        m_isInWord = m_isAfterWordCharacter = true;
        m_isTrailing = m_joins = false;
        m_walk.joinWord();
        return word;
    }

    void takeOther()
    {
        // A connector counts as trailing until a letter or digit comes right behind it.
        m_joins = m_isAfterWordCharacter && isConnector(m_walk.character());
        m_isAfterWordCharacter = false;
        m_isTrailing = m_isInWord;
    }

    /// Apostrophes and hyphens.
    static bool isConnector(std::string_view character)
    {
        return character == "'" || character == "-" || character == "\u2019" || character == "\u2010"
            || character == "\u2011";
    }

    std::string_view m_text;
    CharacterWalk m_walk;
    std::size_t m_start = 0; ///< of the word under way
    bool m_isInWord = false; ///< it holds a letter or digit
    bool m_isTrailing = false; ///< and behind that, punctuation
    bool m_isAfterWordCharacter = false;
    bool m_joins = false; ///< the previous character is a connector that may go on with the word
};

} // namespace nolfa
