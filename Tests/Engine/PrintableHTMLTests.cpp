#include "Engine/PrintableHTML.h"

#include "Engine/DataURI.h"
#include "Engine/HTMLToken.h"
#include "Engine/ItemNumber.h"
#include "Engine/LocalPictures.h"
#include "Engine/PrintPage.h"
#include "Support/Documents.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

std::string printable(std::string_view html)
{
    return PrintableHTML::from(html).html;
}

} // namespace

TEST(PrintableHTML, leavesPlainTextAsItStands)
{
    const std::string html = "<p class=\"a\">1 &lt; 2 <b>x</b><br>é < y</p>";
    EXPECT_EQ(printable(html), html);
}

TEST(PrintableHTML, takesPicturesOut)
{
    const std::string source = DataURI::encoded("one");
    const PrintableHTML result = PrintableHTML::from("<img alt='a \"b\"' src='" + source
        + "' style='width: 2in;height:1cm'><img src=\"" + source + "\" width=30><img src=x.png>");
    EXPECT_THAT(result.pictures, ElementsAre("one"));
    EXPECT_EQ(result.html,
        "<img src=\"picture:0\" alt=\"a &quot;b&quot;\" width=\"192\" height=\"38\"><img src=\"picture:0\" alt=\"\" "
        "width=\"30\"><img src=\"\" alt=\"\">");
}

TEST(PrintableHTML, marginsOfAStyleSheetAreInPixels)
{
    EXPECT_EQ(
        printable("<style>p { margin: 6pt 0 4pt 12px; } b {margin-left:3pt} i { font-size: 9pt; margin: }</style>"),
        "<style>p { margin: 8px 0 5px 12px; } b {margin-left:4px} i { font-size: 9pt; margin: }</style>");
    EXPECT_EQ(printable("<style>margin: pt -6pt xpt</style>"), "<style>margin: pt -6pt xpt</style>");
    EXPECT_EQ(printable("<style>margin"), "<style>margin");
}

TEST(PrintableHTML, strikesDeletedTextAndKeepsItsOwnStyle)
{
    EXPECT_EQ(printable("<del>x</del>"), "<del><s>x</s></del>");
}

TEST(PrintableHTML, dropsScripts)
{
    EXPECT_EQ(printable("a<script>if (1 < 2) '</p>'</script>b"), "ab");
}

TEST(PrintableHTML, closesWhatStandsOpenWithinAnElement)
{
    EXPECT_EQ(printable("<div><b>x</div>y</b>"), "<div><b>x</b></div>y");
}

TEST(PrintableHTML, paragraphsAndCellsEndAtTheNext)
{
    EXPECT_EQ(printable("<p>a<p>b"), "<p>a</p><p>b");
}

TEST(PrintableHTML, givesEndlessWordsPlacesToBreak)
{
    EXPECT_THAT(printable(std::string(5000, 'x')), HasSubstr("x\u200Bx"));
    std::string words(601, 'x');
    words[300] = ' ';
    EXPECT_THAT(printable(words), Not(HasSubstr("\u200B")));
}

TEST(HTMLToken, resolvesEntitiesOfAttributes)
{
    std::string_view html = "<A Href=\"a&amp;b&#233;&#x20AC;&unknown;&\" title=x checked>";
    const HTMLToken token = HTMLToken::next(html);
    EXPECT_EQ(token.name, "a");
    EXPECT_EQ(token.attribute("href"), "a&bé€&unknown;&");
    EXPECT_EQ(token.attribute("title"), "x");
    EXPECT_EQ(token.attribute("checked"), "");
    EXPECT_EQ(token.attribute("src"), std::nullopt);
    EXPECT_TRUE(html.empty());
}

TEST(DataURI, givesBackWhatWasWritten)
{
    for (const std::string_view bytes : {"", "a", "ab", "abc", "\xFF\x01\xFE"})
        EXPECT_EQ(DataURI::decoded(DataURI::encoded(bytes)), bytes);
    EXPECT_EQ(DataURI::encoded("abcd"), "data:;base64,YWJjZA==");
    EXPECT_EQ(DataURI::decoded("data:image/svg+xml,%3Csvg%3E"), "<svg>");
    EXPECT_EQ(DataURI::decoded("http://example.org/a,b"), std::nullopt);
    EXPECT_EQ(DataURI::percentDecoded("100%, a%20b%"), "100%, a b%");
}

TEST(ItemNumber, countsInLettersAndRomanNumerals)
{
    EXPECT_EQ(itemNumber(12, "1"), "12");
    EXPECT_EQ(itemNumber(28, "a"), "ab");
    EXPECT_EQ(itemNumber(26, "A"), "Z");
    EXPECT_EQ(itemNumber(1994, "I"), "MCMXCIV");
    EXPECT_EQ(itemNumber(-3, "i"), "-3");
}

TEST(LocalPictures, putsFilesIntoTheTextAndFetchesNothing)
{
    const TemporaryFolder folder;
    folder.write("a b.png", "first");
    folder.write("sub/é.png", "second");
    const std::string html = "<p><img src=\"a%20b.png\" alt=\"x\" /><img src='sub/%C3%A9.png'><img "
                             "src=\"http://example.org/a.png\"><img src=\"missing.png\"><img src=\"sub\"></p>";
    EXPECT_EQ(LocalPictures::embedded(html, folder.path()),
        "<p><img src=\"" + DataURI::encoded("first") + "\"  src=\"a%20b.png\" alt=\"x\" /><img src=\""
            + DataURI::encoded("second")
            + "\"  src='sub/%C3%A9.png'><img src=\"http://example.org/a.png\"><img src=\"missing.png\"><img "
              "src=\"sub\"></p>");
}

TEST(PrintPage, holdsTheStyleSheetLineByLine)
{
    const std::string page = printPage("<p>x</p>");
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><style>body { font-family: "
                                 "\"Hanken Grotesk\", -apple-system, sans-serif; font-size: 12pt; line-height: 1.5; "
                                 "color: #1A1714; }\nh1, h2"));
    EXPECT_TRUE(page.ends_with("th { background-color: #F7EFE0; }</style></head><body><p>x</p></body></html>"));
    EXPECT_EQ(std::ranges::count(page, '\n'), 7);
}
