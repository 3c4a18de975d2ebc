#pragma once

#include "Engine/MarkdownTable.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace nolfa {

/// The text of every part of the smallest workbook that a spreadsheet program opens (ECMA-376, transitional): no
/// styles, no shared strings, texts inline in their cells. Pure and thread-safe.
namespace XLSXWriter {

/// @param sheetCount  at least 1; anything less stops the process
[[nodiscard]] std::string contentTypes(std::size_t sheetCount);
[[nodiscard]] std::string workbook(std::size_t sheetCount);
[[nodiscard]] std::string workbookRels(std::size_t sheetCount);
[[nodiscard]] std::string rootRels();

/// A worksheet of these rows, every cell written, numbers as numbers.
[[nodiscard]] std::string sheet(const MarkdownTable::Table &rows);

/// The letters of a zero-based column: "A", "Z", "AA".
[[nodiscard]] std::string columnLetter(std::size_t index);

/// A worksheet piece by piece: what stands before the rows, each row, what stands behind them.
/// @{
[[nodiscard]] std::string_view sheetStart();
/// @param number   of the row, from 1
/// @param letters  the columns' letters, lengthened as need be
void appendRow(
    std::string &text, std::size_t number, const MarkdownTable::RowView &cells, std::vector<std::string> &letters);
[[nodiscard]] std::string_view sheetEnd();
/// @}

} // namespace XLSXWriter

} // namespace nolfa
