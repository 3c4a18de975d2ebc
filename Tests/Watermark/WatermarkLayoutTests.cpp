#include "Watermark/WatermarkLayout.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace nolfa;
using enum WatermarkSpec::Placement;

namespace {

constexpr Size a4{595, 842};
const double diagonalOfA4 = std::hypot(595.0, 842.0);

/// Five sizes wide.
const TypesetLine line{.width = 5, .ascent = 0.9, .descent = 0.3};

struct Point {
    double x;
    double y;
};

/// Where a point of the line's own space stands on the page.
Point mapped(const Transform &map, double x, double y)
{
    return {map.a * x + map.c * y + map.e, map.b * x + map.d * y + map.f};
}

/// The middle of the line: by its width, and between ascent and descent.
Point middle(const StampPlaces &places)
{
    return mapped(places.first, line.width / 2, (line.ascent - line.descent) / 2);
}

void expectNear(const Point &point, const Point &expected)
{
    EXPECT_NEAR(point.x, expected.x, 1e-9);
    EXPECT_NEAR(point.y, expected.y, 1e-9);
}

WatermarkSpec placed(WatermarkSpec::Placement placement, double angle = -45)
{
    return {.text = "CONFIDENTIAL", .rotationDegrees = angle, .placement = placement};
}

} // namespace

TEST(WatermarkLayout, theTargetWidthFollowsThePlacement)
{
    EXPECT_DOUBLE_EQ(WatermarkLayout::targetWidth(diagonal, a4), 0.8 * diagonalOfA4);
    EXPECT_DOUBLE_EQ(WatermarkLayout::targetWidth(horizontalCenter, a4), 0.72 * 595);
    EXPECT_DOUBLE_EQ(WatermarkLayout::targetWidth(tiled, a4), 0.22 * diagonalOfA4);
}

TEST(WatermarkLayout, automaticSizeFitsTheTextToTheTargetWhateverTheAngle)
{
    for (const double angle : {-45.0, 0.0, 30.0, 90.0, 725.0}) {
        const double size = WatermarkLayout::fontSize(placed(diagonal, angle), line, a4);
        EXPECT_DOUBLE_EQ(size * line.width, 0.8 * diagonalOfA4);
    }
}

TEST(WatermarkLayout, aTextWithoutWidthHasSize100)
{
    EXPECT_EQ(WatermarkLayout::fontSize(placed(diagonal), {.ascent = 1}, a4), 100);
}

TEST(WatermarkLayout, aGivenSizeStands)
{
    WatermarkSpec spec = placed(diagonal);
    spec.fontSize = 33.5;
    EXPECT_EQ(WatermarkLayout::fontSize(spec, line, a4), 33.5);
}

TEST(WatermarkLayout, aSizeOfZeroOrLessIsOnePoint)
{
    WatermarkSpec spec = placed(diagonal);
    for (const double size : {0.0, -12.0, 0.5, 1.0}) {
        spec.fontSize = size;
        EXPECT_EQ(WatermarkLayout::fontSize(spec, line, a4), 1);
    }
}

TEST(WatermarkLayout, oneLineIsCentredOnThePageByItsTypographicBounds)
{
    for (const auto placement : {diagonal, horizontalCenter}) {
        for (const double angle : {-45.0, 0.0, 17.0, 180.0}) {
            const StampPlaces places = WatermarkLayout::places(placed(placement, angle), line, a4);
            expectNear(middle(places), {297.5, 421});
            EXPECT_EQ(places.columns, 1);
            EXPECT_EQ(places.rows, 1);
            EXPECT_FALSE(places.isClipped);
        }
    }
}

TEST(WatermarkLayout, positiveAnglesTurnCounterClockwise)
{
    const StampPlaces places = WatermarkLayout::places(placed(diagonal, 90), line, a4);
    const Point start = mapped(places.first, 0, 0);
    const Point end = mapped(places.first, line.width, 0);
    EXPECT_NEAR(start.x, end.x, 1e-9);
    EXPECT_LT(start.y, end.y);
}

TEST(WatermarkLayout, theLevelLineIgnoresTheRotation)
{
    const StampPlaces places = WatermarkLayout::places(placed(horizontalCenter, 77), line, a4);
    EXPECT_EQ(places, WatermarkLayout::places(placed(horizontalCenter, 0), line, a4));
    EXPECT_EQ(places.first.b, 0);
    EXPECT_EQ(places.first.c, 0);
}

