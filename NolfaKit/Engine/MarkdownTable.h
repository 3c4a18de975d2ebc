#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The one codec of pipe tables. Pure and thread-safe; nothing here fails.
namespace MarkdownTable {

using Row = std::vector<std::string>;
using Table = std::vector<Row>;

/// The pipe tables of a text, in order; the first row of each is its header. Rows may differ in length. Lines end at
/// U+000A only.
[[nodiscard]] std::vector<Table> parse(std::string_view text);

/// Rows as a pipe table of the width of the longest: each line, the last one too, ends in a line feed.
[[nodiscard]] std::string render(const Table &rows);

/// What render() and parse() do, without a table in memory.
/// @{

/// One row of views into a text, reused from row to row.
using RowView = std::vector<std::string_view>;

class Visitor {
public:
    Visitor() = default;
    Visitor(const Visitor &) = delete;
    Visitor &operator=(const Visitor &) = delete;
    virtual ~Visitor() = default;
    virtual void startTable() = 0;
    virtual void row(const RowView &cells) = 0;
};
void parse(std::string_view text, Visitor &visitor);

/// Appends a cell as it stands between its pipes.
void appendEscaped(std::string &text, std::string_view cell);
/// Appends the line that follows the header.
void appendSeparator(std::string &text, std::size_t width);
/// What stands before the first cell, between two, and behind the last.
inline constexpr std::string_view rowStart = "| ";
inline constexpr std::string_view cellGap = " | ";
inline constexpr std::string_view rowEnd = " |\n";

/// @}

} // namespace MarkdownTable

} // namespace nolfa
