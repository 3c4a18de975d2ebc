#pragma once

#include "Compare/Block.h"

#include <optional>
#include <stop_token>
#include <string_view>
#include <utility>
#include <vector>

namespace nolfa {

/// A document as the flat list of its blocks, read line by line for the sake of comparison: nothing is nested, inline
/// syntax stays in the text, and each item, row and quoted line is a block of its own. Pure and thread-safe; any bytes
/// will do, and time and memory follow their number.
namespace MarkdownBlockParser {

/// The blocks in order, each with the page on which it begins where the text has page markers.
/// @throws CancellationError after a stop
[[nodiscard]] std::vector<Block> parse(std::string_view text, const std::stop_token &stop = {});

/// What kind of block a line opens, and the block's text so far, a view into the line. Absent for plain text.
[[nodiscard]] std::optional<std::pair<BlockKind, std::string_view>> classify(std::string_view line);

/// The number in a line that is a page marker (PDFToMarkdownConverter::pageMarker) and nothing else.
[[nodiscard]] std::optional<std::int64_t> pageNumber(std::string_view line);

} // namespace MarkdownBlockParser

} // namespace nolfa
