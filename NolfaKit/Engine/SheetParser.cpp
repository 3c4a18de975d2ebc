#include "Engine/SheetParser.h"

#include "Engine/NumberText.h"
#include "Engine/ReadingLimits.h"
#include "Platform/Unicode.h"

#include <algorithm>

namespace nolfa {

namespace {

/// No file has so many columns; what claims more is told off when the table is written.
constexpr std::uint64_t mostColumns = 1ULL << 40U;

/// The value of a letter in a column's name, or absent for what isn't a letter. In the name of a real column it is
/// one of 26, but any letter of any language counts.
std::optional<std::uint64_t> letterValue(std::string_view &text)
{
    constexpr std::uint64_t beforeA = 64;
    const char c = text.front();
    if (c >= 'A' && c <= 'Z') {
        text.remove_prefix(1);
        return static_cast<std::uint64_t>(c) - beforeA;
    }
    if (static_cast<unsigned char>(c) < 0x80 && (c < 'a' || c > 'z'))
        return std::nullopt;
    if (const auto letter = Unicode::takeLetter(text))
        return Unicode::uppercased(*letter) - beforeA;
    return std::nullopt;
}

} // namespace

SheetParser::SheetParser(const SharedStrings &shared, const CellFormats &formats)
    : m_shared(shared)
    , m_formats(formats)
{
}

SheetRows SheetParser::parse(const std::filesystem::path &part, const SharedStrings &shared, const CellFormats &formats,
    const std::stop_token &stop)
{
    SheetParser parser(shared, formats);
    XMLReader::read(part, parser, stop);
    return parser.takeRows();
}

std::uint64_t SheetParser::columnIndex(std::string_view reference)
{
    std::uint64_t number = 0;
    while (!reference.empty()) {
        const std::optional<std::uint64_t> value = letterValue(reference);
        if (!value)
            break;
        number = std::min(number * 26 + *value, mostColumns);
    }
    return number == 0 ? 0 : number - 1;
}

void SheetParser::startElement(std::string_view name, const XMLAttributes &attributes)
{
    if (name == "c") {
        startCell(attributes);
    } else if (name == "v" || name == "t") {
        m_capturing = true;
        m_value.clear();
    } else if (name == "row") {
        const std::optional<std::int64_t> index = NumberText::integer(attributes.find("r").value_or(""));
        m_rows.startRow(index.value_or(static_cast<std::int64_t>(m_rows.count()) + 1));
    }
}

void SheetParser::startCell(const XMLAttributes &attributes)
{
    std::string_view reference;
    std::string_view type;
    m_cellStyle.reset();
    attributes.forEach([&](std::string_view name, std::string_view value) {
        if (name == "r")
            reference = value;
        else if (name == "t")
            type = value;
        else if (name == "s")
            m_cellStyle = NumberText::integer(value);
    });
    if (type.empty() || type == "n")
        m_cellType = CellType::number;
    else if (type == "s")
        m_cellType = CellType::sharedString;
    else if (type == "b")
        m_cellType = CellType::boolean;
    else
        m_cellType = CellType::text;
    m_cellColumn = columnIndex(reference);
    m_value.clear();
}

void SheetParser::endElement(std::string_view name)
{
    if (name == "v" || name == "t")
        m_capturing = false;
    else if (name == "c")
        m_rows.addCell(m_cellColumn, resolvedValue());
    else if (name == "row")
        m_rows.endRow();
}

void SheetParser::characters(std::string_view text)
{
    if (!m_capturing)
        return;
    ReadingLimits::require(m_value.size() + text.size(), ReadingLimits::keptValue);
    m_value += text;
}

std::string_view SheetParser::resolvedValue()
{
    switch (m_cellType) {
    case CellType::sharedString: {
        const std::optional<std::int64_t> index = NumberText::integer(m_value);
        const bool isThere = index && *index >= 0 && static_cast<std::uint64_t>(*index) < m_shared.size();
        return isThere ? m_shared[static_cast<std::size_t>(*index)] : std::string_view(m_value);
    }
    case CellType::boolean:
        return m_value == "1" ? "TRUE" : "FALSE";
    case CellType::number: {
        const CellFormats::Kind kind = m_formats.kind(m_cellStyle);
        if (kind == CellFormats::Kind::general)
            return m_value;
        m_rendered.clear();
        CellFormats::appendRendered(m_rendered, m_value, kind);
        return m_rendered;
    }
    case CellType::text:
        break;
    }
    return m_value;
}

} // namespace nolfa
