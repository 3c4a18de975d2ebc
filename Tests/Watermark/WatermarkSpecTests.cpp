#include "Watermark/WatermarkSpec.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

using namespace nolfa;
using Pages = WatermarkSpec::Pages;

TEST(WatermarkSpec, beginsWithItsDefaults)
{
    const WatermarkSpec &spec = WatermarkSpec::defaultSpec();
    EXPECT_EQ(spec, WatermarkSpec());
    EXPECT_EQ(spec.text, "");
    EXPECT_EQ(spec.fontName, "Newsreader24pt-SemiBold");
    EXPECT_EQ(spec.fontSize, std::nullopt);
    EXPECT_EQ(spec.colorHex, 0x6E2433U);
    EXPECT_EQ(spec.opacity, 0.18);
    EXPECT_EQ(spec.rotationDegrees, -45);
    EXPECT_EQ(spec.placement, WatermarkSpec::Placement::diagonal);
    EXPECT_EQ(spec.tileSpacing, 48);
    EXPECT_EQ(spec.pages, Pages::all());
}

TEST(WatermarkSpec, aChangeOfAnyFieldMakesAnotherOne)
{
    const std::vector<std::function<void(WatermarkSpec &)>> changes{
        [](WatermarkSpec &spec) { spec.text = "A"; },
        [](WatermarkSpec &spec) { spec.fontName = "A"; },
        [](WatermarkSpec &spec) { spec.fontSize = 100; },
        [](WatermarkSpec &spec) { spec.colorHex = 0; },
        [](WatermarkSpec &spec) { spec.opacity = 0.19; },
        [](WatermarkSpec &spec) { spec.rotationDegrees = 45; },
        [](WatermarkSpec &spec) { spec.placement = WatermarkSpec::Placement::tiled; },
        [](WatermarkSpec &spec) { spec.tileSpacing = 47; },
        [](WatermarkSpec &spec) { spec.pages = Pages::range(1, 2); },
    };
    for (const auto &change : changes) {
        WatermarkSpec spec;
        change(spec);
        EXPECT_NE(spec, WatermarkSpec());
    }
}

TEST(WatermarkSpec, aRangeHoldsBothOfItsEnds)
{
    EXPECT_FALSE(Pages::range(2, 4).contains(1));
    EXPECT_TRUE(Pages::range(2, 4).contains(2));
    EXPECT_TRUE(Pages::range(2, 4).contains(4));
    EXPECT_FALSE(Pages::range(2, 4).contains(5));
}

TEST(WatermarkSpec, aRangeOfOnePageSelectsItAlone)
{
    for (int page = 1; page <= 5; ++page)
        EXPECT_EQ(Pages::range(3, 3).contains(page), page == 3);
}

TEST(WatermarkSpec, indicesSelectTheNumbersInTheSet)
{
    const Pages pages = Pages::indices({1, 4, 9});
    for (int page = 1; page <= 10; ++page)
        EXPECT_EQ(pages.contains(page), page == 1 || page == 4 || page == 9);
}

TEST(WatermarkSpec, anEmptySetSelectsNoPage)
{
    EXPECT_FALSE(Pages::indices({}).contains(1));
}

TEST(WatermarkSpec, allSelectsEveryPage)
{
    EXPECT_TRUE(Pages::all().contains(1));
    EXPECT_TRUE(Pages::all().contains(std::numeric_limits<std::int64_t>::max()));
}

TEST(WatermarkSpec, selectionsOfDifferentKindsDiffer)
{
    EXPECT_NE(Pages::range(3, 3), Pages::indices({3}));
    EXPECT_EQ(Pages::range(3, 4), Pages::range(3, 4));
    EXPECT_NE(Pages::range(3, 4), Pages::range(3, 5));
}
