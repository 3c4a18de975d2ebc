#pragma once

#include "Platform/XMLReader.h"

#include <string>
#include <vector>

namespace nolfa {

/// Reads the plain kind of XML that office packages are made of, several times faster than a general parser: elements,
/// attributes and text in UTF-8, the five named entities, and nothing else. It delivers an event only once it is sure
/// that a general parser would deliver the same; at anything else it gives up, and a general parser takes over from
/// the start, leaving out what was delivered. Not thread-safe.
class XMLScanner {
public:
    explicit XMLScanner(XMLHandler &handler);

    enum class Progress {
        goesOn, ///< more of the document is wanted
        givesUp
    };

    /// Takes the next piece of the document. What of it can't be used yet has to come again in front of the next one.
    /// @param used  the bytes that were used
    Progress take(std::string_view piece, std::size_t &used);

    /// Whether the document could end here.
    [[nodiscard]] bool isComplete() const noexcept { return m_hasRoot && m_openLengths.empty(); }

    /// How much was delivered: element starts and ends, and behind the last of them bytes of text.
    /// @{
    [[nodiscard]] std::uint64_t tagCount() const noexcept { return m_tagCount; }
    [[nodiscard]] std::uint64_t textSize() const noexcept { return m_textSize; }
    /// @}

private:
    enum class Step { done, incomplete, unusual };

    Step takeDeclaration(std::string_view &text);
    Step takeTag(std::string_view &text);
    Step takeStartTag(std::string_view &text);
    Step takeEndTag(std::string_view &text);
    Step takeAttributes(std::string_view &text, bool &isEmpty);
    Step takeText(std::string_view &text);
    Step takeEntity(std::string_view &text);
    [[nodiscard]] bool isRepeated(std::string_view name) const;
    void deliverStart(std::string_view name);
    void deliverEnd(std::string_view name);
    void deliverText(std::string_view text);

    XMLHandler &m_handler;
    std::vector<XMLAttributes::Pair> m_attributes;
    std::string m_openNames; ///< of the open elements, one behind the other
    std::vector<std::size_t> m_openLengths;
    bool m_hasStarted = false;
    bool m_hasRoot = false;
    std::uint64_t m_tagCount = 0;
    std::uint64_t m_textSize = 0;
};

} // namespace nolfa
