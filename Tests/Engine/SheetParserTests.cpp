#include "Engine/SheetParser.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

MarkdownTable::Table rowsOf(const std::string &rows, const std::vector<std::string> &shared = {"zero", "one", "two"},
    const std::vector<std::int64_t> &formats = {0, 14, 22, 20})
{
    const TemporaryFolder folder;
    const auto part = folder.write("sheet1.xml", "<worksheet><sheetData>" + rows + "</sheetData></worksheet>");
    return SheetParser::parse(part, SharedStrings(shared), CellFormats(formats), {}).denseRows();
}

/// The text of a single cell.
std::string cell(const std::string &attributes, const std::string &content)
{
    const MarkdownTable::Table rows = rowsOf("<row><c " + attributes + ">" + content + "</c></row>");
    return rows.size() == 1 && rows[0].size() == 1 ? rows[0][0] : "not one cell";
}

} // namespace

TEST(SheetParser, columnsAreNamedByLetters)
{
    EXPECT_EQ(SheetParser::columnIndex("A1"), 0U);
    EXPECT_EQ(SheetParser::columnIndex("Z9"), 25U);
    EXPECT_EQ(SheetParser::columnIndex("AA1"), 26U);
    EXPECT_EQ(SheetParser::columnIndex("b2"), 1U);
    EXPECT_EQ(SheetParser::columnIndex("XFD1048576"), 16'383U);
    EXPECT_EQ(SheetParser::columnIndex(""), 0U);
    EXPECT_EQ(SheetParser::columnIndex("12"), 0U);
    EXPECT_EQ(SheetParser::columnIndex("$A$1"), 0U);
    EXPECT_EQ(SheetParser::columnIndex("A1B"), 0U);
    EXPECT_EQ(SheetParser::columnIndex("é1"), 0xC9U - 64 - 1) << "any letter counts, by its upper case";
    EXPECT_EQ(SheetParser::columnIndex("ß"), 19U - 1) << "of SS the first";
    EXPECT_EQ(SheetParser::columnIndex("A\xFF"), 0U);
    EXPECT_GT(SheetParser::columnIndex(std::string(1000, 'Z')), 1U << 30U) << "and no overflow";
}

TEST(SheetParser, sharedStringsGoByIndex)
{
    EXPECT_EQ(cell("t='s'", "<v>1</v>"), "one");
    EXPECT_EQ(cell("t='s'", "<v>+2</v>"), "two");
    EXPECT_EQ(cell("t='s'", "<v>5</v>"), "5");
    EXPECT_EQ(cell("t='s'", "<v>-1</v>"), "-1");
    EXPECT_EQ(cell("t='s'", "<v>x</v>"), "x");
    EXPECT_EQ(cell("t='s'", ""), "");
}

TEST(SheetParser, booleansAreWords)
{
    EXPECT_EQ(cell("t='b'", "<v>1</v>"), "TRUE");
    EXPECT_EQ(cell("t='b'", "<v>0</v>"), "FALSE");
    EXPECT_EQ(cell("t='b'", ""), "FALSE");
}

TEST(SheetParser, otherTypesShowWhatTheFileHolds)
{
    EXPECT_EQ(cell("t='e'", "<v>#DIV/0!</v>"), "#DIV/0!");
    EXPECT_EQ(cell("t='str' s='1'", "<f>A1</f><v>45000</v>"), "45000");
    EXPECT_EQ(cell("t='d' s='1'", "<v>2026-01-01</v>"), "2026-01-01");
}

TEST(SheetParser, numbersFollowTheirStyle)
{
    EXPECT_EQ(cell("s='0'", "<v>45000</v>"), "45000");
    EXPECT_EQ(cell("s='1'", "<v>45000</v>"), "2023-03-15");
    EXPECT_EQ(cell("s='1' t='n'", "<v>45000</v>"), "2023-03-15");
    EXPECT_EQ(cell("s='2'", "<v>45000.5</v>"), "2023-03-15 12:00:00");
    EXPECT_EQ(cell("s='3'", "<v>0.25</v>"), "06:00:00");
    EXPECT_EQ(cell("s='9'", "<v>45000</v>"), "45000");
    EXPECT_EQ(cell("s=''", "<v>45000</v>"), "45000");
    EXPECT_EQ(cell("s='1'", "<v>soon</v>"), "soon");
    EXPECT_EQ(cell("", "<v>0.10000000000000001</v>"), "0.10000000000000001");
}

TEST(SheetParser, inlineStringsKeepTheirLastRun)
{
    EXPECT_EQ(cell("t='inlineStr'", "<is><t>one</t></is>"), "one");
    EXPECT_EQ(cell("t='inlineStr'", "<is><r><t>first</t></r><r><t>second</t></r></is>"), "second");
    EXPECT_EQ(cell("t='inlineStr'", "<is><t>first</t><t/></is>"), "");
}

TEST(SheetParser, formulasAndOtherElementsAreIgnored)
{
    EXPECT_EQ(cell("", "<f>SUM(A1:A2)</f><v>3</v><extLst><ext>x</ext></extLst>"), "3");
}

TEST(SheetParser, rowsGoByTheirNumberOrByTheirPlace)
{
    EXPECT_THAT(
        rowsOf("<row r='2'><c><v>b</v></c></row><row r='x'><c><v>c</v></c></row><row r='1'><c><v>a</v></c></row>"),
        ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("c")))
        << "the second counts as 2, and ties keep their order";
    EXPECT_THAT(rowsOf("<row/><row/><row><c><v>c</v></c></row><row r='2'><c><v>b</v></c></row>"),
        ElementsAre(ElementsAre("b"), ElementsAre("c")))
        << "rows without cells count for the place";
}

TEST(SheetParser, cellsWithoutReferenceShareTheFirstColumn)
{
    EXPECT_THAT(rowsOf("<row><c><v>1</v></c><c r='2'><v>2</v></c><c r='B1'><v>3</v></c></row>"),
        ElementsAre(ElementsAre("2", "3")));
}

TEST(SheetParser, styledBlanksCountForTheWidth)
{
    EXPECT_THAT(rowsOf("<row r='1'><c r='A1'><v>1</v></c></row><row r='2'><c r='C2' s='1'/></row>"),
        ElementsAre(ElementsAre("1", "", ""), ElementsAre("", "", "")));
}

TEST(SheetParser, prefixedElementsAreNotUnderstood)
{
    EXPECT_THAT(rowsOf("<x:row><x:c><x:v>1</x:v></x:c></x:row>"), IsEmpty());
}

TEST(SheetParser, damageKeepsTheRowsBefore)
{
    EXPECT_THAT(rowsOf("<row><c><v>1</v></c></row><row><c><v>2</v></c></wor>"), ElementsAre(ElementsAre("1")));
    const TemporaryFolder folder;
    EXPECT_TRUE(SheetParser::parse(folder / "missing", SharedStrings(), CellFormats({}), {}).isEmpty());
}

TEST(SheetParser, entitiesAndCdataAreText)
{
    EXPECT_EQ(cell("t='str'", "<v>a&amp;b<![CDATA[<c>]]>&#233;</v>"), "a&b<c>é");
}
