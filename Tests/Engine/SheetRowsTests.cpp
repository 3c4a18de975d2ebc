#include "Engine/SheetRows.h"

#include "Support/Expect.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::string tableOf(const SheetRows &rows)
{
    std::string text;
    rows.appendTable(text, [] {});
    EXPECT_EQ(text, MarkdownTable::render(rows.denseRows())) << "both ways say the same";
    return text;
}

void addRow(SheetRows &rows, std::int64_t index, std::initializer_list<std::pair<std::uint64_t, const char *>> cells)
{
    rows.startRow(index);
    for (const auto &[column, value] : cells)
        rows.addCell(column, value);
    rows.endRow();
}

} // namespace

TEST(SheetRows, gapsBetweenRowsCloseAndGapsBetweenColumnsStay)
{
    SheetRows rows;
    addRow(rows, 1, {{2, "c"}});
    addRow(rows, 5, {{0, "a"}, {2, "d"}});
    EXPECT_THAT(rows.denseRows(), ElementsAre(ElementsAre("", "", "c"), ElementsAre("a", "", "d")));
    EXPECT_EQ(tableOf(rows), "|  |  | c |\n| --- | --- | --- |\n| a |  | d |\n");
}

TEST(SheetRows, rowsWithoutCellsAreDroppedButCounted)
{
    SheetRows rows;
    addRow(rows, 1, {});
    EXPECT_EQ(rows.count(), 1U);
    EXPECT_TRUE(rows.isEmpty());
    EXPECT_EQ(tableOf(rows), "");
    addRow(rows, 2, {{0, ""}});
    EXPECT_THAT(rows.denseRows(), ElementsAre(ElementsAre(""))) << "a cell without a value is a cell";
}

TEST(SheetRows, rowsSortByIndexAndTiesKeepTheirOrder)
{
    SheetRows rows;
    addRow(rows, 3, {{0, "third"}});
    addRow(rows, 1, {{0, "first"}});
    addRow(rows, 3, {{0, "fourth"}});
    addRow(rows, -2, {{0, "before"}});
    EXPECT_THAT(rows.denseRows(),
        ElementsAre(ElementsAre("before"), ElementsAre("first"), ElementsAre("third"), ElementsAre("fourth")));
    (void)tableOf(rows);
}

TEST(SheetRows, ofTwoCellsInAColumnTheLaterStands)
{
    SheetRows rows;
    addRow(rows, 1, {{1, "x"}, {0, "a"}, {1, "y"}, {1, "z"}, {0, "b"}});
    EXPECT_THAT(rows.denseRows(), ElementsAre(ElementsAre("b", "z")));
    (void)tableOf(rows);
}

TEST(SheetRows, aRowThatEndsTwiceStandsTwice)
{
    SheetRows rows;
    rows.startRow(1);
    rows.addCell(0, "lost");
    rows.startRow(2);
    rows.addCell(0, "inner");
    rows.endRow();
    rows.addCell(1, "after");
    rows.endRow();
    EXPECT_THAT(rows.denseRows(), ElementsAre(ElementsAre("inner", ""), ElementsAre("inner", "after")));
    (void)tableOf(rows);
}

TEST(SheetRows, cellsOfAllSizesCrossTheirBlocks)
{
    SheetRows rows;
    std::vector<std::vector<std::string>> expected;
    for (int row = 0; row < 300; ++row) {
        rows.startRow(row);
        std::vector<std::string> &cells = expected.emplace_back();
        for (std::uint64_t column = 0; column < 7; ++column) {
            cells.emplace_back(static_cast<std::size_t>(row) * 97 % 5000 * column, 'x');
            rows.addCell(column, cells.back());
        }
        rows.endRow();
    }
    EXPECT_EQ(rows.denseRows(), expected);
    std::string large(1U << 20U, 'y');
    rows.startRow(1000);
    rows.addCell(0, large);
    rows.endRow();
    EXPECT_EQ(rows.denseRows().back().front(), large);
    (void)tableOf(rows);
}

TEST(SheetRows, escapesAsEveryTableDoes)
{
    SheetRows rows;
    addRow(rows, 1, {{0, "a|b\nc\\|"}});
    EXPECT_EQ(tableOf(rows), "| a\\|b c\\\\| |\n| --- |\n");
}

TEST(SheetRows, aSingleCellFarOutCostsNothing)
{
    SheetRows rows;
    addRow(rows, 1'048'576, {{16'383, "x"}});
    const MarkdownTable::Table table = rows.denseRows();
    ASSERT_EQ(table.size(), 1U);
    EXPECT_EQ(table.front().size(), 16'384U);
    EXPECT_EQ(table.front().back(), "x");
}

TEST(SheetRows, aSingleRowWithoutEndIsRefused)
{
    SheetRows rows;
    addRow(rows, 1, {{(1U << 20U) - 1, "x"}});
    EXPECT_EQ(rows.denseRows().front().size(), 1U << 20U);
    addRow(rows, 2, {{1U << 20U, "x"}});
    std::string text;
    (void)expectCase<ConversionError::EngineFailure>([&] { rows.appendTable(text, [] {}); });
    EXPECT_EQ(text, "");
}

TEST(SheetRows, aTableWithoutEndIsRefused)
{
    SheetRows rows;
    for (int row = 0; row < 100'000; ++row)
        addRow(rows, row, {{0, "x"}});
    addRow(rows, 100'001, {{16'383, "x"}});
    std::string text;
    (void)expectCase<ConversionError::EngineFailure>([&] { rows.appendTable(text, [] {}); });
    EXPECT_EQ(text, "");
}
