#include "Engine/Converters/XLSXConverter.h"

#include "Engine/XLSXWriter.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

std::string sheetWith(const std::string &text)
{
    return text.empty() ? "<worksheet><sheetData/></worksheet>"
                        : "<worksheet><sheetData><row><c t='str'><v>" + text + "</v></c></row></sheetData></worksheet>";
}

std::string workbook(const std::string &sheets)
{
    return "<workbook xmlns:r='urn:r'><sheets>" + sheets + "</sheets></workbook>";
}

std::string relationships(const std::vector<std::pair<std::string, std::string>> &targets)
{
    std::string text = "<Relationships>";
    for (const auto &[id, target] : targets)
        text += "<Relationship Id='" + id + "' Target='" + target + "'/>";
    return text + "</Relationships>";
}

class XLSXConverterTest : public ::testing::Test {
protected:
    std::string markdownOf(const ZipBuilder &package)
    {
        const fs::path output = folder / "out.md";
        fs::remove(output);
        XLSXConverter().convert(package.write(folder / "in.xlsx"), output, {xlsx, markdown}, {});
        return contentOf(output);
    }

    /// The parts of the workbook made of a Markdown text.
    fs::path workbookOf(std::string_view text)
    {
        fs::path output = folder / "out.xlsx";
        fs::remove(output);
        XLSXConverter().convert(folder.write("in.md", text), output, {markdown, xlsx}, {});
        return output;
    }

    void TearDown() override { EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch is left"; }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
};

/// A workbook of sheets one.xml, two.xml and so on, all in the list.
ZipBuilder listed(const std::vector<std::string> &sheets)
{
    std::string list;
    std::vector<std::pair<std::string, std::string>> targets;
    ZipBuilder builder;
    for (std::size_t index = 0; index < sheets.size(); ++index) {
        const std::string number = std::to_string(index + 1);
        list += "<sheet name='Name &amp; " + number + "' r:id='r" + number + "'/>";
        targets.emplace_back("r" + number, "worksheets/any" + number + ".xml");
        builder.add("xl/worksheets/any" + number + ".xml", sheetWith(sheets[index]));
    }
    return builder.add("xl/workbook.xml", workbook(list)).add("xl/_rels/workbook.xml.rels", relationships(targets));
}

} // namespace

TEST_F(XLSXConverterTest, servesBothDirectionsAndNothingElse)
{
    EXPECT_THAT(XLSXConverter().pairs(), ElementsAre(ConversionPair{xlsx, markdown}, ConversionPair{markdown, xlsx}));
    expectError(ConversionError::unsupportedPair(xlsx, pdf), [&] {
        XLSXConverter().convert(folder / "a", folder / "b", {xlsx, pdf}, {});
    });
}

TEST_F(XLSXConverterTest, oneSheetHasNoHeading)
{
    EXPECT_EQ(markdownOf(listed({"x"})), "| x |\n| --- |\n\n");
}

TEST_F(XLSXConverterTest, severalSheetsHaveHeadingsAndEmptyOnesNothing)
{
    EXPECT_EQ(markdownOf(listed({"x", ""})), "## Name & 1\n\n| x |\n| --- |\n\n");
    EXPECT_EQ(markdownOf(listed({"x", "", "y"})), "## Name & 1\n\n| x |\n| --- |\n\n## Name & 3\n\n| y |\n| --- |\n\n");
}

TEST_F(XLSXConverterTest, aWorkbookWithoutRowsGivesAnEmptyFile)
{
    EXPECT_EQ(markdownOf(listed({"", ""})), "");
    EXPECT_EQ(markdownOf(ZipBuilder().add("hello.txt", "no workbook")), "");
}

TEST_F(XLSXConverterTest, targetsOfAllFormsReachTheSheet)
{
    for (const char *target : {"worksheets/s.xml", "/xl/worksheets/s.xml", "xl/worksheets/s.xml"}) {
        EXPECT_EQ(markdownOf(ZipBuilder()
                                 .add("xl/workbook.xml", workbook("<sheet name='A' r:id='1'/>"))
                                 .add("xl/_rels/workbook.xml.rels", relationships({{"1", target}}))
                                 .add("xl/worksheets/s.xml", sheetWith("x"))
                                 .add("xl/worksheets/a.xml", sheetWith("unlisted"))),
            "| x |\n| --- |\n\n")
            << target;
    }
}

TEST_F(XLSXConverterTest, sheetsStandInTheWorkbooksOrderWithTheirNames)
{
    const ZipBuilder package = ZipBuilder()
                                   .add("xl/workbook.xml",
                                       workbook("<sheet name='Later' r:id='2' state='hidden'/><sheet id='1'/>"
                                                "<sheet name='Gone' r:id='3'/><sheet name='Nowhere'/>"))
                                   .add("xl/_rels/workbook.xml.rels",
                                       relationships({{"1", "worksheets/one.xml"}, {"2", "worksheets/two.xml"},
                                           {"3", "worksheets/missing.xml"}}))
                                   .add("xl/worksheets/one.xml", sheetWith("1"))
                                   .add("xl/worksheets/two.xml", sheetWith("2"));
    EXPECT_EQ(markdownOf(package), "## Later\n\n| 2 |\n| --- |\n\n## Sheet\n\n| 1 |\n| --- |\n\n");
}

