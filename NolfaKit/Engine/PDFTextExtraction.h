#pragma once

#include "Engine/RecognizedFragment.h"

#include <optional>
#include <string>
#include <vector>

namespace nolfa {

/// Turns what was recognised on a page, in no useful order, into reading order and Markdown. Knows text and
/// rectangles alone. There are no columns: fragments that share a height on the page are one line.
/// All functions are pure and thread-safe.
namespace PDFTextExtraction {

/// A part of the median height of fragments: how far the centres of one line's fragments may lie apart.
inline constexpr double bandTolerance = 0.6;

struct Line {
    std::string text;
    double height = 0; ///< median of its fragments' heights, in their unit

    bool operator==(const Line &) const = default;
};

/// In reading order, blank fragments left out.
[[nodiscard]] std::vector<Line> lines(const std::vector<RecognizedFragment> &fragments);

/// One page: a line of text a line, lines far higher than most as headings. Without blank lines around.
[[nodiscard]] std::string markdown(const std::vector<RecognizedFragment> &fragments);

/// The upper middle one of the sorted values; absent for none.
[[nodiscard]] std::optional<double> median(std::vector<double> values);

} // namespace PDFTextExtraction

} // namespace nolfa
