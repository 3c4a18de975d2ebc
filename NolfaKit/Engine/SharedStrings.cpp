#include "Engine/SharedStrings.h"

#include "Engine/ReadingLimits.h"
#include "Platform/XMLReader.h"

namespace nolfa {

namespace {

class SharedStringsParser : public XMLHandler {
public:
    void startElement(std::string_view name, const XMLAttributes & /*attributes*/) override
    {
        if (name == "si")
            m_current.clear();
        else if (name == "t")
            m_inText = true;
    }
    void endElement(std::string_view name) override
    {
        if (name == "t")
            m_inText = false;
        else if (name == "si")
            strings.append(m_current);
    }
    void characters(std::string_view text) override
    {
        if (!m_inText)
            return;
        ReadingLimits::require(m_current.size() + text.size(), ReadingLimits::keptValue);
        m_current += text;
    }

    SharedStrings strings;

private:
    std::string m_current;
    bool m_inText = false;
};

} // namespace

SharedStrings::SharedStrings(const std::vector<std::string> &strings)
{
    for (const std::string &string : strings)
        append(string);
}

SharedStrings SharedStrings::read(const std::optional<std::filesystem::path> &part, const std::stop_token &stop)
{
    SharedStringsParser parser;
    if (part)
        XMLReader::read(*part, parser, stop);
    return std::move(parser.strings);
}

std::string_view SharedStrings::operator[](std::size_t index) const
{
    const std::size_t start = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_text).substr(start, m_ends[index] - start);
}

void SharedStrings::append(std::string_view string)
{
    // An empty string takes memory as well.
    ReadingLimits::require(
        m_text.size() + string.size() + m_ends.size() * sizeof(std::size_t), ReadingLimits::keptText);
    m_text += string;
    m_ends.push_back(m_text.size());
}

} // namespace nolfa
