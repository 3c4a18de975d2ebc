#include "Platform/XMLScanner.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <array>

namespace nolfa {

namespace {

/// What a byte may be in the documents that are read here.
enum ByteClass : unsigned char {
    nameStart = 1,
    nameInside = 2,
    space = 4,
    plainValue = 8, ///< stands for itself in an attribute
    plainText = 16 ///< stands for itself between tags, but for what isPlain() has to look at
};

constexpr std::array<unsigned char, 256> byteClasses = [] {
    std::array<unsigned char, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        const bool isLetter
            = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_' || byte == ':';
        const bool isDigit = byte >= '0' && byte <= '9';
        unsigned classes = 0;
        if (isLetter)
            classes |= nameStart;
        if (isLetter || isDigit || byte == '-' || byte == '.')
            classes |= nameInside;
        // A carriage return is turned into a line feed by the general parser.
        if (byte == ' ' || byte == '\t' || byte == '\n')
            classes |= space;
        if (byte >= 0x20 && byte < 0x7F && byte != '<' && byte != '&')
            classes |= plainValue;
        if ((byte >= 0x20 && byte != 0x7F && byte != '<' && byte != '&') || byte == '\t' || byte == '\n')
            classes |= plainText;
        table.at(byte) = static_cast<unsigned char>(classes);
    }
    return table;
}();

bool is(char c, ByteClass wanted)
{
    return (byteClasses[static_cast<unsigned char>(c)] & wanted) != 0;
}

std::size_t lengthOf(std::string_view text, ByteClass wanted)
{
    std::size_t length = 0;
    while (length < text.size() && is(text[length], wanted))
        ++length;
    return length;
}

/// Text without what is forbidden or special inside it.
bool isPlain(std::string_view text)
{
    if (text.find("]]") != std::string_view::npos)
        return false;
    if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return true;
    return Unicode::isValidUTF8(text) && text.find("\xEF\xBF") == std::string_view::npos;
}

} // namespace

XMLScanner::XMLScanner(XMLHandler &handler)
    : m_handler(handler)
{
}

XMLScanner::Progress XMLScanner::take(std::string_view piece, std::size_t &used)
{
    std::string_view text = piece;
    Step step = Step::done;
    while (step == Step::done && !text.empty()) {
        const std::string_view before = text;
        if (!m_hasStarted)
            step = takeDeclaration(text);
        else if (text.front() == '<')
            step = takeTag(text);
        else
            step = takeText(text);
        if (step != Step::done)
            text = before;
    }
    used = piece.size() - text.size();
    return step == Step::unusual ? Progress::givesUp : Progress::goesOn;
}

