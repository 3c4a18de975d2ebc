#include "Compare/MarkdownBlockParser.h"

#include "Platform/CancellationError.h"

#include <gmock/gmock.h>
#include <ostream>
#include <random>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A block but for its place and its hash.
struct Piece {
    BlockKind kind;
    std::string text;
    std::optional<std::int64_t> page = std::nullopt;

    bool operator==(const Piece &) const = default;
};

void PrintTo(const Piece &piece, std::ostream *out)
{
    *out << static_cast<int>(piece.kind.value()) << '/' << piece.kind.level() << " \"" << piece.text << "\" page "
         << piece.page.value_or(-1);
}

std::vector<Piece> parse(std::string_view text)
{
    std::vector<Piece> pieces;
    for (const Block &block : MarkdownBlockParser::parse(text)) {
        EXPECT_EQ(block.index, pieces.size());
        pieces.push_back({block.kind, block.text, block.page});
    }
    return pieces;
}

Piece paragraph(std::string text, std::optional<std::int64_t> page = std::nullopt)
{
    return {BlockKind::paragraph(), std::move(text), page};
}

Piece item(std::int64_t depth, std::string text)
{
    return {BlockKind::listItem(depth), std::move(text)};
}

Piece heading(std::int64_t level, std::string text)
{
    return {BlockKind::heading(level), std::move(text)};
}

} // namespace

TEST(MarkdownBlockParser, emptyTextHasNoBlocks)
{
    EXPECT_THAT(parse(""), IsEmpty());
    EXPECT_THAT(parse("\n \t\n\u00A0\r\n"), IsEmpty());
}

TEST(MarkdownBlockParser, aMarkerAloneOnItsLineSetsThePage)
{
    for (const char *marker : {"<!-- nolfa:page 3 -->", "  <!--   nolfa:page  3  -->  ", "\t<!--nolfa:page 3-->",
             "<!--\u00A0nolfa:page\u20033 -->", "<!-- nolfa:page 03 -->"}) {
        EXPECT_THAT(parse(std::string(marker) + "\ntext"), ElementsAre(paragraph("text", 3))) << marker;
        EXPECT_THAT(parse(marker), IsEmpty()) << marker;
    }
}

TEST(MarkdownBlockParser, whatOnlyLooksLikeAMarkerIsText)
{
    for (const char *line : {"<!-- nolfa:page 3 --> text", "<!-- nolfa:page three -->", "<!-- nolfa:page -->",
             "<!-- nolfa:page3 -->", "<!-- nolfa:page 3 - ->", "<!-- nolfa:page 3 4 -->", "<!- nolfa:page 3 -->",
             "<!-- Nolfa:page 3 -->", "<!-- nolfa:page -3 -->", "<!-- nolfa:page 9223372036854775808 -->",
             "<!-- nolfa:page ٣ -->", "<!-- nolfa:page 1٣ -->"})
        EXPECT_THAT(parse(line), ElementsAre(paragraph(line))) << line;
}

TEST(MarkdownBlockParser, pageNumbersHave64Bits)
{
    EXPECT_EQ(MarkdownBlockParser::pageNumber("<!-- nolfa:page 9223372036854775807 -->"), 9223372036854775807);
    EXPECT_EQ(MarkdownBlockParser::pageNumber("<!-- nolfa:page 9223372036854775808 -->"), std::nullopt);
    EXPECT_EQ(MarkdownBlockParser::pageNumber("<!-- nolfa:page 0 -->"), 0);
}

TEST(MarkdownBlockParser, beforeTheFirstMarkerBlocksHaveNoPage)
{
    EXPECT_THAT(
        parse("a\n<!-- nolfa:page 2 -->\nb\n\nc"), ElementsAre(paragraph("a"), paragraph("b", 2), paragraph("c", 2)));
}

TEST(MarkdownBlockParser, aMarkerEndsAParagraph)
{
    EXPECT_THAT(parse("one\n<!-- nolfa:page 7 -->\ntwo"), ElementsAre(paragraph("one"), paragraph("two", 7)));
}

