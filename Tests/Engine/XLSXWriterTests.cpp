#include "Engine/XLSXWriter.h"

#include <gtest/gtest.h>

using namespace nolfa;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

} // namespace

TEST(XLSXWriter, columnsCountInLetters)
{
    EXPECT_EQ(XLSXWriter::columnLetter(0), "A");
    EXPECT_EQ(XLSXWriter::columnLetter(25), "Z");
    EXPECT_EQ(XLSXWriter::columnLetter(26), "AA");
    EXPECT_EQ(XLSXWriter::columnLetter(27), "AB");
    EXPECT_EQ(XLSXWriter::columnLetter(701), "ZZ");
    EXPECT_EQ(XLSXWriter::columnLetter(702), "AAA");
    EXPECT_EQ(XLSXWriter::columnLetter(16'384), "XFE") << "beyond a real spreadsheet's last";
}

TEST(XLSXWriter, aSheetHoldsEveryCell)
{
    EXPECT_EQ(XLSXWriter::sheet({{"a", ""}, {"3.50"}}),
        declaration
            + "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">\n<sheetData>"
              "<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t xml:space=\"preserve\">a</t></is></c>"
              "<c r=\"B1\" t=\"inlineStr\"><is><t xml:space=\"preserve\"></t></is></c></row>"
              "<row r=\"2\"><c r=\"A2\"><v>3.50</v></c></row></sheetData>\n</worksheet>");
}

TEST(XLSXWriter, numbersAreWhatStrtodTakes)
{
    const auto isNumber = [](const char *cell) {
        return XLSXWriter::sheet({{cell}}).find("<v>" + std::string(cell) + "</v>") != std::string::npos;
    };
    for (const char *cell : {"007", "1e3", "0x1F", "inf", "nan", "-5", ".5"})
        EXPECT_TRUE(isNumber(cell)) << cell;
    for (const char *cell : {"3,50", "", " 1", "1 ", "12 %", "one"})
        EXPECT_FALSE(isNumber(cell)) << cell;
}

TEST(XLSXWriter, textIsEscapedButForQuotes)
{
    EXPECT_NE(
        XLSXWriter::sheet({{"R&D <\"x\"> &amp;"}}).find(">R&amp;D &lt;\"x\"&gt; &amp;amp;</t>"), std::string::npos);
}

TEST(XLSXWriter, thePartsOfAPackageOfTwoSheets)
{
    EXPECT_EQ(XLSXWriter::workbook(2),
        declaration
            + "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
              "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">\n<sheets>"
              "<sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/><sheet name=\"Sheet2\" sheetId=\"2\" r:id=\"rId2\"/>"
              "</sheets>\n</workbook>");
    EXPECT_EQ(XLSXWriter::workbookRels(2),
        declaration
            + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
              "<Relationship Id=\"rId1\" "
              "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
              "Target=\"worksheets/sheet1.xml\"/>"
              "<Relationship Id=\"rId2\" "
              "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
              "Target=\"worksheets/sheet2.xml\"/></Relationships>");
    EXPECT_EQ(XLSXWriter::contentTypes(2),
        declaration
            + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">\n"
              "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>\n"
              "<Default Extension=\"xml\" ContentType=\"application/xml\"/>\n"
              "<Override PartName=\"/xl/workbook.xml\" "
              "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>\n"
              "<Override PartName=\"/xl/worksheets/sheet1.xml\" "
              "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>"
              "<Override PartName=\"/xl/worksheets/sheet2.xml\" "
              "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>\n</Types>");
    EXPECT_EQ(XLSXWriter::rootRels(),
        declaration
            + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">\n"
              "<Relationship Id=\"rId1\" "
              "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
              "Target=\"xl/workbook.xml\"/>\n</Relationships>");
}

TEST(XLSXWriterDeathTest, aWorkbookWithoutSheetsIsAFault)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH((void)XLSXWriter::workbook(0), "");
}
