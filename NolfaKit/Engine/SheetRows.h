#pragma once

#include "Engine/MarkdownTable.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The rows of a sheet as they were read: which row and column each value claims, in document order. Kept compactly,
/// since a sheet may hold millions of cells; gaps cost nothing until the table is written. Not thread-safe.
class SheetRows {
public:
    /// Begins a row: cells before this one belong to it no longer.
    void startRow(std::int64_t rowIndex);

    /// Adds a cell to the row that was begun last, also after its end.
    /// @param column  zero-based
    /// @throws ConversionError when the sheet becomes too large
    void addCell(std::uint64_t column, std::string_view value);

    /// Ends a row with the cells since the last start; may come again without a start.
    void endRow();

    /// Whether the table would have no row.
    [[nodiscard]] bool isEmpty() const noexcept { return m_rows.empty(); }

    /// Rows that were ended, those without cells included.
    [[nodiscard]] std::size_t count() const noexcept { return m_rowCount; }

    /// Appends the pipe table of all rows that have a cell: sorted by index (ties in document order), gaps between
    /// rows closed, gaps between columns kept as empty cells; of two cells in a column the later one stands. No rows:
    /// nothing.
    /// @param flush  called between rows, so that the text can be taken away as it grows
    /// @throws ConversionError when the table would have too many cells
    void appendTable(std::string &text, const std::function<void()> &flush) const;

    /// The same as lists of equal width.
    [[nodiscard]] MarkdownTable::Table denseRows() const;

private:
    struct Position {
        std::uint32_t block = 0;
        std::uint32_t offset = 0;
        bool operator==(const Position &) const = default;
    };
    struct Row {
        std::int64_t index;
        Position begin;
        Position end;
    };
    struct Cell {
        std::uint64_t column;
        std::string_view value;
    };

    [[nodiscard]] std::uint64_t width() const;
    [[nodiscard]] std::vector<Row> sortedRows() const;
    [[nodiscard]] Cell read(Position &position) const;
    /// The cells of a row by column, each column once.
    void gather(const Row &row, std::vector<Cell> &cells) const;

    std::deque<std::string> m_blocks; ///< cells one after the other: column, length, value
    std::vector<Row> m_rows; ///< only those with cells
    std::size_t m_size = 0;
    std::size_t m_rowCount = 0;
    std::int64_t m_index = 0;
    Position m_begin;
    bool m_hasCell = false;
    std::uint64_t m_widthOfRow = 0;
    std::uint64_t m_width = 0;
};

} // namespace nolfa
