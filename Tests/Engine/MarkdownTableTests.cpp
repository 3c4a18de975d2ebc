#include "Engine/MarkdownTable.h"

#include <gmock/gmock.h>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const MarkdownTable::Row ab{"a", "b"};

} // namespace

TEST(MarkdownTable, readsTablesWithAndWithoutOuterPipes)
{
    EXPECT_THAT(MarkdownTable::parse("| a | b |\n|---|---|"), ElementsAre(ElementsAre(ab)));
    EXPECT_THAT(MarkdownTable::parse("a | b\n---|---"), ElementsAre(ElementsAre(ab)));
    EXPECT_THAT(MarkdownTable::parse("\t| a | b |\u00A0\n \t|:--|--:|\t\n| c | d |\n"),
        ElementsAre(ElementsAre(ab, ElementsAre("c", "d"))));
}

TEST(MarkdownTable, aRunWithoutASeparatorInSecondPlaceIsNoTable)
{
    EXPECT_THAT(MarkdownTable::parse("| a |\n| b |\n|---|\n| c |"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse("| a |"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse("|---|"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse("no table\n\nat all"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse(""), IsEmpty());
}

TEST(MarkdownTable, aSeparatorIsMadeOfFourCharacters)
{
    EXPECT_THAT(MarkdownTable::parse("a|b\n---\t|---"), IsEmpty()) << "a tab inside";
    EXPECT_THAT(MarkdownTable::parse("a|b\n|"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse("a|b\n|||-"), ElementsAre(ElementsAre(ab)));
    EXPECT_THAT(MarkdownTable::parse("a|b\n|: -|"), ElementsAre(ElementsAre(ab)));
    EXPECT_THAT(MarkdownTable::parse("a|b\n|=-|"), IsEmpty());
    EXPECT_THAT(MarkdownTable::parse("a|b\n---"), IsEmpty()) << "a line without a pipe ends the run";
}

TEST(MarkdownTable, aLonePipeIsARowWithOneEmptyCell)
{
    EXPECT_THAT(MarkdownTable::parse("|\n|-|\n|\n||\n| |"),
        ElementsAre(ElementsAre(ElementsAre(""), ElementsAre(""), ElementsAre(""), ElementsAre(""))));
}

TEST(MarkdownTable, rowsKeepTheirOwnLengths)
{
    EXPECT_THAT(MarkdownTable::parse("|a|b|\n|-|-|\n|c|\n|d|e|f|"),
        ElementsAre(ElementsAre(ab, ElementsAre("c"), ElementsAre("d", "e", "f"))));
}

TEST(MarkdownTable, anyOtherLinePartsTables)
{
    EXPECT_THAT(MarkdownTable::parse("a|b\n-|-\n\na|b\n-|-\ntext\na|b\n-|-"),
        ElementsAre(ElementsAre(ab), ElementsAre(ab), ElementsAre(ab)));
}

TEST(MarkdownTable, escapedPipesSplitAllTheSame)
{
    EXPECT_THAT(MarkdownTable::parse("a\\|b\n-|-"), ElementsAre(ElementsAre(ElementsAre("a\\", "b"))));
}

TEST(MarkdownTable, onlyLineFeedsEndLines)
{
    EXPECT_THAT(MarkdownTable::parse("|a|b|\r\n|-|-|\r\n|c|d|\r\n"), IsEmpty()) << "a carriage return is no blank";
    EXPECT_THAT(MarkdownTable::parse("a|b\n-|-\nc|d\r"), ElementsAre(ElementsAre(ab, ElementsAre("c", "d\r"))));
}

TEST(MarkdownTable, rendersRowsOfOneWidth)
{
    EXPECT_EQ(MarkdownTable::render({}), "");
    EXPECT_EQ(MarkdownTable::render({{}}), "|  |\n|  |\n");
    EXPECT_EQ(MarkdownTable::render({{"a"}}), "| a |\n| --- |\n");
    EXPECT_EQ(MarkdownTable::render({{"a"}, {"b", "c"}, {}}), "| a |  |\n| --- | --- |\n| b | c |\n|  |  |\n");
}

TEST(MarkdownTable, rendersPipesAndLineFeedsInsideCells)
{
    EXPECT_EQ(MarkdownTable::render({{"a\nb", "c|d", "e\\", "\r"}}),
        "| a b | c\\|d | e\\ | \r |\n| --- | --- | --- | --- |\n");
}
