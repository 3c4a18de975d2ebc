#pragma once

#include "Platform/PDFStamper.h"
#include "Watermark/WatermarkSpec.h"

namespace nolfa {

/// Where a watermark stands on a page: geometry alone. All lengths are points; a page's origin is its lower left
/// corner. Thread-safe.
namespace WatermarkLayout {

/// The width that a text of automatic size is fitted to.
[[nodiscard]] double targetWidth(WatermarkSpec::Placement placement, const Size &page);

/// The size that the text is drawn at, in points.
/// @param line  its measures
[[nodiscard]] double fontSize(const WatermarkSpec &spec, const TypesetLine &line, const Size &page);

/// Every place of the line on a page. Each is centred on its point by the line's width and by the middle of its ascent
/// and descent. The grid of a tiled watermark is centred on the page and overshoots it on all sides.
[[nodiscard]] StampPlaces places(const WatermarkSpec &spec, const TypesetLine &line, const Size &page);

} // namespace WatermarkLayout

} // namespace nolfa
