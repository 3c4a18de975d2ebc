#include "Platform/PDFLineBuilder.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

using nolfa::PDFGlyph;
using nolfa::PDFLineBuilder;
using nolfa::PDFTextLine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double size = 10;
constexpr double advance = 5;

/// Draws characters side by side, half a font size each.
class Pen {
public:
    Pen &at(double x, double y)
    {
        m_x = x;
        m_y = y;
        return *this;
    }

    Pen &write(std::u32string_view text, double fontSize = size)
    {
        for (const char32_t c : text) {
            m_lines.add({c, m_x, m_y, 1, 0, advance, fontSize});
            m_x += advance;
        }
        return *this;
    }

    Pen &skip(double width)
    {
        m_x += width;
        return *this;
    }

    Pen &raise(double height)
    {
        m_y -= height;
        return *this;
    }

    PDFLineBuilder &builder() { return m_lines; }

    std::vector<std::string> lines()
    {
        std::vector<std::string> texts;
        for (const PDFTextLine &line : m_lines.finish())
            texts.push_back(line.text);
        return texts;
    }

private:
    PDFLineBuilder m_lines;
    double m_x = 0;
    double m_y = 0;
};

} // namespace

TEST(PDFLineBuilder, aPageWithoutCharactersHasNoLines)
{
    EXPECT_THAT(Pen().lines(), IsEmpty());
}

TEST(PDFLineBuilder, charactersSideBySideAreOneWord)
{
    EXPECT_THAT(Pen().write(U"word").lines(), ElementsAre("word"));
}

TEST(PDFLineBuilder, aGapIsOneBlank)
{
    EXPECT_THAT(Pen().write(U"two").skip(1.6).write(U"words").lines(), ElementsAre("two words"));
    EXPECT_THAT(Pen().write(U"one").skip(1.4).write(U"word").lines(), ElementsAre("oneword"));
    EXPECT_THAT(Pen().write(U"far").skip(70).write(U"apart").lines(), ElementsAre("far apart"));
}

TEST(PDFLineBuilder, whiteSpaceOfAnyKindIsOneBlank)
{
    EXPECT_THAT(Pen().write(U"a \u00A0\t\u202F b").lines(), ElementsAre("a b"));
    EXPECT_THAT(Pen().write(U"a ").skip(30).write(U"b").lines(), ElementsAre("a b"));
}

TEST(PDFLineBuilder, blanksAroundALineAreNoneOfIt)
{
    EXPECT_THAT(Pen().write(U"  text  ").lines(), ElementsAre("text"));
    EXPECT_THAT(Pen().write(U"   ").lines(), IsEmpty());
}

TEST(PDFLineBuilder, aRowOfATableIsOneLineInTheOrderOfItsCells)
{
    Pen pen;
    pen.at(0, 0).write(U"Name").at(200, 0).write(U"Price");
    pen.at(0, 12).write(U"Pear").at(200, 12).write(U"12");
    EXPECT_THAT(pen.lines(), ElementsAre("Name Price", "Pear 12"));
}

TEST(PDFLineBuilder, columnsDrawnOneAfterTheOtherStayColumns)
{
    Pen pen;
    pen.at(0, 0).write(U"left one").at(0, 12).write(U"left two");
    pen.at(200, 0).write(U"right one").at(200, 12).write(U"right two");
    EXPECT_THAT(pen.lines(), ElementsAre("left one", "left two", "right one", "right two"));
}

TEST(PDFLineBuilder, baselinesAQuarterOfTheSizeApartAreOne)
{
    EXPECT_THAT(Pen().write(U"a").skip(20).raise(2.5).write(U"b").lines(), ElementsAre("a b"));
    EXPECT_THAT(Pen().write(U"a").skip(20).raise(2.6).write(U"b").lines(), ElementsAre("a", "b"));
}

TEST(PDFLineBuilder, anExponentStaysInItsLine)
{
    EXPECT_THAT(Pen().write(U"x").raise(4).write(U"2", 6).raise(-4).write(U"y").lines(), ElementsAre("x2y"));
    EXPECT_THAT(Pen().write(U"H").raise(-3).write(U"2", 6).raise(3).write(U"O").lines(), ElementsAre("H2O"));
}

