#include "Engine/SheetRows.h"

#include "Engine/ReadingLimits.h"

#include <algorithm>

namespace nolfa {

namespace {

constexpr std::size_t blockSize = 1U << 18U;
constexpr std::size_t longestNumber = 10;

/// Seven bits a byte, the lowest first; the top bit says that more follow.
void appendNumber(std::string &bytes, std::uint64_t number)
{
    while (number >= 0x80) {
        bytes += static_cast<char>((number & 0x7FU) | 0x80U);
        number >>= 7U;
    }
    bytes += static_cast<char>(number);
}

std::uint64_t readNumber(std::string_view bytes, std::uint32_t &offset)
{
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(bytes[offset++]);
        number |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
        if (byte < 0x80)
            return number;
    }
}

} // namespace

void SheetRows::startRow(std::int64_t rowIndex)
{
    m_index = rowIndex;
    m_begin = m_blocks.empty()
        ? Position()
        : Position{static_cast<std::uint32_t>(m_blocks.size() - 1), static_cast<std::uint32_t>(m_blocks.back().size())};
    m_hasCell = false;
    m_widthOfRow = 0;
}

void SheetRows::addCell(std::uint64_t column, std::string_view value)
{
    const std::size_t needed = 2 * longestNumber + value.size();
    ReadingLimits::require(m_size + m_rows.size() * sizeof(Row), ReadingLimits::keptText);
    if (m_blocks.empty() || m_blocks.back().size() + needed > m_blocks.back().capacity())
        m_blocks.emplace_back().reserve(std::max(blockSize, needed));
    std::string &block = m_blocks.back();
    const std::size_t before = block.size();
    appendNumber(block, column);
    appendNumber(block, value.size());
    block += value;
    m_size += block.size() - before;
    m_hasCell = true;
    m_widthOfRow = std::max(m_widthOfRow, column + 1);
}

void SheetRows::endRow()
{
    ++m_rowCount;
    if (!m_hasCell)
        return;
    m_width = std::max(m_width, m_widthOfRow);
    const Position end{
        static_cast<std::uint32_t>(m_blocks.size() - 1), static_cast<std::uint32_t>(m_blocks.back().size())};
    m_rows.push_back({m_index, m_begin, end});
}

SheetRows::Cell SheetRows::read(Position &position) const
{
    // A row may begin at the end of a block.
    while (position.offset == m_blocks[position.block].size())
        position = {position.block + 1, 0};
    const std::string &block = m_blocks[position.block];
    const std::uint64_t column = readNumber(block, position.offset);
    const std::uint64_t length = readNumber(block, position.offset);
    const std::string_view value = std::string_view(block).substr(position.offset, length);
    position.offset += static_cast<std::uint32_t>(length);
    return {column, value};
}

void SheetRows::gather(const Row &row, std::vector<Cell> &cells) const
{
    cells.clear();
    bool isAscending = true;
    for (Position position = row.begin; position != row.end;) {
        const Cell cell = read(position);
        isAscending = isAscending && (cells.empty() || cells.back().column < cell.column);
        cells.push_back(cell);
    }
    if (isAscending)
        return;
    std::ranges::stable_sort(cells, {}, &Cell::column);
    // Of each column the last one stands: seen from behind, the first.
    const auto firstKept
        = std::unique(cells.rbegin(), cells.rend(), [](const Cell &a, const Cell &b) { return a.column == b.column; });
    cells.erase(cells.begin(), firstKept.base());
}

std::vector<SheetRows::Row> SheetRows::sortedRows() const
{
    std::vector<Row> rows = m_rows;
    std::ranges::stable_sort(rows, {}, &Row::index);
    return rows;
}

std::uint64_t SheetRows::width() const
{
    ReadingLimits::require(m_width, ReadingLimits::tableColumns);
    if (!m_rows.empty())
        ReadingLimits::require(m_width, ReadingLimits::tableCells / m_rows.size());
    return m_width;
}

void SheetRows::appendTable(std::string &text, const std::function<void()> &flush) const
{
    const std::uint64_t columns = width();
    const bool isSorted = std::ranges::is_sorted(m_rows, {}, &Row::index);
    const std::vector<Row> sorted = isSorted ? std::vector<Row>() : sortedRows();
    std::vector<Cell> cells;
    bool isHeader = true;
    for (const Row &row : isSorted ? m_rows : sorted) {
        gather(row, cells);
        text += MarkdownTable::rowStart;
        std::uint64_t column = 0;
        for (const Cell &cell : cells) {
            for (; column < cell.column; ++column)
                text += MarkdownTable::cellGap;
            MarkdownTable::appendEscaped(text, cell.value);
        }
        for (; column + 1 < columns; ++column)
            text += MarkdownTable::cellGap;
        text += MarkdownTable::rowEnd;
        if (isHeader)
            MarkdownTable::appendSeparator(text, columns);
        isHeader = false;
        flush();
    }
}

MarkdownTable::Table SheetRows::denseRows() const
{
    const std::uint64_t columns = width();
    MarkdownTable::Table table;
    std::vector<Cell> cells;
    for (const Row &row : sortedRows()) {
        gather(row, cells);
        MarkdownTable::Row &dense = table.emplace_back(columns);
        for (const Cell &cell : cells)
            dense[cell.column] = cell.value;
    }
    return table;
}

} // namespace nolfa
