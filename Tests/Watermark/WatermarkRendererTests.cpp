#include "Watermark/WatermarkRenderer.h"

#include "Platform/File.h"
#include "Support/DrawnPage.h"
#include "Support/Expect.h"
#include "Support/PDFBuilder.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <cmath>
#include <gmock/gmock.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using enum WatermarkSpec::Placement;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;
using Pages = WatermarkSpec::Pages;

namespace {

/// A black square of 40 points in the lower left corner of the page, and a red one in the upper left, so that every
/// way to turn a page shows.
constexpr std::string_view corners = "0 g 0 0 40 40 re f 1 0 0 rg 0 160 40 40 re f";

const std::string smallPage = "/MediaBox [0 0 100 200]";

constexpr DrawnPage::Pixel white{255, 255, 255};
constexpr DrawnPage::Pixel black{0, 0, 0};
constexpr DrawnPage::Pixel red{255, 0, 0};

class Watermark : public ::testing::Test {
protected:
    /// Stamps a document; the copy has passed qpdf's check.
    fs::path stamped(const fs::path &input, const WatermarkSpec &spec)
    {
        fs::path output = folder / ("out-" + std::to_string(++m_count) + ".pdf");
        WatermarkRenderer::render(input, output, spec);
        const ProcessResult check = runProgram("/usr/bin/qpdf", {"--check", output});
        EXPECT_EQ(check.status, 0) << check.stdout << check.stderr;
        return output;
    }

    fs::path stamped(const PDFBuilder &builder, const WatermarkSpec &spec)
    {
        return stamped(builder.write(folder / "in.pdf"), spec);
    }

    /// The copy of a document without any stamp, drawn.
    DrawnPage plainCopy(const PDFBuilder &builder) { return drawnPage(stamped(builder, {})); }

