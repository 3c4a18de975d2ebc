#pragma once

#include "Platform/PDFLineBuilder.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// From the lines of a PDF's pages to one Markdown text, and which pages have too little text to be read that way.
/// All functions are pure and thread-safe.
namespace PDFPageMarkdown {

/// When a page counts as scanned.
struct Thresholds {
    std::size_t minCharactersPerPage = 24; ///< below it, always
    double thinPageRatio = 0.15; ///< below this part of the median page
};

/// User-perceived characters of a page's text, blanks around it and unknown glyphs (U+FFFD) left out.
[[nodiscard]] std::size_t characters(const std::vector<PDFTextLine> &lines);

/// The upper middle one of the sorted counts, pages without text left out; 0 for none.
[[nodiscard]] std::size_t medianCharacters(std::vector<std::size_t> counts);

[[nodiscard]] bool needsRecognition(std::size_t characters, std::size_t median, const Thresholds &thresholds);

/// The size of body text, in points, over all lines of all pages given; 12 when no line has one.
[[nodiscard]] double bodySize(const std::vector<const std::vector<PDFTextLine> *> &pages);

/// One page: larger lines as headings, bulleted and numbered ones as items, the others as they stand.
[[nodiscard]] std::string markdown(const std::vector<PDFTextLine> &lines, double bodySize);

/// What follows a bullet or a number at the start of a line; absent when there is none.
[[nodiscard]] std::optional<std::string_view> strippedBullet(std::string_view line);

/// The comment that stands before the text of page @p number, counted from one.
[[nodiscard]] std::string pageMarker(std::size_t number);

enum class PageMarkers { no, yes };

/// The document's text: blocks with a blank line between them, a line feed at the end.
[[nodiscard]] std::string assemble(const std::vector<std::string> &pages, PageMarkers markers);

} // namespace PDFPageMarkdown

} // namespace nolfa
