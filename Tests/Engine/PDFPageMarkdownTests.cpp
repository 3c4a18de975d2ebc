#include "Engine/PDFPageMarkdown.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::PDFPageMarkdown;

namespace {

std::vector<PDFTextLine> body(const std::vector<std::string> &texts, double size = 12)
{
    std::vector<PDFTextLine> lines;
    for (const std::string &text : texts)
        lines.push_back({text, size});
    return lines;
}

} // namespace

TEST(PDFPageMarkdown, aPageOf24CharactersIsTextOneOf23IsScanned)
{
    EXPECT_FALSE(needsRecognition(24, 24, {}));
    EXPECT_TRUE(needsRecognition(23, 23, {}));
}

TEST(PDFPageMarkdown, aPageFarThinnerThanMostIsScanned)
{
    EXPECT_EQ(medianCharacters({1000, 1000, 100}), 1000U);
    EXPECT_TRUE(needsRecognition(100, 1000, {}));
    EXPECT_EQ(medianCharacters({1000, 150}), 1000U);
    EXPECT_FALSE(needsRecognition(150, 1000, {}));
}

TEST(PDFPageMarkdown, withoutAnyTextEveryPageIsScanned)
{
    EXPECT_EQ(medianCharacters({0, 0, 0}), 0U);
    EXPECT_TRUE(needsRecognition(0, 0, {}));
    EXPECT_EQ(medianCharacters({0, 7, 0}), 7U) << "pages without text take no part";
}

TEST(PDFPageMarkdown, charactersAreWhatAReaderCounts)
{
    EXPECT_EQ(characters({}), 0U);
    EXPECT_EQ(characters(body({"abc"})), 3U);
    EXPECT_EQ(characters(body({"e\u0301te\u0301"})), 3U) << "accents belong to their letters";
    EXPECT_EQ(characters(body({"ab", "cd"})), 5U) << "the line feed between counts";
    EXPECT_EQ(characters(body({"a\uFFFDb", "\uFFFD \uFFFD", "c"})), 4U) << "unknown glyphs don't";
    EXPECT_EQ(characters(body({"\uFFFD\uFFFD"})), 0U);
}

TEST(PDFPageMarkdown, bodyTextIsMeasuredOverAllPages)
{
    const std::vector<PDFTextLine> one = body({"a", "b"}, 10);
    const std::vector<PDFTextLine> two = body({"c", "d", "e"}, 11);
    EXPECT_EQ(bodySize({&one, &two}), 11);
    const std::vector<PDFTextLine> unknown = body({"a"}, 0);
    EXPECT_EQ(bodySize({&unknown}), 12);
    EXPECT_EQ(bodySize({}), 12);
    EXPECT_EQ(markdown(unknown, 12), "a");
}

TEST(PDFPageMarkdown, largerLinesAreHeadings)
{
    EXPECT_EQ(markdown({{"head", 13}}, 10), "## head") << "exactly 1.3 times";
    EXPECT_EQ(markdown({{"head", 16}}, 10), "# head") << "exactly 1.6 times";
    EXPECT_EQ(markdown({{"text", 12.99}}, 10), "text");
    EXPECT_EQ(markdown({{"a", 10}, {"head", 20}, {"b", 10}}, 10), "a\n\n# head\n\nb");
}

TEST(PDFPageMarkdown, aHeadingIsNeverAnItem)
{
    EXPECT_EQ(markdown({{"1. First", 20}}, 10), "# 1. First");
}

TEST(PDFPageMarkdown, bulletsAndNumbersAreItems)
{
    EXPECT_EQ(
        markdown(
            body({"• item", "◦ item", "▪ item", "· item", "- item", "* item", "– item", "2) item", "3. item"}), 12),
        "- item\n- item\n- item\n- item\n- item\n- item\n- item\n- item\n- item");
}

TEST(PDFPageMarkdown, aBulletNeedsABlankBehindIt)
{
    EXPECT_EQ(strippedBullet("• item"), "item");
    EXPECT_EQ(strippedBullet("•   item "), "item");
    EXPECT_EQ(strippedBullet("•item"), std::nullopt);
    EXPECT_EQ(strippedBullet("•\u00A0item"), std::nullopt);
    EXPECT_EQ(strippedBullet("-"), std::nullopt);
    EXPECT_EQ(strippedBullet("— item"), std::nullopt);
}

TEST(PDFPageMarkdown, aNumberNeedsItsSignAndABlank)
{
    EXPECT_EQ(strippedBullet("2) item"), "item");
    EXPECT_EQ(strippedBullet("12.\u00A0 item"), "item");
    EXPECT_EQ(strippedBullet("\u0663. item"), "item") << "digits of any script";
    EXPECT_EQ(strippedBullet("1.5 litres"), std::nullopt);
    EXPECT_EQ(strippedBullet("1 item"), std::nullopt);
    EXPECT_EQ(strippedBullet("1."), std::nullopt);
    EXPECT_EQ(strippedBullet("a) item"), std::nullopt);
    EXPECT_EQ(strippedBullet(""), std::nullopt);
}

TEST(PDFPageMarkdown, pagesAreAssembledInOrder)
{
    EXPECT_EQ(assemble({"a", "", "b"}, PageMarkers::no), "a\n\nb\n");
    EXPECT_EQ(assemble({"a", "", "b"}, PageMarkers::yes),
        "<!-- nolfa:page 1 -->\n\na\n\n<!-- nolfa:page 2 -->\n\n<!-- nolfa:page 3 -->\n\nb\n");
    EXPECT_EQ(assemble({" \na\n\n"}, PageMarkers::no), "a\n");
}