    static WatermarkSpec bold(std::string text)
    {
        return {.text = std::move(text), .fontName = "DejaVuSans", .colorHex = 0, .opacity = 1};
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;

private:
    int m_count = 0;
};

/// The text of one page, by another program.
std::string textBy(const fs::path &file, int page = 1)
{
    const std::string number = std::to_string(page);
    return runProgram("/usr/bin/pdftotext", {"-f", number, "-l", number, file, "-"}).stdout;
}

/// The middle of what was painted, from the lower left corner.
std::pair<double, double> middle(const DrawnPage &page)
{
    const std::optional<DrawnPage::Box> ink = page.ink();
    if (!ink)
        return {-1, -1};
    return {(ink->left + ink->right + 1) / 2.0, page.height - (ink->top + ink->bottom + 1) / 2.0};
}

} // namespace

TEST_F(Watermark, anEmptyTextGivesAFaithfulCopyWithNothingStamped)
{
    const PDFBuilder builder = PDFBuilder().page(corners, smallPage);
    const DrawnPage original = drawnPage(builder.write(folder / "original.pdf"));
    const DrawnPage copy = plainCopy(builder);
    EXPECT_EQ(copy, original);
    EXPECT_EQ(copy.at(5, 195), black);
    EXPECT_EQ(copy.at(5, 5), red);
}

TEST_F(Watermark, theStampLiesOnTopInItsColour)
{
    WatermarkSpec spec = bold("\u2588");
    spec.colorHex = 0xFF00FF00;
    const DrawnPage page = drawnPage(stamped(PDFBuilder().page("0 g 0 0 100 200 re f", smallPage), spec));
    EXPECT_EQ(page.at(50, 100), (DrawnPage::Pixel{0, 255, 0}));
    EXPECT_EQ(page.at(2, 2), black);
}

TEST_F(Watermark, opacityLetsThePageShineThrough)
{
    WatermarkSpec spec = bold("\u2588");
    spec.opacity = 0.25;
    EXPECT_NEAR(drawnPage(stamped(PDFBuilder().page("", smallPage), spec)).at(50, 100).red, 191, 2);
    spec.opacity = 7;
    EXPECT_EQ(drawnPage(stamped(PDFBuilder().page("", smallPage), spec)).at(50, 100), black);
    spec.opacity = -1;
    EXPECT_FALSE(drawnPage(stamped(PDFBuilder().page("", smallPage), spec)).ink());
}

TEST_F(Watermark, overlappingTilesAddUp)
{
    WatermarkSpec spec = bold("\u2588");
    spec.placement = tiled;
    spec.rotationDegrees = 0;
    spec.fontSize = 40;
    spec.opacity = 0.1;
    spec.tileSpacing = 0;
    const int once = drawnPage(stamped(PDFBuilder().page("", smallPage), spec)).at(50, 100).red;
    spec.tileSpacing = -18;
    const int often = drawnPage(stamped(PDFBuilder().page("", smallPage), spec)).at(50, 100).red;
    EXPECT_NEAR(once, 230, 3);
    EXPECT_LT(often, 200);
}

TEST_F(Watermark, theLineIsCentredOnThePage)
{
    for (const auto placement : {diagonal, horizontalCenter}) {
        WatermarkSpec spec = bold("HOH");
        spec.placement = placement;
        const auto [x, y] = middle(drawnPage(stamped(PDFBuilder().page("", "/MediaBox [0 0 400 300]"), spec)));
        EXPECT_NEAR(x, 200, 1.5 + (placement == diagonal ? 12 : 0));
        // By ascent and descent, which is not the middle of capitals.
        EXPECT_NEAR(y, 150, 15);
    }
}

TEST_F(Watermark, theLevelLineTakes72PercentOfTheWidth)
{
    WatermarkSpec spec = bold("\u2588\u2588\u2588\u2588\u2588\u2588");
    spec.placement = horizontalCenter;
    const DrawnPage page = drawnPage(stamped(PDFBuilder().page("", "/MediaBox [0 0 1000 400]"), spec));
    const std::optional<DrawnPage::Box> ink = page.ink();
    ASSERT_TRUE(ink);
    EXPECT_NEAR(ink->right - ink->left, 720, 12);
}

TEST_F(Watermark, tilesCoverThePageUpToItsEdges)
{
    WatermarkSpec spec = bold("\u2588\u2588");
    spec.placement = tiled;
    spec.tileSpacing = 4;
    for (const double angle : {-45.0, 0.0, 20.0, 90.0}) {
        spec.rotationDegrees = angle;
        const DrawnPage page = drawnPage(stamped(PDFBuilder().page("", "/MediaBox [0 0 300 400]"), spec));
        const std::optional<DrawnPage::Box> ink = page.ink();
        ASSERT_TRUE(ink);
        EXPECT_LE(ink->left, 4);
        EXPECT_LE(ink->top, 4);
        EXPECT_GE(ink->right, 295);
        EXPECT_GE(ink->bottom, 395);
    }
}

TEST_F(Watermark, thousandsOfOverlappingTilesStayASmallFile)
{
    WatermarkSpec spec = bold("x");
    spec.placement = tiled;
    spec.fontSize = 1;
    spec.tileSpacing = -1000;
    const fs::path copy = stamped(PDFBuilder().page(""), spec);
    EXPECT_LT(fs::file_size(copy), 60'000U);
}

TEST_F(Watermark, aSizeBelowOneIsDrawnAtOnePoint)
{
    for (const double size : {0.0, -5.0, 0.3}) {
        WatermarkSpec spec = bold("\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588");
        spec.fontSize = size;
        spec.rotationDegrees = 0;
        const std::optional<DrawnPage::Box> ink
            = drawnPage(stamped(PDFBuilder().page("", smallPage), spec), 1, 720).ink();
        ASSERT_TRUE(ink);
        // Ten characters of about 0.77 points each, at ten pixels a point.
        EXPECT_NEAR(ink->right - ink->left, 77, 12);
    }
}

TEST_F(Watermark, onlySelectedPagesAreStamped)
{
    PDFBuilder builder;
    for (int page = 0; page < 5; ++page)
        builder.textPage({"body"});
    const auto stampedPages = [&](const Pages &pages) {
        WatermarkSpec spec{.text = "STAMP", .placement = horizontalCenter, .pages = pages};
        const fs::path copy = stamped(builder, spec);
        std::string result;
        for (int page = 1; page <= 5; ++page) {
            EXPECT_THAT(textBy(copy, page), HasSubstr("body"));
            result += textBy(copy, page).find("STAMP") == std::string::npos ? '-' : 'x';
        }
        return result;
    };
    EXPECT_EQ(stampedPages(Pages::all()), "xxxxx");
    EXPECT_EQ(stampedPages(Pages::range(3, 3)), "--x--");
    EXPECT_EQ(stampedPages(Pages::range(4, 99)), "---xx");
    EXPECT_EQ(stampedPages(Pages::indices({1, 5, 77})), "x---x");
    EXPECT_EQ(stampedPages(Pages::indices({})), "-----");
    EXPECT_EQ(stampedPages(Pages::range(100, 200)), "-----");
}

TEST_F(Watermark, aTurnedPageStandsUprightAtSwappedSides)
{
    for (const int angle : {90, 270, -90, 450}) {
        const PDFBuilder builder = PDFBuilder().page(corners, smallPage + " /Rotate " + std::to_string(angle));
        const fs::path input = builder.write(folder / "in.pdf");
        const fs::path copy = stamped(input, {});
        EXPECT_EQ(drawnPage(copy), drawnPage(input));
        EXPECT_EQ(openPDF(copy).pageSize(0), (Size{200, 100}));
        EXPECT_THAT(File::contents(copy).value_or(""), Not(HasSubstr("/Rotate")));
    }
}

TEST_F(Watermark, aPageOnItsHeadKeepsItsSides)
{
    const PDFBuilder builder = PDFBuilder().page(corners, smallPage + " /Rotate 180");
    const DrawnPage copy = plainCopy(builder);
    EXPECT_EQ(copy, drawnPage(folder / "in.pdf"));
    EXPECT_EQ(copy.at(95, 5), black);
    EXPECT_EQ(copy.at(95, 195), red);
}

TEST_F(Watermark, theStampOfATurnedPageStandsInItsUprightCoordinates)
{
    WatermarkSpec spec = bold("\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588");
    spec.placement = horizontalCenter;
    const std::optional<DrawnPage::Box> ink
        = drawnPage(stamped(PDFBuilder().page("", smallPage + " /Rotate 90"), spec)).ink();
    ASSERT_TRUE(ink);
    EXPECT_NEAR(ink->right - ink->left, 0.72 * 200, 5);
    EXPECT_LT(ink->bottom - ink->top, 40);
}

TEST_F(Watermark, anAngleThatIsNoQuarterTurnTurnsNothing)
{
    for (const char *angle : {"45", "91", "100", "(90)", "null"}) {
        const DrawnPage copy = plainCopy(PDFBuilder().page(corners, smallPage + " /Rotate " + angle));
        EXPECT_EQ(copy.width, 100);
        EXPECT_EQ(copy.at(5, 195), black);
    }
}

TEST_F(Watermark, aCroppedPageComesOutAtItsMediaSize)
{
    const PDFBuilder builder = PDFBuilder().page(corners, smallPage + " /CropBox [10 10 90 100]");
    const DrawnPage copy = plainCopy(builder);
    EXPECT_EQ(copy.width, 100);
    EXPECT_EQ(copy.height, 200);
    EXPECT_EQ(copy.at(5, 5), red);
    EXPECT_THAT(File::contents(folder / "out-1.pdf").value_or(""), Not(HasSubstr("CropBox")));
}

TEST_F(Watermark, aBoxAwayFromTheOriginIsMovedThere)
{
    for (const char *entries : {"/MediaBox [-50 300 50 500]", "/MediaBox [50 500 -50 300]"}) {
        const DrawnPage copy
            = plainCopy(PDFBuilder().page("0 g -50 300 40 40 re f 1 0 0 rg -50 460 40 40 re f", entries));
        EXPECT_EQ(copy.width, 100);
        EXPECT_EQ(copy.height, 200);
        EXPECT_EQ(copy.at(5, 195), black);
        EXPECT_EQ(copy.at(5, 5), red);
        EXPECT_EQ(copy.at(60, 100), white);
    }
}

TEST_F(Watermark, aTurnedBoxAwayFromTheOriginToo)
{
    for (const int angle : {90, 180, 270}) {
        const PDFBuilder builder = PDFBuilder().page(
            "0 g 30 70 20 20 re f", "/MediaBox [20.5 60.25 220.5 360.25] /Rotate " + std::to_string(angle));
        const DrawnPage copy = plainCopy(builder);
        EXPECT_LT(difference(copy, drawnPage(folder / "in.pdf")), 0.001) << angle;
    }
}

TEST_F(Watermark, boxTurnAndResourcesMayComeFromThePageTree)
{
    const fs::path input = folder.write("in.pdf",
        "%PDF-1.4\n"
        "1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n"
        "2 0 obj\n<< /Type /Pages /Count 1 /Kids [3 0 R] /MediaBox [0 0 300 150] /Rotate 90 /Resources << /Font << /F1 "
        "5 0 R >> >> >>\nendobj\n"
        "3 0 obj\n<< /Type /Page /Parent 2 0 R /Contents 4 0 R >>\nendobj\n"
        "4 0 obj\n<< /Length 46 >>\nstream\nBT /F1 24 Tf 20 70 Td (Inherited words) Tj ET \nendstream\nendobj\n"
        "5 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>\nendobj\n"
        "trailer\n<< /Root 1 0 R /Size 6 >>\n");
    const fs::path copy = stamped(input, {});
    EXPECT_EQ(openPDF(copy).pageSize(0), (Size{150, 300}));
    EXPECT_EQ(textOfPDF(copy), "Inherited words\n");
    EXPECT_LT(difference(drawnPage(copy), drawnPage(input)), 0.001);
}

TEST_F(Watermark, eachPageKeepsItsOwnSize)
{
    PDFBuilder builder;
    builder.page("", "/MediaBox [0 0 100 200]")
        .page("", "/MediaBox [0 0 841.89 595.276]")
        .page("", "/MediaBox [0 0 72 72]");
    WatermarkSpec spec = bold("\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588");
    spec.placement = horizontalCenter;
    const fs::path copy = stamped(builder, spec);
    const PDFDocument document = openPDF(copy);
    EXPECT_NEAR(document.pageSize(1).width, 841.89, 1e-4);
    EXPECT_NEAR(document.pageSize(1).height, 595.276, 1e-4);
    int number = 0;
    for (const double width : {100.0, 841.89, 72.0}) {
        const std::optional<DrawnPage::Box> ink = drawnPage(copy, ++number).ink();
        ASSERT_TRUE(ink);
        EXPECT_NEAR(ink->right - ink->left, 0.72 * width, 0.01 * width + 3);
    }
}

TEST_F(Watermark, aPageInAUnitOfItsOwnKeepsItsSizeInPoints)
{
    const PDFBuilder builder = PDFBuilder().page(corners, smallPage + " /UserUnit 3");
    WatermarkSpec spec = bold("\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588");
    spec.fontSize = 12;
    spec.rotationDegrees = 0;
    const fs::path copy = stamped(builder, spec);
    EXPECT_THAT(
        runProgram("/usr/bin/qpdf", {"--qdf", "--object-streams=disable", copy, "-"}).stdout, HasSubstr("/UserUnit 3"));
    // Poppler counts in the page's units: twelve points are four of them.
    const DrawnPage page = drawnPage(copy);
    EXPECT_EQ(page.width, 100);
    EXPECT_EQ(page.at(5, 195), black);
    int blackOnes = 0;
    for (int x = 0; x < page.width; ++x)
        blackOnes += page.at(x, 100).red < 128 ? 1 : 0;
    EXPECT_NEAR(blackOnes, 10 * 0.77 * 4, 3);
}

TEST_F(Watermark, aPageWithoutABoxIsLetter)
{
    for (const char *entries : {"", "/MediaBox [0 0 0 0]", "/MediaBox 7", "/MediaBox [1 2]"}) {
        const fs::path copy = stamped(PDFBuilder().page(corners, entries), {});
        EXPECT_EQ(openPDF(copy).pageSize(0), (Size{612, 792}));
    }
}

TEST_F(Watermark, annotationsLinksAndFieldsStayBehind)
{
    PDFBuilder builder;
    const int link = builder.add(
        "<< /Type /Annot /Subtype /Link /Rect [0 0 50 50] /A << /S /URI /URI (https://example.org) >> >>");
    const int note = builder.add("<< /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (secret) /Rect [0 0 50 50] >>");
    builder.page("", smallPage + " /Annots [" + std::to_string(link) + " 0 R " + std::to_string(note) + " 0 R]");
    const fs::path copy = stamped(builder, {});
    const std::string plain = runProgram("/usr/bin/qpdf", {"--qdf", "--object-streams=disable", copy, "-"}).stdout;
    EXPECT_THAT(plain, Not(HasSubstr("Annot")));
    EXPECT_THAT(plain, Not(HasSubstr("example.org")));
    EXPECT_THAT(plain, Not(HasSubstr("secret")));
}

TEST_F(Watermark, whatPointsBackToAPageDoesNotBringItAlong)
{
    PDFBuilder builder;
    const int form = builder.addStream(
        "0 g 0 0 9 9 re f", "/Type /XObject /Subtype /Form /BBox [0 0 99 99] /P 2 0 R /Resources << >>");
    builder.resources("/XObject << /X " + std::to_string(form) + " 0 R >>").page("/X Do", smallPage);
    const fs::path copy = stamped(builder, {});
    EXPECT_EQ(drawnPage(copy).at(3, 195), black);
    EXPECT_EQ(openPDF(copy).pageCount(), 1U);
    const std::string plain = runProgram("/usr/bin/qpdf", {"--qdf", "--object-streams=disable", copy, "-"}).stdout;
    // The new tree has a root and one node.
    std::size_t nodes = 0;
    for (std::size_t at = plain.find("/Type /Pages"); at != std::string::npos; at = plain.find("/Type /Pages", at + 1))
        ++nodes;
    EXPECT_EQ(nodes, 2U);
}

TEST_F(Watermark, aFormWithoutResourcesTakesThoseOfThePage)
{
    PDFBuilder builder;
    const int form
        = builder.addStream("BT /F1 20 Tf 5 50 Td (old) Tj ET", "/Type /XObject /Subtype /Form /BBox [0 0 99 99]");
    builder.resources("/XObject << /X " + std::to_string(form) + " 0 R >>").page("/X Do", smallPage);
    const DrawnPage copy = plainCopy(builder);
    EXPECT_TRUE(copy.ink());
    EXPECT_LT(difference(copy, drawnPage(folder / "in.pdf")), 0.001);
}

TEST_F(Watermark, contentInSeveralStreamsIsJoined)
{
    PDFBuilder builder;
    const int second = builder.addStream("40 40 re f");
    const int first = builder.addStream("q 0 g 0 0");
    builder.page("", smallPage + " /Contents [" + std::to_string(first) + " 0 R " + std::to_string(second) + " 0 R]");
    std::string bytes = builder.bytes();
    // The page's own stream comes first in its dictionary; the array is what counts here.
    const std::size_t own = bytes.find("/Contents ");
    bytes.replace(own, 10, "/Ignored_ ");
    WatermarkSpec spec = bold("\u2588");
    spec.fontSize = 30;
    spec.colorHex = 0x00FF00;
    const DrawnPage page = drawnPage(stamped(folder.write("joined.pdf", bytes), spec));
    EXPECT_EQ(page.at(5, 195), black);
    EXPECT_EQ(page.at(60, 195), white);
    EXPECT_EQ(page.at(50, 100), (DrawnPage::Pixel{0, 255, 0}));
}

TEST_F(Watermark, whatThePageLeavesInForceDoesNotReachTheStamp)
{
    WatermarkSpec spec = bold("\u2588");
    // Clipped away, turned, and saved without an end.
    const DrawnPage page
        = drawnPage(stamped(PDFBuilder().page("q 0 0 1 1 re W n 0 1 -1 0 0 0 cm q q", smallPage), spec));
    EXPECT_EQ(page.at(50, 100), black);
}

TEST_F(Watermark, theStampPunchesNoHolesWhereContentKnocksOut)
{
    WatermarkSpec spec = bold("\u2588");
    spec.opacity = 0.5;
    const PDFBuilder builder = PDFBuilder().page(
        "1 0 0 rg 0 0 100 200 re f", smallPage + " /Group << /S /Transparency /CS /DeviceRGB /I true /K true >>");
    const DrawnPage page = drawnPage(stamped(builder, spec));
    EXPECT_EQ(page.at(2, 2), red);
    EXPECT_NEAR(page.at(50, 100).red, 128, 2);
    EXPECT_EQ(page.at(50, 100).green, 0);
}

TEST_F(Watermark, layersThatAreOffStayOff)
{
    PDFBuilder builder;
    const int layer = builder.add("<< /Type /OCG /Name (Hidden) >>");
    builder.resources("/Properties << /L " + std::to_string(layer) + " 0 R >>")
        .page("/OC /L BDC 0 g 0 0 99 99 re f EMC", smallPage);
    std::string bytes = builder.bytes();
    const std::string before = "<< /Type /Catalog";
    const std::string reference = std::to_string(layer) + " 0 R";
    bytes.replace(bytes.find(before), before.size(),
        before + " /OCProperties << /OCGs [" + reference + "] /D << /OFF [" + reference + "] >> >>");
    const fs::path copy = stamped(folder.write("layers.pdf", bytes), {});
    EXPECT_FALSE(drawnPage(copy).ink());
}

TEST_F(Watermark, theTextCanBeFoundWithItsAccents)
{
    for (const char *text :
        {"Épreuve à ne pas copier, œuvre façonnée", "Ελληνικά έγγραφο", "机密文件", "Ünïcødé ﬁle", "Заявление"}) {
        WatermarkSpec spec{.text = text, .placement = horizontalCenter};
        const fs::path copy = stamped(PDFBuilder().textPage({"body"}), spec);
        EXPECT_THAT(textBy(copy), HasSubstr(text));
    }
}

TEST_F(Watermark, arabicRunsFromTheRightAndJoins)
{
    WatermarkSpec spec{.text = "سري للغاية", .placement = horizontalCenter, .pages = Pages::all()};
    const fs::path copy = stamped(PDFBuilder().page(""), spec);
    EXPECT_TRUE(drawnPage(copy).ink());
    // Poppler writes the letters in the order of reading, with marks of direction around them.
    EXPECT_THAT(textBy(copy), ::testing::AnyOf(HasSubstr("سري"), HasSubstr("س ر ي")));
}

TEST_F(Watermark, emojiAreOutlinesInTheStampsColour)
{
    WatermarkSpec spec{.text = "🔒", .colorHex = 0xFF0000, .opacity = 1, .placement = horizontalCenter};
    const fs::path copy = stamped(PDFBuilder().page(""), spec);
    const DrawnPage page = drawnPage(copy);
    ASSERT_TRUE(page.ink());
    for (const DrawnPage::Pixel &pixel : page.pixels)
        EXPECT_EQ(pixel.red, 255);
    EXPECT_THAT(textBy(copy), HasSubstr("🔒"));
}

TEST_F(Watermark, fontsAreEmbeddedAsSubsets)
{
    for (const char *font : {"Newsreader24pt-SemiBold", "HankenGrotesk-SemiBold", "IBMPlexMono-Medium", "DejaVuSans"}) {
        WatermarkSpec spec{.text = "DRAFT", .fontName = font};
        const fs::path copy = stamped(PDFBuilder().page(""), spec);
        EXPECT_THAT(fontsOfPDF(copy), ::testing::ElementsAre(font));
        EXPECT_LT(fs::file_size(copy), 20'000U);
    }
}

TEST_F(Watermark, aFontThatIsMissingIsHelvetica)
{
    std::vector<std::string> fonts;
    for (const char *font : {"NoSuchFont", "", "Helvetica"}) {
        WatermarkSpec spec{.text = "DRAFT", .fontName = font};
        const std::vector<std::string> used = fontsOfPDF(stamped(PDFBuilder().page(""), spec));
        ASSERT_EQ(used.size(), 1U);
        fonts.push_back(used.front());
    }
    EXPECT_EQ(fonts[0], fonts[2]);
    EXPECT_EQ(fonts[1], fonts[2]);
}

TEST_F(Watermark, aTextOfOneLineStaysOneLine)
{
    using namespace std::string_literals;
    const WatermarkSpec spec{.text = "alpha\nbeta\rgamma\0delta\u2029end"s, .placement = horizontalCenter};
    EXPECT_THAT(textBy(stamped(PDFBuilder().page(""), spec)), HasSubstr("alpha beta gamma delta end"));
}

TEST_F(Watermark, oddTextsAreStampedWithoutHarm)
{
    const std::string zalgo = [] {
        std::string text = "Z";
        for (int i = 0; i < 50; ++i)
            text += "\u0301\u0323";
        return text;
    }();
    for (const std::string &text :
        {std::string(" "), std::string("\u200B"), std::string("\xFF\xFE bytes"), zalgo, std::string(100'000, 'W')}) {
        for (const auto placement : WatermarkSpec::allPlacements)
            EXPECT_EQ(openPDF(stamped(PDFBuilder().page(""), {.text = text, .placement = placement})).pageCount(), 1U);
    }
}

TEST_F(Watermark, pagesThatAreTheSameShareTheirStamp)
{
    PDFBuilder builder;
    for (int page = 0; page < 300; ++page)
        builder.textPage({"page " + std::to_string(page)});
    const fs::path input = builder.write(folder / "in.pdf");
    const fs::path one = stamped(input, {.text = "CONFIDENTIEL", .pages = Pages::range(1, 1)});
    const fs::path all = stamped(input, {.text = "CONFIDENTIEL", .placement = tiled});
    EXPECT_LT(fs::file_size(all), fs::file_size(one) + 3'000);
    EXPECT_LT(fs::file_size(all), fs::file_size(input) + fs::file_size(input) / 20);
}

TEST_F(Watermark, thePreviewShowsJustThatPageAsTheCopyDoes)
{
    PDFBuilder builder;
    for (int page = 1; page <= 5; ++page)
        builder.textPage({"page " + std::to_string(page)});
    const fs::path input = builder.write(folder / "in.pdf");
    for (const Pages &pages : {Pages::range(1, 3), Pages::indices({5}), Pages::all()}) {
        const WatermarkSpec spec{.text = "STAMP", .pages = pages};
        const fs::path preview = folder.write("preview.pdf", WatermarkRenderer::previewPage(4, input, spec));
        EXPECT_EQ(openPDF(preview).pageCount(), 1U);
        EXPECT_EQ(drawnPage(preview), drawnPage(stamped(input, spec), 5));
        EXPECT_THAT(textBy(preview), HasSubstr("page 5"));
    }
}

TEST_F(Watermark, aPreviewIsStampedByTheNumberOfTheSourcePage)
{
    PDFBuilder builder;
    for (int page = 1; page <= 5; ++page)
        builder.page("", smallPage);
    const fs::path input = builder.write(folder / "in.pdf");
    const auto isStamped = [&](const Pages &pages) {
        WatermarkSpec spec = bold("X");
        spec.pages = pages;
        return drawnPage(folder.write("preview.pdf", WatermarkRenderer::previewPage(4, input, spec))).ink().has_value();
    };
    EXPECT_FALSE(isStamped(Pages::range(1, 3)));
    EXPECT_TRUE(isStamped(Pages::indices({5})));
}

TEST_F(Watermark, previewAndCopyMayRunAtOnce)
{
    PDFBuilder builder;
    for (int page = 0; page < 40; ++page)
        builder.textPage({"page"});
    const fs::path input = builder.write(folder / "in.pdf");
    const WatermarkSpec spec{.text = "Épreuve", .placement = tiled};
    const std::string preview = WatermarkRenderer::previewPage(0, input, spec);
    std::vector<std::jthread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            for (int round = 0; round < 5; ++round) {
                if (number % 2 == 0)
                    EXPECT_EQ(WatermarkRenderer::previewPage(0, input, spec), preview);
                else
                    WatermarkRenderer::render(input, folder / ("at-once-" + std::to_string(number) + ".pdf"), spec);
            }
        });
    }
    threads.clear();
    EXPECT_EQ(contentOf(folder / "at-once-1.pdf"), contentOf(folder / "at-once-3.pdf"));
}
