#include "Engine/PDFTextExtraction.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace nolfa;
using PDFTextExtraction::Line;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A fragment by its left edge and the vertical centre.
RecognizedFragment fragment(const std::string &text, double left, double centre, double height = 10)
{
    return {text, {left, centre - height / 2, 100, height}};
}

} // namespace

TEST(PDFTextExtraction, nothingAndBlanksGiveNothing)
{
    for (const std::vector<RecognizedFragment> &fragments :
        {std::vector<RecognizedFragment>{}, {fragment(" \n\t", 0, 0), fragment("\u00A0", 0, 20)}}) {
        EXPECT_THAT(PDFTextExtraction::lines(fragments), IsEmpty());
        EXPECT_EQ(PDFTextExtraction::markdown(fragments), "");
    }
}

TEST(PDFTextExtraction, oneHeightIsOneLineFromLeftToRight)
{
    EXPECT_THAT(PDFTextExtraction::lines({fragment("right", 200, 50), fragment(" left ", 10, 50)}),
        ElementsAre(Line{"left right", 10}));
}

TEST(PDFTextExtraction, centresApartByExactlyTheToleranceAreOneLine)
{
    EXPECT_THAT(PDFTextExtraction::lines({fragment("a", 0, 16), fragment("b", 10, 10)}), ElementsAre(Line{"a b", 10}));
    EXPECT_THAT(PDFTextExtraction::lines({fragment("a", 0, 16.01), fragment("b", 10, 10)}),
        ElementsAre(Line{"a", 10}, Line{"b", 10}));
}

TEST(PDFTextExtraction, equalLeftEdgesKeepTheOrderFromTheTop)
{
    EXPECT_THAT(PDFTextExtraction::lines({fragment("lower", 0, 50), fragment("upper", 0, 53)}),
        ElementsAre(Line{"upper lower", 10}));
    EXPECT_THAT(PDFTextExtraction::lines({fragment("first", 0, 50), fragment("second", 0, 50)}),
        ElementsAre(Line{"first second", 10}));
}

TEST(PDFTextExtraction, theCentreOfABandMovesAsFragmentsJoin)
{
    // Each lies 5 below the one before it: 0, 5 (mean 2.5), 8.4 (5.9 from the mean), and one that is too far.
    EXPECT_THAT(PDFTextExtraction::lines(
                    {fragment("a", 0, 100), fragment("b", 10, 95), fragment("c", 20, 91.6), fragment("d", 30, 89)}),
        ElementsAre(Line{"a b c", 10}, Line{"d", 10}));
}

TEST(PDFTextExtraction, theMedianIsTheUpperMiddleOne)
{
    EXPECT_EQ(PDFTextExtraction::median({1, 2, 3, 4}), 3);
    EXPECT_EQ(PDFTextExtraction::median({4, 1, 3}), 3);
    EXPECT_EQ(PDFTextExtraction::median({7}), 7);
    EXPECT_EQ(PDFTextExtraction::median({}), std::nullopt);
}

TEST(PDFTextExtraction, theHeightOfALineIsItsMedian)
{
    EXPECT_THAT(
        PDFTextExtraction::lines({fragment("a", 0, 50, 8), fragment("b", 10, 50, 12)}), ElementsAre(Line{"a b", 12}));
}

TEST(PDFTextExtraction, aPageOfOneFragmentIsOnePlainLine)
{
    EXPECT_EQ(PDFTextExtraction::markdown({fragment("alone", 0, 50, 40)}), "alone");
}

TEST(PDFTextExtraction, linesMuchHigherThanMostAreHeadings)
{
    const auto page = [](double height) {
        return PDFTextExtraction::markdown({fragment("big", 0, 100, height), fragment("one", 0, 70),
            fragment("two", 0, 50), fragment("three", 0, 30)});
    };
    EXPECT_EQ(page(12.99), "big\none\ntwo\nthree");
    EXPECT_EQ(page(13), "## big\n\none\ntwo\nthree");
    EXPECT_EQ(page(15.99), "## big\n\none\ntwo\nthree");
    EXPECT_EQ(page(16), "# big\n\none\ntwo\nthree");
}

TEST(PDFTextExtraction, aHeadingBetweenLinesHasBlankLinesAround)
{
    EXPECT_EQ(PDFTextExtraction::markdown({fragment("before", 0, 100), fragment("head", 0, 70, 20),
                  fragment("after", 0, 40), fragment("last", 0, 20)}),
        "before\n\n# head\n\nafter\nlast");
}

TEST(PDFTextExtraction, blankFragmentsCountForTheBodyHeight)
{
    EXPECT_EQ(
        PDFTextExtraction::markdown({fragment("text", 0, 100, 20), fragment("", 0, 50, 10), fragment(" ", 0, 30, 10)}),
        "# text");
}

TEST(PDFTextExtraction, twoColumnsAreReadAcross)
{
    EXPECT_EQ(PDFTextExtraction::markdown(
                  {fragment("l1", 0, 100), fragment("l2", 0, 80), fragment("r1", 300, 100), fragment("r2", 300, 80)}),
        "l1 r1\nl2 r2");
}

TEST(PDFTextExtraction, withoutHeightOnlyTheSameCentreIsOneLine)
{
    EXPECT_THAT(
        PDFTextExtraction::lines({fragment("a", 0, 50, 0), fragment("b", 10, 50, 0), fragment("c", 20, 49.999, 0)}),
        ElementsAre(Line{"a b", 0}, Line{"c", 0}));
    EXPECT_EQ(PDFTextExtraction::markdown({fragment("flat", 0, 50, 0)}), "flat");
}