TEST(WatermarkLayout, tilesStepByTheTurnedLinesBoxAndTheSpacing)
{
    WatermarkSpec spec = placed(tiled, 30);
    spec.fontSize = 20;
    spec.tileSpacing = 48;
    const StampPlaces places = WatermarkLayout::places(spec, line, a4);
    const double c = std::sqrt(3.0) / 2;
    const double n = 0.5;
    EXPECT_NEAR(places.stepX, c * 100 + n * 24 + 48, 1e-9);
    EXPECT_NEAR(places.stepY, n * 100 + c * 24 + 48, 1e-9);
    const double columns = std::ceil(595 / places.stepX) + 2;
    const double rows = std::ceil(842 / places.stepY) + 2;
    EXPECT_EQ(places.columns, columns + 1);
    EXPECT_EQ(places.rows, rows + 1);
    expectNear(middle(places), {297.5 - places.stepX * columns / 2, 421 - places.stepY * rows / 2});
    EXPECT_TRUE(places.isClipped);
}

TEST(WatermarkLayout, theGridIsCentredAndOvershootsThePageOnAllSides)
{
    for (const double angle : {-45.0, 0.0, 90.0, 33.0}) {
        const StampPlaces places = WatermarkLayout::places(placed(tiled, angle), line, a4);
        const Point first = middle(places);
        const Point last{first.x + places.stepX * (places.columns - 1), first.y + places.stepY * (places.rows - 1)};
        expectNear({(first.x + last.x) / 2, (first.y + last.y) / 2}, {297.5, 421});
        EXPECT_LE(first.x + places.stepX / 2, 0);
        EXPECT_LE(first.y + places.stepY / 2, 0);
        EXPECT_GE(last.x - places.stepX / 2, 595);
        EXPECT_GE(last.y - places.stepY / 2, 842);
    }
}

TEST(WatermarkLayout, withoutSpacingTilesTouch)
{
    WatermarkSpec spec = placed(tiled, 0);
    spec.fontSize = 10;
    spec.tileSpacing = 0;
    const StampPlaces places = WatermarkLayout::places(spec, line, a4);
    EXPECT_DOUBLE_EQ(places.stepX, 50);
    EXPECT_DOUBLE_EQ(places.stepY, 12);
}

TEST(WatermarkLayout, negativeSpacingNeverStepsByLessThanAPoint)
{
    WatermarkSpec spec = placed(tiled, 0);
    spec.fontSize = 10;
    spec.tileSpacing = -20;
    EXPECT_DOUBLE_EQ(WatermarkLayout::places(spec, line, a4).stepX, 30);
    EXPECT_DOUBLE_EQ(WatermarkLayout::places(spec, line, a4).stepY, 1);
    spec.tileSpacing = -1e9;
    const StampPlaces places = WatermarkLayout::places(spec, line, a4);
    EXPECT_EQ(places.stepX, 1);
    EXPECT_EQ(places.columns, 598);
    EXPECT_EQ(places.rows, 845);
}

TEST(WatermarkLayout, whatIsNoNumberStillGivesAPlace)
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double odd : {infinite, -infinite, std::numeric_limits<double>::quiet_NaN()}) {
        WatermarkSpec spec = placed(tiled, odd);
        spec.tileSpacing = odd;
        spec.fontSize = odd;
        const StampPlaces places = WatermarkLayout::places(spec, line, a4);
        for (const double value : {places.first.a, places.first.e, places.first.f, places.stepX, places.stepY})
            EXPECT_TRUE(std::isfinite(value));
    }
}

TEST(WatermarkLayout, anEndlessPageHasABoundedNumberOfTiles)
{
    WatermarkSpec spec = placed(tiled, 0);
    spec.tileSpacing = -1e9;
    const StampPlaces places = WatermarkLayout::places(spec, line, {1e12, 1e12});
    EXPECT_LE(places.columns, 20'001);
    EXPECT_LE(places.rows, 20'001);
    const Point first = middle(places);
    EXPECT_NEAR(first.x + places.stepX * (places.columns - 1) / 2, 5e11, 1e6);
}
