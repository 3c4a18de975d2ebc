#include "Engine/MarkdownTable.h"

#include "Platform/Unicode.h"

#include <algorithm>

namespace nolfa::MarkdownTable {

namespace {

bool isTableLine(std::string_view line)
{
    return line.find('|') != std::string_view::npos && !Unicode::trimmedOfBlanks(line).empty();
}

bool isSeparator(std::string_view line)
{
    std::string_view text = Unicode::trimmedOfBlanks(line);
    if (text.find('-') == std::string_view::npos || text.find('|') == std::string_view::npos)
        return false;
    const std::size_t first = text.find_first_not_of('|');
    if (first == std::string_view::npos)
        return false;
    text = text.substr(first, text.find_last_not_of('|') + 1 - first);
    return text.find_first_not_of(":-| ") == std::string_view::npos;
}

/// Splits at every pipe, escaped or not: what stands between two pipes holds none, so there is nothing to unescape.
void splitRow(std::string_view line, RowView &cells)
{
    cells.clear();
    std::string_view text = Unicode::trimmedOfBlanks(line);
    if (text.starts_with('|'))
        text.remove_prefix(1);
    if (text.ends_with('|'))
        text.remove_suffix(1);
    for (;;) {
        const std::size_t end = text.find('|');
        cells.push_back(Unicode::trimmedOfBlanks(text.substr(0, end)));
        if (end == std::string_view::npos)
            return;
        text.remove_prefix(end + 1);
    }
}

/// The next line, without its line feed, taken off the text.
std::string_view takeLine(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// A run of table lines: nothing but a table if the second line is a separator, else nothing at all.
void visitRun(std::string_view run, RowView &cells, Visitor &visitor)
{
    const std::string_view header = takeLine(run);
    if (run.empty() || !isSeparator(takeLine(run)))
        return;
    visitor.startTable();
    splitRow(header, cells);
    visitor.row(cells);
    while (!run.empty()) {
        splitRow(takeLine(run), cells);
        visitor.row(cells);
    }
}

class Gatherer : public Visitor {
public:
    void startTable() override { tables.emplace_back(); }
    void row(const RowView &cells) override { tables.back().emplace_back(cells.begin(), cells.end()); }

    std::vector<Table> tables;
};

void appendRow(std::string &text, const Row &row, std::size_t width)
{
    text += rowStart;
    for (std::size_t index = 0; index < width; ++index) {
        if (index > 0)
            text += cellGap;
        if (index < row.size())
            appendEscaped(text, row[index]);
    }
    text += rowEnd;
}

} // namespace

void parse(std::string_view text, Visitor &visitor)
{
    RowView cells;
    while (!text.empty()) {
        // A run is a stretch of the text: its lines follow one another.
        const char *start = text.data();
        std::size_t size = 0;
        bool goesOn = true;
        while (goesOn && !text.empty()) {
            const std::string_view line = takeLine(text);
            goesOn = isTableLine(line);
            if (goesOn)
                size = static_cast<std::size_t>(line.data() + line.size() - start);
        }
        visitRun({start, size}, cells, visitor);
    }
}

std::vector<Table> parse(std::string_view text)
{
    Gatherer gatherer;
    parse(text, gatherer);
    return std::move(gatherer.tables);
}

void appendEscaped(std::string &text, std::string_view cell)
{
    for (;;) {
        const std::size_t end = cell.find_first_of("|\n");
        text += cell.substr(0, end);
        if (end == std::string_view::npos)
            return;
        text += cell[end] == '|' ? "\\|" : " ";
        cell.remove_prefix(end + 1);
    }
}

void appendSeparator(std::string &text, std::size_t width)
{
    text += rowStart;
    for (std::size_t index = 0; index < width; ++index) {
        if (index > 0)
            text += cellGap;
        text += "---";
    }
    text += rowEnd;
}

std::string render(const Table &rows)
{
    std::string text;
    if (rows.empty())
        return text;
    const std::size_t width = std::ranges::max(rows, {}, &Row::size).size();
    appendRow(text, rows.front(), width);
    appendSeparator(text, width);
    for (std::size_t index = 1; index < rows.size(); ++index)
        appendRow(text, rows[index], width);
    return text;
}

} // namespace nolfa::MarkdownTable
