#include "Engine/XLSXWriter.h"

#include "Engine/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace nolfa::XLSXWriter {

namespace {

#define NOLFA_DECLARATION "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
#define NOLFA_SPREADSHEET "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
#define NOLFA_OFFICE_RELATIONSHIPS "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
#define NOLFA_PACKAGE_RELATIONSHIPS "http://schemas.openxmlformats.org/package/2006/relationships"
#define NOLFA_CONTENT_TYPES "http://schemas.openxmlformats.org/package/2006/content-types"

/// Calls @p append for each sheet's number, as text.
template <typename Append> void forEachSheet(std::size_t sheetCount, Append append)
{
    if (sheetCount < 1)
        std::abort();
    for (std::size_t number = 1; number <= sheetCount; ++number)
        append(std::to_string(number));
}

void appendEscaped(std::string &text, std::string_view cell)
{
    for (;;) {
        const std::size_t end = cell.find_first_of("&<>");
        text += cell.substr(0, end);
        if (end == std::string_view::npos)
            return;
        text += cell[end] == '&' ? "&amp;" : cell[end] == '<' ? "&lt;" : "&gt;";
        cell.remove_prefix(end + 1);
    }
}

void appendCell(std::string &text, std::string_view letters, std::string_view number, std::string_view cell)
{
    text.append("<c r=\"").append(letters).append(number);
    if (NumberText::number(cell)) {
        text.append("\"><v>").append(cell).append("</v></c>");
        return;
    }
    text += "\" t=\"inlineStr\"><is><t xml:space=\"preserve\">";
    appendEscaped(text, cell);
    text += "</t></is></c>";
}

} // namespace

std::string contentTypes(std::size_t sheetCount)
{
    std::string text
        = NOLFA_DECLARATION "<Types xmlns=\"" NOLFA_CONTENT_TYPES "\">\n"
                            "<Default Extension=\"rels\" "
                            "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>\n"
                            "<Default Extension=\"xml\" ContentType=\"application/xml\"/>\n"
                            "<Override PartName=\"/xl/workbook.xml\" ContentType="
                            "\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>\n";
    forEachSheet(sheetCount, [&text](const std::string &number) {
        text += "<Override PartName=\"/xl/worksheets/sheet" + number
            + ".xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
    });
    return text + "\n</Types>";
}

std::string workbook(std::size_t sheetCount)
{
    std::string text = NOLFA_DECLARATION "<workbook xmlns=\"" NOLFA_SPREADSHEET
                                         "\" xmlns:r=\"" NOLFA_OFFICE_RELATIONSHIPS "\">\n<sheets>";
    forEachSheet(sheetCount, [&text](const std::string &number) {
        text += "<sheet name=\"Sheet" + number + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
    });
    return text + "</sheets>\n</workbook>";
}

std::string workbookRels(std::size_t sheetCount)
{
    std::string text = NOLFA_DECLARATION "<Relationships xmlns=\"" NOLFA_PACKAGE_RELATIONSHIPS "\">";
    forEachSheet(sheetCount, [&text](const std::string &number) {
        text += "<Relationship Id=\"rId" + number
            + "\" Type=\"" NOLFA_OFFICE_RELATIONSHIPS "/worksheet\" Target=\"worksheets/sheet" + number + ".xml\"/>";
    });
    return text + "</Relationships>";
}

std::string rootRels()
{
    return NOLFA_DECLARATION "<Relationships xmlns=\"" NOLFA_PACKAGE_RELATIONSHIPS "\">\n"
                             "<Relationship Id=\"rId1\" Type=\"" NOLFA_OFFICE_RELATIONSHIPS
                             "/officeDocument\" Target=\"xl/workbook.xml\"/>\n</Relationships>";
}

std::string columnLetter(std::size_t index)
{
    std::string letters;
    for (std::size_t number = index + 1; number > 0; number /= 26) {
        --number;
        letters += static_cast<char>('A' + number % 26);
    }
    std::ranges::reverse(letters);
    return letters;
}

std::string_view sheetStart()
{
    return NOLFA_DECLARATION "<worksheet xmlns=\"" NOLFA_SPREADSHEET "\">\n<sheetData>";
}

std::string_view sheetEnd()
{
    return "</sheetData>\n</worksheet>";
}

void appendRow(
    std::string &text, std::size_t number, const MarkdownTable::RowView &cells, std::vector<std::string> &letters)
{
    while (letters.size() < cells.size())
        letters.push_back(columnLetter(letters.size()));
    const std::string rowNumber = std::to_string(number);
    text.append("<row r=\"").append(rowNumber).append("\">");
    for (std::size_t index = 0; index < cells.size(); ++index)
        appendCell(text, letters[index], rowNumber, cells[index]);
    text += "</row>";
}

std::string sheet(const MarkdownTable::Table &rows)
{
    std::string text(sheetStart());
    std::vector<std::string> letters;
    for (std::size_t index = 0; index < rows.size(); ++index)
        appendRow(text, index + 1, {rows[index].begin(), rows[index].end()}, letters);
    return text.append(sheetEnd());
}

#undef NOLFA_DECLARATION
#undef NOLFA_SPREADSHEET
#undef NOLFA_OFFICE_RELATIONSHIPS
#undef NOLFA_PACKAGE_RELATIONSHIPS
#undef NOLFA_CONTENT_TYPES

} // namespace nolfa::XLSXWriter