TEST(MarkdownBlockParser, aBlockIsOnThePageOfItsFirstLine)
{
    EXPECT_THAT(parse("<!-- nolfa:page 1 -->\n- a\nb\n<!-- nolfa:page 2 -->\n# c"),
        ElementsAre(Piece{BlockKind::listItem(0), "a b", 1}, Piece{BlockKind::heading(1), "c", 2}));
}

TEST(MarkdownBlockParser, adjacentItemsAreBlocksOfTheirOwn)
{
    EXPECT_THAT(parse("- one\n- two\n* three\n+ four"),
        ElementsAre(item(0, "one"), item(0, "two"), item(0, "three"), item(0, "four")));
}

TEST(MarkdownBlockParser, aPlainLineGoesOnWithTheBlockBefore)
{
    EXPECT_THAT(parse("- one\nmore"), ElementsAre(item(0, "one more")));
    EXPECT_THAT(parse("> one\n  more "), ElementsAre(Piece{BlockKind::quote(), "one more"}));
    EXPECT_THAT(parse("| a |\nmore"), ElementsAre(Piece{BlockKind::tableRow(), "| a | more"}));
    EXPECT_THAT(parse("one\n two\n\nthree"), ElementsAre(paragraph("one two"), paragraph("three")));
    EXPECT_THAT(parse(">\nmore"), ElementsAre(Piece{BlockKind::quote(), "more"}));
}

TEST(MarkdownBlockParser, aHeadingNeverGoesOn)
{
    EXPECT_THAT(parse("# one\nmore"), ElementsAre(heading(1, "one"), paragraph("more")));
}

TEST(MarkdownBlockParser, depthFollowsTheIndent)
{
    EXPECT_THAT(parse("\t- a"), ElementsAre(item(2, "a")));
    EXPECT_THAT(parse("   - a"), ElementsAre(item(1, "a")));
    EXPECT_THAT(parse(" - a"), ElementsAre(item(0, "a")));
    EXPECT_THAT(parse(" \t 1. a"), ElementsAre(item(3, "a")));
}

TEST(MarkdownBlockParser, numbersMakeItemsOnlyBeforeABlank)
{
    EXPECT_THAT(parse("1. one\n2) two\n10.\ttab\n٣. three"),
        ElementsAre(item(0, "one"), item(0, "two"), item(0, "tab"), item(0, "three")));
    EXPECT_THAT(parse("1.two"), ElementsAre(paragraph("1.two")));
    EXPECT_THAT(parse("1 two"), ElementsAre(paragraph("1 two")));
    EXPECT_THAT(parse("1."), ElementsAre(paragraph("1.")));
}

TEST(MarkdownBlockParser, aBulletAloneIsText)
{
    EXPECT_THAT(parse("- "), ElementsAre(paragraph("-")));
    EXPECT_THAT(parse("-a\n*b"), ElementsAre(paragraph("-a *b")));
}

TEST(MarkdownBlockParser, headingsAreOneToSixHashesAndABlank)
{
    EXPECT_THAT(parse("# a\n###### b\n####### c\n\n#d\n\n#\te"),
        ElementsAre(heading(1, "a"), heading(6, "b"), paragraph("####### c"), paragraph("#d"), paragraph("#\te")));
}

TEST(MarkdownBlockParser, closingHashesGo)
{
    EXPECT_THAT(parse("## Title ##"), ElementsAre(heading(2, "Title")));
    EXPECT_THAT(parse("# C# ###"), ElementsAre(heading(1, "C#")));
    EXPECT_THAT(parse("# # a"), ElementsAre(heading(1, "a")));
}

TEST(MarkdownBlockParser, aHeadingWithoutTextIsDropped)
{
    EXPECT_THAT(MarkdownBlockParser::classify("####")->second, "");
    EXPECT_EQ(MarkdownBlockParser::classify("####")->first, BlockKind::heading(4));
    EXPECT_THAT(parse("####\ntext\n# ##"), ElementsAre(paragraph("text")));
}