XMLScanner::Step XMLScanner::takeDeclaration(std::string_view &text)
{
    constexpr std::array<std::string_view, 4> usual{"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>",
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>",
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>"};
    m_hasStarted = true;
    for (const std::string_view declaration : usual) {
        if (text.starts_with(declaration)) {
            text.remove_prefix(declaration.size());
            return Step::done;
        }
    }
    // A document without one; the first letter of its root tells.
    if (text.size() > 1 && text[0] == '<' && is(text[1], nameStart))
        return Step::done;
    return Step::unusual;
}

XMLScanner::Step XMLScanner::takeTag(std::string_view &text)
{
    if (text.size() < 2)
        return Step::incomplete;
    return text[1] == '/' ? takeEndTag(text) : takeStartTag(text);
}

XMLScanner::Step XMLScanner::takeStartTag(std::string_view &text)
{
    if (!is(text[1], nameStart) || (m_hasRoot && m_openLengths.empty()))
        return Step::unusual;
    text.remove_prefix(1);
    const std::string_view name = text.substr(0, lengthOf(text, nameInside));
    text.remove_prefix(name.size());
    bool isEmpty = false;
    const Step step = takeAttributes(text, isEmpty);
    if (step != Step::done)
        return step;
    deliverStart(name);
    if (isEmpty) {
        deliverEnd(name);
    } else {
        m_openNames += name;
        m_openLengths.push_back(name.size());
    }
    return Step::done;
}

XMLScanner::Step XMLScanner::takeAttributes(std::string_view &text, bool &isEmpty)
{
    constexpr std::size_t most = 16;
    m_attributes.clear();
    for (;;) {
        const std::size_t blanks = lengthOf(text, space);
        text.remove_prefix(blanks);
        if (text.size() < 2)
            return text.starts_with('>') ? (text.remove_prefix(1), Step::done) : Step::incomplete;
        if (text.front() == '>') {
            text.remove_prefix(1);
            return Step::done;
        }
        if (text.starts_with("/>")) {
            text.remove_prefix(2);
            isEmpty = true;
            return Step::done;
        }
        const std::string_view name = text.substr(0, lengthOf(text, nameInside));
        if (blanks == 0 || !is(text.front(), nameStart) || m_attributes.size() == most)
            return Step::unusual;
        text.remove_prefix(name.size());
        if (text.size() < 2)
            return Step::incomplete;
        const char quote = text[1];
        if (text[0] != '=' || (quote != '"' && quote != '\''))
            return Step::unusual;
        text.remove_prefix(2);
        std::size_t end = 0;
        while (end < text.size() && text[end] != quote && is(text[end], plainValue))
            ++end;
        if (end == text.size())
            return Step::incomplete;
        if (text[end] != quote || isRepeated(name))
            return Step::unusual;
        m_attributes.emplace_back(name, text.substr(0, end));
        text.remove_prefix(end + 1);
    }
}

bool XMLScanner::isRepeated(std::string_view name) const
{
    return std::ranges::any_of(m_attributes, [name](const auto &attribute) { return attribute.first == name; });
}

XMLScanner::Step XMLScanner::takeEndTag(std::string_view &text)
{
    if (m_openLengths.empty())
        return Step::unusual;
    const std::size_t start = m_openNames.size() - m_openLengths.back();
    const std::string_view name = std::string_view(m_openNames).substr(start);
    const std::size_t size = 2 + name.size() + 1;
    if (text.size() < size)
        return Step::incomplete;
    // Blanks behind the name are rare enough for the general parser.
    if (text.substr(2, name.size()) != name || text[size - 1] != '>')
        return Step::unusual;
    text.remove_prefix(size);
    deliverEnd(name);
    m_openNames.resize(start);
    m_openLengths.pop_back();
    return Step::done;
}

XMLScanner::Step XMLScanner::takeText(std::string_view &text)
{
    if (m_openLengths.empty()) {
        const std::size_t blanks = lengthOf(text, space);
        text.remove_prefix(blanks);
        return blanks > 0 ? Step::done : Step::unusual;
    }
    if (text.front() == '&')
        return takeEntity(text);
    const std::string_view run = text.substr(0, lengthOf(text, plainText));
    // A run that goes to the end of the piece may be cut in the middle of a character, or of what ends a section.
    if (run.size() == text.size())
        return Step::incomplete;
    // Anything but a tag or an entity behind it may make the general parser refuse the run as a whole.
    const char behind = text[run.size()];
    if (run.empty() || (behind != '<' && behind != '&') || !isPlain(run))
        return Step::unusual;
    deliverText(run);
    text.remove_prefix(run.size());
    return Step::done;
}

XMLScanner::Step XMLScanner::takeEntity(std::string_view &text)
{
    struct Entity {
        std::string_view name;
        std::string_view character;
    };
    constexpr std::array<Entity, 5> entities{
        {{"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}}};
    constexpr std::size_t longest = 6;
    if (text.size() < longest)
        return Step::incomplete;
    for (const Entity &entity : entities) {
        if (text.starts_with(entity.name)) {
            deliverText(entity.character);
            text.remove_prefix(entity.name.size());
            return Step::done;
        }
    }
    return Step::unusual;
}

void XMLScanner::deliverStart(std::string_view name)
{
    m_hasRoot = true;
    ++m_tagCount;
    m_textSize = 0;
    m_handler.startElement(name, XMLAttributes(m_attributes));
}

void XMLScanner::deliverEnd(std::string_view name)
{
    ++m_tagCount;
    m_textSize = 0;
    m_handler.endElement(name);
}

void XMLScanner::deliverText(std::string_view text)
{
    m_textSize += text.size();
    m_handler.characters(text);
}

} // namespace nolfa