TEST_F(XLSXConverterTest, withoutAUsableListTheFolderDecides)
{
    const std::string expected = "## Sheet 1\n\n| ten |\n| --- |\n\n## Sheet 2\n\n| two |\n| --- |\n\n";
    const auto sheets = [](ZipBuilder builder) {
        return builder.add("xl/worksheets/sheet2.xml", sheetWith("two"))
            .add("xl/worksheets/sheet10.xml", sheetWith("ten"))
            .add("xl/worksheets/notes.txt", "x");
    };
    EXPECT_EQ(markdownOf(sheets(ZipBuilder())), expected);
    EXPECT_EQ(markdownOf(sheets(ZipBuilder()
                                    .add("xl/workbook.xml", workbook("<sheet name='A' r:id='1'/>"))
                                    .add("xl/_rels/workbook.xml.rels", relationships({{"1", "missing.xml"}})))),
        expected);
}

TEST_F(XLSXConverterTest, sharedStringsAndStylesTakePart)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("xl/sharedStrings.xml", "<sst><si><t>été</t></si></sst>")
                             .add("xl/styles.xml", "<styleSheet><cellXfs><xf numFmtId='14'/></cellXfs></styleSheet>")
                             .add("xl/worksheets/sheet1.xml",
                                 "<worksheet><sheetData><row><c r='A1' t='s'><v>0</v></c>"
                                 "<c r='B1' s='0'><v>45000</v></c></row></sheetData></worksheet>")),
        "| été | 2023-03-15 |\n| --- | --- |\n\n");
}

TEST_F(XLSXConverterTest, tablesBecomeSheets)
{
    const fs::path output = workbookOf("# Title\n\n| a | b |\n|---|---|\n| 1 | x & <y> |\n\ntext\n\nc | d\n-|-\n");
    EXPECT_THAT(partsOf(output),
        ::testing::IsSupersetOf({"[Content_Types].xml", "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels",
            "xl/worksheets/sheet1.xml", "xl/worksheets/sheet2.xml"}));
    EXPECT_EQ(partOf(output, "xl/worksheets/sheet1.xml"), XLSXWriter::sheet({{"a", "b"}, {"1", "x & <y>"}}));
    EXPECT_EQ(partOf(output, "xl/worksheets/sheet2.xml"), XLSXWriter::sheet({{"c", "d"}}));
    EXPECT_EQ(partOf(output, "xl/workbook.xml"), XLSXWriter::workbook(2));
    EXPECT_EQ(partOf(output, "xl/_rels/workbook.xml.rels"), XLSXWriter::workbookRels(2));
    EXPECT_EQ(partOf(output, "_rels/.rels"), XLSXWriter::rootRels());
    EXPECT_EQ(partOf(output, "\\[Content_Types\\].xml"), XLSXWriter::contentTypes(2));
}

TEST_F(XLSXConverterTest, aTextWithoutTablesSaysSo)
{
    const fs::path output = workbookOf("no table");
    EXPECT_EQ(partOf(output, "xl/worksheets/sheet1.xml"), XLSXWriter::sheet({{"(no tables found)"}}));
}

TEST_F(XLSXConverterTest, whatIsWrittenReadsBack)
{
    const fs::path output = workbookOf("| a | b |\n|---|---|\n| 007 | é & \"q\" |\n|  | z |\n");
    const fs::path back = folder / "back.md";
    XLSXConverter().convert(output, back, {xlsx, markdown}, {});
    EXPECT_EQ(contentOf(back), "| a | b |\n| --- | --- |\n| 007 | é & \"q\" |\n|  | z |\n\n");
}

TEST_F(XLSXConverterTest, aLatin1TextIsRead)
{
    EXPECT_THAT(partOf(workbookOf("caf\xE9 | b\n-|-\n"), "xl/worksheets/sheet1.xml"), HasSubstr(">café<"));
}

TEST_F(XLSXConverterTest, unreadableInputsAreRefusedBeforeAnythingElse)
{
    for (const ConversionPair pair : XLSXConverter().pairs()) {
        expectError(ConversionError::unreadableInput(folder / "missing"),
            [&] { XLSXConverter().convert(folder / "missing", folder / "out", pair, {}); });
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(XLSXConverterTest, aStopLeavesNothing)
{
    std::stop_source source;
    source.request_stop();
    const fs::path input = listed({"x"}).write(folder / "in.xlsx");
    expectError(ConversionError::cancelled(), [&] {
        XLSXConverter().convert(input, folder / "out.md", {xlsx, markdown}, source.get_token());
    });
    EXPECT_THAT(folder.names(), ElementsAre("in.xlsx"));
}

TEST_F(XLSXConverterTest, anOutputThatCannotBeWrittenIsTheFileSystemsError)
{
    const fs::path input = listed({"x"}).write(folder / "in.xlsx");
    EXPECT_THROW(XLSXConverter().convert(input, folder / "missing/out.md", {xlsx, markdown}, {}), fs::filesystem_error);
}