TEST(MarkdownBlockParser, classifiesWhatOpensABlock)
{
    EXPECT_EQ(MarkdownBlockParser::classify(""), std::nullopt);
    EXPECT_EQ(MarkdownBlockParser::classify(" \t"), std::nullopt);
    EXPECT_EQ(MarkdownBlockParser::classify("text"), std::nullopt);
    EXPECT_EQ(
        MarkdownBlockParser::classify(" > > a "), (std::pair<BlockKind, std::string_view>(BlockKind::quote(), "> a")));
    EXPECT_EQ(MarkdownBlockParser::classify("  | a | "),
        (std::pair<BlockKind, std::string_view>(BlockKind::tableRow(), "| a |")));
}

TEST(MarkdownBlockParser, aSeparatorIsARowLikeAnyOther)
{
    EXPECT_THAT(parse("| a |\n|---|\n| b |"),
        ElementsAre(Piece{BlockKind::tableRow(), "| a |"}, Piece{BlockKind::tableRow(), "|---|"},
            Piece{BlockKind::tableRow(), "| b |"}));
}

TEST(MarkdownBlockParser, codeKeepsItsFencesAndItsLines)
{
    EXPECT_THAT(parse("a\n ```sh\n  # x\n\n<!-- nolfa:page 4 -->\n```  \nb"),
        ElementsAre(
            paragraph("a"), Piece{BlockKind::code(), "```sh\n  # x\n\n<!-- nolfa:page 4 -->\n```"}, paragraph("b")));
}

TEST(MarkdownBlockParser, anUnclosedFenceRunsToTheEnd)
{
    EXPECT_THAT(parse("```\na\n\n# b\n"), ElementsAre(Piece{BlockKind::code(), "```\na\n\n# b"}));
    EXPECT_THAT(parse("```"), ElementsAre(Piece{BlockKind::code(), "```"}));
}

TEST(MarkdownBlockParser, aFenceIsClosedByItsOwnKind)
{
    EXPECT_THAT(
        parse("~~~\n```\n~~~~ x\na"), ElementsAre(Piece{BlockKind::code(), "~~~\n```\n~~~~ x"}, paragraph("a")));
}

TEST(MarkdownBlockParser, otherSyntaxIsText)
{
    EXPECT_THAT(parse("Title\n====="), ElementsAre(paragraph("Title =====")));
    EXPECT_THAT(parse("    code"), ElementsAre(paragraph("code")));
}

TEST(MarkdownBlockParser, linesEndAtEveryNewlineCharacter)
{
    EXPECT_THAT(parse("a\r\nb"), ElementsAre(paragraph("a"), paragraph("b"))) << "an empty line lies between them";
    EXPECT_THAT(parse("a\vb\fc\u0085d\u2028e\u2029f\rg"), ElementsAre(paragraph("a b c d e f g")));
    EXPECT_THAT(parse("a\r\r\nb"), ElementsAre(paragraph("a"), paragraph("b")));
}

TEST(MarkdownBlockParser, takesAnyBytes)
{
    std::mt19937 random(4);
    constexpr std::string_view pieces = "#-*+>|`~ \t\n\r1.)<!a\xC2\x85\xE2\x80\xA8\xA9\xFF\0";
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t i = random() % 40; i > 0; --i) {
            text += pieces[random() % pieces.size()];
            if (random() % 8 == 0)
                text += random() % 2 == 0 ? "<!-- nolfa:page 2 -->" : "\n```";
        }
        std::size_t index = 0;
        for (const Block &block : MarkdownBlockParser::parse(text)) {
            ASSERT_EQ(block.index, index++);
            ASSERT_FALSE(block.text.empty());
        }
    }
}

TEST(MarkdownBlockParser, aStopEndsIt)
{
    std::stop_source source;
    source.request_stop();
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "- a\n";
    EXPECT_THROW(static_cast<void>(MarkdownBlockParser::parse(text, source.get_token())), CancellationError);
}
