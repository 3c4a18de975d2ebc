#include "Platform/PDFDocument.h"

#include "Platform/CancellationError.h"
#include "Support/PDFBuilder.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class PDFDocumentTest : public ::testing::Test {
protected:
    PDFDocument open(const PDFBuilder &builder)
    {
        std::optional<PDFDocument> document = PDFDocument::open(builder.write(folder / "test.pdf"));
        if (!document)
            throw std::runtime_error("no PDF");
        return std::move(*document);
    }

    std::vector<std::string> lines(const PDFBuilder &builder, std::size_t page = 0)
    {
        std::vector<std::string> texts;
        for (const PDFTextLine &line : open(builder).textLines(page, {}))
            texts.push_back(line.text);
        return texts;
    }

    TemporaryFolder folder;
};

std::uint8_t pixel(const Bitmap &bitmap, int x, int y)
{
    return bitmap.pixels.at(static_cast<std::size_t>(y) * bitmap.bytesPerRow() + static_cast<std::size_t>(x));
}

constexpr std::uint8_t black = 0;
constexpr std::uint8_t white = 255;

} // namespace

TEST_F(PDFDocumentTest, whatIsNoPDFDoesNotOpen)
{
    EXPECT_FALSE(PDFDocument::open(folder / "missing.pdf"));
    EXPECT_FALSE(PDFDocument::open(folder.path()));
    EXPECT_FALSE(PDFDocument::open(folder.write("empty.pdf", "")));
    EXPECT_FALSE(PDFDocument::open(folder.write("text.pdf", "plain text, no document")));
}

TEST_F(PDFDocumentTest, anotherFormatUnderThisNameDoesNotOpen)
{
    EXPECT_FALSE(PDFDocument::open(folder.write("picture.pdf", "<svg xmlns='http://www.w3.org/2000/svg'/>")));
    EXPECT_FALSE(PDFDocument::open(folder.write("page.pdf", "<html><body>text</body></html>")));
}

TEST_F(PDFDocumentTest, linesComeWithTheirSizes)
{
    const PDFBuilder builder
        = PDFBuilder().page(PDFBuilder::show("Title", 72, 780, 24) + PDFBuilder::show("Body of the text", 72, 740, 11));
    const std::vector<PDFTextLine> lines = open(builder).textLines(0, {});
    EXPECT_THAT(lines, ElementsAre(PDFTextLine{"Title", 24}, PDFTextLine{"Body of the text", 11}));
}

TEST_F(PDFDocumentTest, theMatrixIsPartOfTheSize)
{
    const PDFBuilder builder = PDFBuilder().page("2 0 0 2 0 0 cm BT /F1 1 Tf 9 0 0 9 30 300 Tm (Scaled) Tj ET");
    const std::vector<PDFTextLine> lines = open(builder).textLines(0, {});
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NEAR(lines[0].fontSize, 18, 1e-4);
}

TEST_F(PDFDocumentTest, movesWithinAStringAreBlanksWhenTheyAreWide)
{
    EXPECT_THAT(lines(PDFBuilder().page("BT /F1 10 Tf 72 700 Td [(kern) 30 (ed) -400 (apart)] TJ ET")),
        ElementsAre("kerned apart"));
}

TEST_F(PDFDocumentTest, everyWayToShowTextIsRead)
{
    EXPECT_THAT(lines(PDFBuilder().page("BT /F1 10 Tf 14 TL 72 700 Td (one) Tj (two) ' 3 2 (three) \" T* (four) Tj "
                                        "0 -20 TD (five) Tj T* (six) Tj ET")),
        ElementsAre("one", "two", "t h r e e", "f o u r", "f i v e", "s i x"));
}

TEST_F(PDFDocumentTest, letterSpacingBelowTheGapKeepsWordsWhole)
{
    EXPECT_THAT(
        lines(PDFBuilder().page("BT /F1 10 Tf 1.2 Tc 72 700 Td (spaced out) Tj ET")), ElementsAre("spaced out"));
}

TEST_F(PDFDocumentTest, formsAreRead)
{
    PDFBuilder builder;
    const int form = builder.addStream(PDFBuilder::show("in a form", 0, 0),
        "/Type /XObject /Subtype /Form /BBox [0 0 500 500] /Matrix [1 0 0 1 72 500] "
        "/Resources << /Font << /F1 3 0 R >> >>");
    builder.resources("/XObject << /X0 " + std::to_string(form) + " 0 R >>");
    builder.page(PDFBuilder::show("before", 72, 700) + "q /X0 Do Q " + PDFBuilder::show("after", 72, 300));
    EXPECT_THAT(lines(builder), ElementsAre("before", "in a form", "after"));
}

