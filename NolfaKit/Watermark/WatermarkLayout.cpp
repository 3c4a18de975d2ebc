#include "Watermark/WatermarkLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nolfa::WatermarkLayout {

namespace {

using Placement = WatermarkSpec::Placement;

/// Beyond it a number that someone typed serves no page, and would leave those that a PDF can hold.
constexpr double farthest = 1e6;

/// Columns or rows. A page of the largest size that readers promise (14,400 points) has fewer at the least step; more
/// would only be asked for by a file that means harm.
constexpr double mostTiles = 20'000;

double bounded(double value)
{
    return std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0;
}

double radians(const WatermarkSpec &spec)
{
    constexpr double halfTurn = 180;
    const bool isLevel = spec.placement == Placement::horizontalCenter || !std::isfinite(spec.rotationDegrees);
    return isLevel ? 0 : spec.rotationDegrees * std::numbers::pi / halfTurn;
}

/// How far one tile is from the next.
double step(double length)
{
    constexpr double least = 1;
    return std::max(length, least);
}

/// Tiles along one side of the page, without the last one.
double tiles(double side, double step)
{
    return std::min(std::ceil(side / step) + 2, mostTiles);
}

/// A line set at a size, centred on the origin and turned.
Transform centred(const TypesetLine &line, double size, double angle)
{
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const double x = -line.width * size / 2;
    const double y = -(line.ascent - line.descent) * size / 2;
    return {size * cosine, size * sine, -size * sine, size * cosine, cosine * x - sine * y, sine * x + cosine * y};
}

} // namespace

double targetWidth(Placement placement, const Size &page)
{
    constexpr double diagonalPart = 0.8;
    constexpr double levelPart = 0.72;
    constexpr double tilePart = 0.22;
    const double diagonal = std::hypot(page.width, page.height);
    switch (placement) {
    case Placement::diagonal:
        return diagonalPart * diagonal;
    case Placement::horizontalCenter:
        return levelPart * page.width;
    case Placement::tiled:
        return tilePart * diagonal;
    }
    return 0;
}

double fontSize(const WatermarkSpec &spec, const TypesetLine &line, const Size &page)
{
    constexpr double least = 1;
    constexpr double sizeOfNothing = 100;
    if (spec.fontSize)
        return std::max(bounded(*spec.fontSize), least);
    return line.width > 0 ? bounded(targetWidth(spec.placement, page) / line.width) : sizeOfNothing;
}

StampPlaces places(const WatermarkSpec &spec, const TypesetLine &line, const Size &page)
{
    const double size = fontSize(spec, line, page);
    const double angle = radians(spec);
    StampPlaces result{.first = centred(line, size, angle)};
    double x = page.width / 2;
    double y = page.height / 2;
    if (spec.placement == Placement::tiled) {
        const double cosine = std::abs(std::cos(angle));
        const double sine = std::abs(std::sin(angle));
        const double width = line.width * size;
        const double height = (line.ascent + line.descent) * size;
        const double spacing = bounded(spec.tileSpacing);
        result.stepX = step(cosine * width + sine * height + spacing);
        result.stepY = step(sine * width + cosine * height + spacing);
        const double columns = tiles(page.width, result.stepX);
        const double rows = tiles(page.height, result.stepY);
        x -= result.stepX * columns / 2;
        y -= result.stepY * rows / 2;
        // Both ends are included.
        result.columns = static_cast<int>(columns) + 1;
        result.rows = static_cast<int>(rows) + 1;
        result.isClipped = true;
    }
    result.first.e += x;
    result.first.f += y;
    return result;
}

} // namespace nolfa::WatermarkLayout
