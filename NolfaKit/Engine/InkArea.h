#pragma once

#include "Platform/Bitmap.h"
#include "Platform/Geometry.h"

#include <optional>

namespace nolfa {

/// A part of a bitmap, in pixels from its upper left corner.
struct PixelArea {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelArea &) const = default;
};

/// Where on a picture anything stands. Most of a page that holds a few words is paper, and recognition would search
/// all of it. All functions are pure and thread-safe.
namespace InkArea {

/// The smallest area that holds every pixel which differs clearly from the upper left one. Absent for a picture of
/// one colour.
[[nodiscard]] std::optional<PixelArea> find(const Bitmap &image);

/// With a rim of paper around, as far as the picture has it: letters at the very edge aren't recognised.
[[nodiscard]] PixelArea withRim(PixelArea area, const Bitmap &image, int rim);

[[nodiscard]] Bitmap cropped(const Bitmap &image, PixelArea area);

/// A rectangle in fractions of the area, with the origin at the lower left, in fractions of the whole image.
[[nodiscard]] Rectangle ofWhole(Rectangle ofArea, PixelArea area, const Bitmap &image);

} // namespace InkArea

} // namespace nolfa