TEST_F(PDFDocumentTest, aFormThatDrawsItselfEnds)
{
    PDFBuilder builder;
    const int form = builder.next();
    const std::string name = std::to_string(form) + " 0 R";
    builder.addStream(PDFBuilder::show("again", 72, 300) + "/X0 Do",
        "/Type /XObject /Subtype /Form /BBox [0 0 500 500] /Resources << /Font << /F1 3 0 R >> /XObject << /X0 " + name
            + " >> >>");
    builder.resources("/XObject << /X0 " + name + " >>").page("/X0 Do " + PDFBuilder::show("after", 72, 200));
    EXPECT_THAT(lines(builder), ElementsAre("again", "after"));
}

TEST_F(PDFDocumentTest, whatAFormChangesEndsWithIt)
{
    PDFBuilder builder;
    const int form = builder.addStream("Q Q Q 5 0 0 5 0 0 cm /F1 50 Tf q q q",
        "/Type /XObject /Subtype /Form /BBox [0 0 500 500] /Resources << /Font << /F1 3 0 R >> >>");
    builder.resources("/XObject << /X0 " + std::to_string(form) + " 0 R >>");
    builder.page("q /F1 9 Tf /X0 Do BT 72 700 Td (small) Tj ET Q");
    EXPECT_THAT(open(builder).textLines(0, {}), ElementsAre(PDFTextLine{"small", 9}));
}

TEST_F(PDFDocumentTest, invisibleTextCounts)
{
    EXPECT_THAT(
        lines(PDFBuilder().page("3 Tr " + PDFBuilder::show("behind a scan", 72, 700))), ElementsAre("behind a scan"));
}

TEST_F(PDFDocumentTest, textInLayersThatAreOffDoesNotCount)
{
    PDFBuilder builder;
    const int off = builder.add("<< /Type /OCG /Name (off) >>");
    const std::string layer = std::to_string(off) + " 0 R";
    builder.resources("/Properties << /L0 " + layer + " >>");
    builder.page("/OC /L0 BDC " + PDFBuilder::show("hidden", 72, 700) + "EMC " + PDFBuilder::show("shown", 72, 600));
    std::string bytes = builder.bytes();
    const std::string catalogue = "/Type /Catalog";
    bytes.replace(bytes.find(catalogue), catalogue.size(),
        catalogue + " /OCProperties << /OCGs [" + layer + "] /D << /OFF [" + layer + "] >> >>");
    const std::optional<PDFDocument> document = PDFDocument::open(folder.write("layers.pdf", bytes));
    ASSERT_TRUE(document);
    EXPECT_THAT(document->textLines(0, {}), ElementsAre(PDFTextLine{"shown", 12}));
}

TEST_F(PDFDocumentTest, textOutsideThePageDoesNotCount)
{
    EXPECT_THAT(lines(PDFBuilder().page(PDFBuilder::show("out", 700, 700) + PDFBuilder::show("under", 72, -30)
                    + PDFBuilder::show("in", 72, 700))),
        ElementsAre("in"));
}

TEST_F(PDFDocumentTest, theMediaBoxIsThePage)
{
    const PDFBuilder builder = PDFBuilder().page(
        PDFBuilder::show("cropped away", 72, 700), "/MediaBox [0 0 595 842] /CropBox [0 0 200 200]");
    const PDFDocument document = open(builder);
    EXPECT_THAT(document.textLines(0, {}), ElementsAre(PDFTextLine{"cropped away", 12}));
    EXPECT_EQ(document.pageSize(0), (Size{595, 842}));
    const std::optional<Bitmap> image = document.render(0, 1, {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 595);
    EXPECT_EQ(image->height, 842);
}

TEST_F(PDFDocumentTest, aTurnedPageIsReadAsItIsSeen)
{
    const PDFBuilder builder = PDFBuilder().page(
        "BT /F1 12 Tf 0 1 -1 0 300 300 Tm (upright to the reader) Tj ET", "/MediaBox [0 0 595 842] /Rotate 90");
    const PDFDocument document = open(builder);
    EXPECT_EQ(document.pageSize(0), (Size{842, 595}));
    EXPECT_THAT(document.textLines(0, {}), ElementsAre(PDFTextLine{"upright to the reader", 12}));
}

TEST_F(PDFDocumentTest, aCharacterThatTheFileDoesNotTellIsTheReplacementCharacter)
{
    PDFBuilder builder;
    const int descriptor
        = builder.add("<< /Type /FontDescriptor /FontName /Unknown /Flags 4 /FontBBox [0 0 1000 1000] /ItalicAngle 0 "
                      "/Ascent 800 /Descent -200 /CapHeight 700 /StemV 80 >>");
    const int descendant
        = builder.add("<< /Type /Font /Subtype /CIDFontType2 /BaseFont /Unknown /CIDSystemInfo << "
                      "/Registry (Adobe) /Ordering (Identity) /Supplement 0 >> /DW 500 /FontDescriptor "
            + std::to_string(descriptor) + " 0 R >>");
    const int font = builder.add("<< /Type /Font /Subtype /Type0 /BaseFont /Unknown /Encoding /Identity-H "
                                 "/DescendantFonts ["
        + std::to_string(descendant) + " 0 R] >>");
    builder.font("F2", font);
    builder.page("BT /F2 12 Tf 72 700 Td <00050006> Tj ET");
    const std::vector<std::string> texts = lines(builder);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0], "\uFFFD\uFFFD");
}