TEST(PDFLineBuilder, theNextLineIsALineOfItsOwn)
{
    EXPECT_THAT(Pen().write(U"first").at(0, 11).write(U"second").lines(), ElementsAre("first", "second"));
}

TEST(PDFLineBuilder, ligaturesAreSpelledOut)
{
    EXPECT_THAT(Pen().write(U"\uFB01n, o\uFB00er, o\uFB03ce, \uFB02y, wa\uFB04e").lines(),
        ElementsAre("fin, offer, office, fly, waffle"));
}

TEST(PDFLineBuilder, furtherCharactersOfAGlyphFollowIt)
{
    Pen pen;
    pen.write(U"f");
    pen.builder().addToLast(U'i');
    pen.write(U"n");
    EXPECT_THAT(pen.lines(), ElementsAre("fin"));
}

TEST(PDFLineBuilder, hyphensAtALinesEndStay)
{
    EXPECT_THAT(Pen().write(U"hyphen-").at(0, 12).write(U"ation").lines(), ElementsAre("hyphen-", "ation"));
}

TEST(PDFLineBuilder, textDrawnAgainAtItsPlaceCountsOnce)
{
    Pen whole;
    whole.write(U"bold").at(0.3, 0).write(U"bold").write(U"er");
    EXPECT_THAT(whole.lines(), ElementsAre("bolder"));

    Pen letters;
    double x = 0;
    for (const char32_t c : std::u32string_view(U"bold")) {
        letters.at(x, 0).write({&c, 1}).at(x + 0.2, 0.2).write({&c, 1});
        x += advance;
    }
    EXPECT_THAT(letters.lines(), ElementsAre("bold"));
}

TEST(PDFLineBuilder, theSameWordBelowIsAnotherLine)
{
    EXPECT_THAT(Pen().write(U"twice").at(0, 12).write(U"twice").lines(), ElementsAre("twice", "twice"));
}

TEST(PDFLineBuilder, turnedTextHasLinesOfItsOwn)
{
    PDFLineBuilder lines;
    lines.add({U'a', 0, 0, 1, 0, advance, size});
    lines.add({U'u', 5, 0, 0, -1, advance, size});
    lines.add({U'p', 5, -5, 0, -1, advance, size});
    EXPECT_THAT(lines.finish(), ElementsAre(PDFTextLine{"a", size}, PDFTextLine{"up", size}));
}

TEST(PDFLineBuilder, lettersFromRightToLeftAreOneLine)
{
    PDFLineBuilder lines;
    double x = 100;
    for (const char32_t c : std::u32string_view(U"\u05E9\u05DC\u05D5\u05DD")) {
        lines.add({c, x, 0, 1, 0, advance, size});
        x -= advance;
    }
    EXPECT_THAT(lines.finish(), ElementsAre(PDFTextLine{"\u05E9\u05DC\u05D5\u05DD", size}));
}

TEST(PDFLineBuilder, theSizeOfALineIsThatOfItsFirstCharacter)
{
    Pen pen;
    pen.write(U"I", 24).write(U"nitial");
    EXPECT_THAT(pen.builder().finish(), ElementsAre(PDFTextLine{"Initial", 24}));
}

TEST(PDFLineBuilder, controlCharactersAreNoText)
{
    EXPECT_THAT(Pen().write(U"a\u0001b\uFEFF").lines(), ElementsAre("ab"));
}

TEST(PDFLineBuilder, aFinishedBuilderBeginsAnew)
{
    Pen pen;
    pen.write(U"one");
    EXPECT_EQ(pen.builder().size(), 3U);
    EXPECT_THAT(pen.lines(), ElementsAre("one"));
    EXPECT_EQ(pen.builder().size(), 0U);
    EXPECT_THAT(pen.at(0, 50).write(U"two").lines(), ElementsAre("two"));
}
