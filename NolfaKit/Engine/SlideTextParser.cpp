#include "Engine/SlideTextParser.h"

#include "Engine/ReadingLimits.h"
#include "Platform/Unicode.h"
#include "Platform/XMLReader.h"

namespace nolfa {

namespace {

class Parser : public XMLHandler {
public:
    void startElement(std::string_view name, const XMLAttributes & /*attributes*/) override
    {
        if (name == "a:p")
            m_current.clear();
        else if (name == "a:t")
            m_inText = true;
    }

    void endElement(std::string_view name) override
    {
        if (name == "a:t")
            m_inText = false;
        else if (name == "a:p")
            endParagraph();
    }

    void characters(std::string_view text) override
    {
        if (!m_inText)
            return;
        ReadingLimits::require(m_current.size() + text.size(), ReadingLimits::keptValue);
        m_current += text;
    }

    std::vector<std::string> paragraphs;

private:
    void endParagraph()
    {
        const std::string_view text = Unicode::trimmed(m_current);
        if (text.empty())
            return;
        m_size += text.size() + sizeof(std::string);
        ReadingLimits::require(m_size, ReadingLimits::keptText);
        paragraphs.emplace_back(text);
    }

    std::string m_current;
    bool m_inText = false;
    std::size_t m_size = 0;
};

} // namespace

std::vector<std::string> SlideTextParser::parse(const std::filesystem::path &part, const std::stop_token &stop)
{
    Parser parser;
    XMLReader::read(part, parser, stop);
    return std::move(parser.paragraphs);
}

} // namespace nolfa