TEST_F(PDFDocumentTest, pagesThatAreNotThereHaveNothing)
{
    const PDFDocument document = open(PDFBuilder().textPage({"only"}));
    EXPECT_EQ(document.pageCount(), 1U);
    EXPECT_THAT(document.textLines(1, {}), IsEmpty());
    EXPECT_EQ(document.pageSize(1), Size{});
    EXPECT_FALSE(document.render(1, 1, {}));
}

TEST_F(PDFDocumentTest, aDocumentWithoutPagesOpens)
{
    EXPECT_EQ(open(PDFBuilder()).pageCount(), 0U);
}

TEST_F(PDFDocumentTest, pagesAreDrawnOnWhiteWithTheOriginBelow)
{
    const PDFBuilder builder = PDFBuilder().page("0 g 10 20 30 40 re f", "/MediaBox [0 0 100 200]");
    const std::optional<Bitmap> image = open(builder).render(0, 3, {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 300);
    EXPECT_EQ(image->height, 600);
    EXPECT_EQ(pixel(*image, 75, 600 - 120), black);
    EXPECT_EQ(pixel(*image, 75, 120), white);
    EXPECT_EQ(pixel(*image, 0, 0), white);
}

TEST_F(PDFDocumentTest, aBoxAwayFromTheOriginIsDrawnWhole)
{
    const PDFBuilder builder = PDFBuilder().page("0 g 110 220 30 40 re f", "/MediaBox [100 200 200 400]");
    const std::optional<Bitmap> image = open(builder).render(0, 1, {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 100);
    EXPECT_EQ(pixel(*image, 25, 200 - 40), black);
}

TEST_F(PDFDocumentTest, aHugePageIsDrawnSmaller)
{
    const PDFBuilder builder = PDFBuilder().page("", "/MediaBox [0 0 14400 14400]");
    const std::optional<Bitmap> image = open(builder).render(0, 3, {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 6000);
    EXPECT_EQ(image->height, 6000);
}

TEST_F(PDFDocumentTest, aPageWithoutAreaHasNoImage)
{
    EXPECT_FALSE(open(PDFBuilder().page("", "/MediaBox [0 0 0.2 100]")).render(0, 3, {}));
    EXPECT_FALSE(open(PDFBuilder().page("", "/MediaBox [50 50 50 50]")).render(0, 3, {}));
    EXPECT_TRUE(open(PDFBuilder().page("", "")).render(0, 3, {})) << "no box at all is a usual page";
}

TEST_F(PDFDocumentTest, aStopEndsReadingAndDrawing)
{
    std::stop_source stop;
    stop.request_stop();
    const PDFDocument document = open(PDFBuilder().textPage({"text"}));
    EXPECT_THROW((void)document.textLines(0, stop.get_token()), CancellationError);
    EXPECT_THROW((void)document.render(0, 1, stop.get_token()), CancellationError);
    EXPECT_EQ(document.textLines(0, {}).size(), 1U) << "the document serves on";
}

TEST_F(PDFDocumentTest, aTreeWithNodesOfOnePageEachIsWalked)
{
    std::string bytes = PDFBuilder().textPage({"one"}).textPage({"two"}).bytes();
    // A node between the root and the first page, which has as many leaves as kids all the same.
    const std::string kids = "/Kids [ 5 0 R 7 0 R ]";
    bytes.replace(bytes.find(kids), kids.size(), "/Kids [ 8 0 R 7 0 R ]");
    bytes.resize(bytes.find("xref"));
    bytes += "8 0 obj\n<< /Type /Pages /Parent 2 0 R /Count 1 /Kids [5 0 R] >>\nendobj\n"
             "trailer\n<< /Root 1 0 R /Size 9 >>\n";
    const std::optional<PDFDocument> document = PDFDocument::open(folder.write("tree.pdf", bytes));
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 2U);
    EXPECT_THAT(document->textLines(0, {}), ElementsAre(PDFTextLine{"one", 12}));
    EXPECT_THAT(document->openedAgain().value().textLines(1, {}), ElementsAre(PDFTextLine{"two", 12}));
}

TEST_F(PDFDocumentTest, aDamagedTableOfObjectsIsRepaired)
{
    std::string bytes = PDFBuilder().textPage({"still there"}).bytes();
    bytes.resize(bytes.find("xref"));
    const std::optional<PDFDocument> document = PDFDocument::open(folder.write("cut.pdf", bytes));
    ASSERT_TRUE(document);
    EXPECT_THAT(document->textLines(0, {}), ElementsAre(PDFTextLine{"still there", 12}));
}
