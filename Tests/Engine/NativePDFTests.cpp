#include "Engine/NativePDF.h"

#include "Engine/DataURI.h"
#include "Engine/PrintPage.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <clocale>
#include <future>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class NativePDFTest : public ::testing::Test {
protected:
    fs::path render(const std::string &body) const
    {
        const fs::path output = folder / "out.pdf";
        NativePDF::render(printPage(body), output);
        EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
        return output;
    }

    std::size_t pagesOf(const std::string &body) const { return openPDF(render(body)).pageCount(); }

    TemporaryFolder folder;
};

std::string repeated(std::string_view text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

} // namespace

TEST_F(NativePDFTest, aChoiceOfA4WinsWhateverTheRegion)
{
    const LocaleScope scope(Locale{.language = "en", .region = "US"});
    EXPECT_EQ(openPDF(render("<p>x</p>")).pageSize(0), (Size{612, 792}));
    NolfaFormat::setPaper(NolfaFormat::Paper::a4);
    EXPECT_EQ(openPDF(render("<p>x</p>")).pageSize(0), (Size{595, 842}));
}

TEST_F(NativePDFTest, oneLineGivesOnePage)
{
    const fs::path output = render("<p>Une seule ligne, déjà.</p>");
    EXPECT_EQ(openPDF(output).pageCount(), 1U);
    EXPECT_EQ(textOfPDF(output), "Une seule ligne, déjà.\n");
}

TEST_F(NativePDFTest, nothingGivesOnePage)
{
    EXPECT_EQ(pagesOf(""), 1U);
}

TEST_F(NativePDFTest, aLongTextFlowsOverPagesOfTheSameSize)
{
    const PDFDocument document = openPDF(render(repeated("<p>A paragraph of the text.</p>", 100)));
    ASSERT_GT(document.pageCount(), 2U);
    for (std::size_t page = 1; page < document.pageCount(); ++page)
        EXPECT_EQ(document.pageSize(page), document.pageSize(0));
}

TEST_F(NativePDFTest, aTextKeepsToTheMargins)
{
    NolfaFormat::setPaper(NolfaFormat::Paper::a4);
    const fs::path output = render(repeated("<p>" + repeated("wide words ", 60) + "</p>", 30));
    NolfaFormat::resetPaper();
    const Bitmap page = *openPDF(output).render(0, 1, {});
    for (int y = 0; y < page.height; ++y) {
        for (int x = 0; x < page.width; ++x) {
            const bool isMargin = x < 53 || x > 595 - 53 || y < 53 || y > 842 - 53;
            const std::uint8_t value = page.pixels[static_cast<std::size_t>(y * page.width + x) * page.channels()];
            ASSERT_TRUE(!isMargin || value == 255) << x << ' ' << y;
        }
    }
}

TEST_F(NativePDFTest, ourFontsAreEmbedded)
{
    const std::vector<std::string> fonts
        = fontsOfPDF(render("<h1>Heading</h1><p>Text, <b>bold</b>, <i>slanted</i>, <code>code</code></p>"));
    EXPECT_THAT(fonts,
        ElementsAre("HankenGrotesk-Bold", "HankenGrotesk-Italic", "HankenGrotesk-Regular", "IBMPlexMono-Regular",
            "Newsreader24pt-SemiBold"));
}

TEST_F(NativePDFTest, lettersOfManyScriptsCanBeSearched)
{
    const fs::path output = render("<p>« œuvre » Καλημέρα мир 你好 こんにちは</p>");
    for (const std::string word : {"œuvre", "Καλημέρα", "мир", "你好", "こんにちは"})
        EXPECT_THAT(textOfPDF(output), HasSubstr(word));
}

TEST_F(NativePDFTest, wordsWithLigaturesCanBeSearched)
{
    EXPECT_EQ(textOfPDF(render("<p>chiffre d’affaires, <b>office</b> fi <i>fl</i></p>")),
        "chiffre d’affaires, office fi fl\n");
}

TEST_F(NativePDFTest, listsCountFromTheirStart)
{
    const fs::path output = render("<ol start=\"7\"><li>seven</li><li><p>eight</p></li></ol><ol><li>one</li></ol>"
                                   "<ol start=\"3\" type=\"a\"><li>see</li></ol>");
    const std::string text = textOfPDF(output);
    EXPECT_THAT(text, HasSubstr("7. seven"));
    EXPECT_THAT(text, HasSubstr("8. eight"));
    EXPECT_THAT(text, HasSubstr("1. one"));
    EXPECT_THAT(text, HasSubstr("c. see"));
}

TEST_F(NativePDFTest, tasksShowTheirBoxes)
{
    const std::string text
        = textOfPDF(render("<ul class=\"task-list\"><li><label><input type=\"checkbox\" checked=\"\" "
                           "/>done</label></li><li><label><input type=\"checkbox\" />open</label></li></ul>"));
    EXPECT_THAT(text, HasSubstr("☑ done"));
    EXPECT_THAT(text, HasSubstr("☐ open"));
}

TEST_F(NativePDFTest, aTableOverPagesRepeatsItsHead)
{
    std::string rows;
    for (int row = 1; row <= 120; ++row)
        rows += "<tr><td>row " + std::to_string(row) + "</td><td>x</td></tr>";
    const fs::path output = render(
        "<table><thead><tr><th>Name</th><th>Value</th></tr></thead><tbody>" + rows + "</tbody></table><p>behind</p>");
    const PDFDocument document = openPDF(output);
    ASSERT_GT(document.pageCount(), 2U);
    for (std::size_t page = 0; page < document.pageCount(); ++page)
        EXPECT_THAT(document.textLines(page, {}).front().text, HasSubstr("Name")) << page;
    for (int row = 1; row <= 120; ++row)
        EXPECT_THAT(textOfPDF(output), HasSubstr("row " + std::to_string(row)));
    EXPECT_THAT(textOfPDF(output), HasSubstr("behind"));
}

