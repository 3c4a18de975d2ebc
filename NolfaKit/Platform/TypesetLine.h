#pragma once

#include "Platform/Geometry.h"

#include <string>

namespace nolfa {

/// A line of text, laid out and drawn. All lengths are in multiples of the font's size.
struct TypesetLine {
    double width = 0; ///< of all advances, blanks at the ends included
    double ascent = 0; ///< above the baseline
    double descent = 0; ///< below the baseline
    Rectangle bounds; ///< all that is painted, around the start of the baseline
    /// A PDF of one page that shows the line; the page's sides are those of the bounds, in a unit of its own.
    std::string pdf;
};

} // namespace nolfa