TEST_F(NativePDFTest, aHeadingIsNotLeftAtAPagesFoot)
{
    for (int before = 20; before < 32; ++before) {
        const fs::path output = render(repeated("<p>before</p>", before) + "<h2>Heading</h2><p>"
            + repeated("after ", 200) + "</p><table><tr><td>cell</td></tr></table><p>the end</p>");
        const PDFDocument document = openPDF(output);
        for (std::size_t page = 0; page < document.pageCount(); ++page)
            EXPECT_NE(document.textLines(page, {}).back().text, "Heading") << before;
        EXPECT_THAT(textOfPDF(output), HasSubstr("the end")) << before;
    }
}

TEST_F(NativePDFTest, aPictureWithinTheTextIsShownAndAnEnormousOneFitsThePage)
{
    const std::string small = "<img src=\"" + DataURI::encoded(png(60, 60)) + "\">";
    EXPECT_GT(darkPixels(render("<p>" + small + "</p>"), 0), 300U);
    const std::string large = "<p><img src=\"" + DataURI::encoded(png(3000, 5000)) + "\"></p>";
    const fs::path output = render(large + "<p>behind</p>");
    EXPECT_LE(openPDF(output).pageCount(), 2U);
    EXPECT_GT(darkPixels(output, 0), 10000U);
}

TEST_F(NativePDFTest, whatLiesOutsideOfTheTextIsNotLoaded)
{
    const fs::path secret = folder.write("in/secret.png", png(300, 300));
    const fs::path sheet = folder.write("in/sheet.css", "p { font-size: 100pt; }");
    const fs::path output = folder / "in/out.pdf";
    NativePDF::render("<html><head><link rel=\"stylesheet\" href=\"file://" + sheet.string()
            + "\"><style>@import url(\"" + sheet.string() + "\"); body { background-image: url(\"" + secret.string()
            + "\"); }</style></head><body><p><img src=\"" + secret.string() + "\" alt=\"first\"><img src=\"file://"
            + secret.string() + "\" alt=\"second\"></p></body></html>",
        output);
    EXPECT_LT(darkPixels(output, 0), 300U);
    EXPECT_THAT(textOfPDF(output), HasSubstr("first"));
    EXPECT_THAT(textOfPDF(output), HasSubstr("second"));
}

TEST_F(NativePDFTest, aBrokenPictureShowsItsWords)
{
    EXPECT_THAT(
        textOfPDF(render("<p><img src=\"data:image/png;base64,AAAA\" alt=\"a chart\"></p>")), HasSubstr("a chart"));
}

TEST_F(NativePDFTest, whatIsNestedWithoutEndIsPrintedFlat)
{
    for (const auto &[open, close] :
        std::vector<std::pair<std::string, std::string>>{{"<div>", "</div>"}, {"<table><tr><td>", "</td></tr></table>"},
            {"<ul><li>", "</li></ul>"}, {"<blockquote>", ""}, {"<b>", ""}}) {
        std::string text
            = textOfPDF(render(repeated(open, 100'000) + "inside" + repeated(close, 100'000) + "<p>outside</p>"));
        std::erase(text, '\n'); // a narrow column breaks words
        EXPECT_THAT(text, HasSubstr("inside")) << open;
    }
}

TEST_F(NativePDFTest, cellsThatClaimEndlessWidthGetOneColumn)
{
    EXPECT_THAT(
        textOfPDF(render("<table><tr><td colspan=\"1000000000\" rowspan=\"2000000000\">wide</td></tr></table>")),
        HasSubstr("wide"));
}

TEST_F(NativePDFTest, htmlThatIsNotUTF8IsRefused)
{
    const LanguageScope scope(NolfaLanguage::fr);
    expectError(ConversionError::engineFailure("Le HTML n’a pas pu être encodé."),
        [&] { NativePDF::render("\xFF", folder / "out.pdf"); });
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(NativePDFTest, anOutputThatCannotBeWrittenIsAFailure)
{
    const LanguageScope scope(NolfaLanguage::en);
    expectError(ConversionError::engineFailure("The PDF couldn't be rendered."),
        [&] { NativePDF::render(printPage("x"), folder / "missing/out.pdf"); });
}

TEST_F(NativePDFTest, aStopLeavesWhatStoodAtTheOutput)
{
    const fs::path output = folder.write("out.pdf", "before");
    std::stop_source source;
    source.request_stop();
    expectError(ConversionError::cancelled(), [&] { NativePDF::render(printPage("x"), output, source.get_token()); });
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_EQ(contentOf(output), "before");
}

TEST_F(NativePDFTest, severalThreadsPrintAtOnce)
{
    std::vector<std::future<std::string>> texts;
    for (int thread = 0; thread < 4; ++thread) {
        texts.push_back(std::async(std::launch::async, [this, thread] {
            const fs::path output = folder / (std::to_string(thread) + ".pdf");
            NativePDF::render(printPage(repeated("<p>text " + std::to_string(thread) + "</p>", 50)), output);
            return textOfPDF(output);
        }));
    }
    for (int thread = 0; thread < 4; ++thread)
        EXPECT_EQ(texts[static_cast<std::size_t>(thread)].get(), repeated("text " + std::to_string(thread) + "\n", 50));
}

TEST_F(NativePDFTest, numbersKeepTheirPointAfterwards)
{
    const SystemLocaleScope scope("fr_FR.UTF-8");
    render("<p>x</p>");
    EXPECT_EQ(std::string(std::localeconv()->decimal_point), ".");
}
