#include "Compare/TextFold.h"

#include "Platform/CancellationError.h"

#include <gmock/gmock.h>
#include <random>
#include <vector>

using namespace nolfa;

TEST(TextFold, alwaysTrimsWhitespaceAndNewlines)
{
    EXPECT_EQ(TextFold::fold(" \t\n\u00A0\u2028 a  b\u0085\r\n\u3000", false, false, false), "a  b");
    EXPECT_EQ(TextFold::fold("\u200B a", false, false, false), "\u200B a") << "no whitespace";
    EXPECT_EQ(TextFold::fold("A *b*\tC", false, false, false), "A *b*\tC");
}

TEST(TextFold, markersAloneFoldToNothing)
{
    EXPECT_EQ(TextFold::fold("***", false, false, true), "");
    EXPECT_EQ(TextFold::fold("*_`~", true, true, true), "");
    EXPECT_EQ(TextFold::fold("***", true, true, false), "***");
}

TEST(TextFold, removesMarkersWhereverTheyStand)
{
    EXPECT_EQ(TextFold::fold("a*b_c`d~e", false, false, true), "abcde");
    EXPECT_EQ(TextFold::fold("a * b", false, false, true), "a  b");
    EXPECT_EQ(TextFold::fold("é*è", false, false, true), "éè");
}

TEST(TextFold, aMarkerWithAnAccentIsAnotherCharacter)
{
    EXPECT_EQ(TextFold::fold("a*\u0301b", false, false, true), "a*\u0301b");
}

TEST(TextFold, lowercasesByTheFullMapping)
{
    EXPECT_EQ(TextFold::fold("ABC", false, true, false), "abc");
    EXPECT_EQ(TextFold::fold("ÉTÉ ΟΔΟΣ", false, true, false), "été οδος");
    EXPECT_EQ(TextFold::fold("\u0130", false, true, false), "i\u0307");
    EXPECT_EQ(TextFold::fold("Σ*Α", false, true, true), "σα") << "markers go first";
}

TEST(TextFold, collapsesRunsOfAnyWhitespace)
{
    EXPECT_EQ(TextFold::fold("  a \t\r\n b\u00A0\u2003c ", true, false, false), "a b c");
    EXPECT_EQ(TextFold::fold("é \u0301 è", true, false, false), "é è") << "a blank with an accent is whitespace";
    EXPECT_EQ(TextFold::fold(" \u3000 ", true, false, false), "");
    EXPECT_EQ(TextFold::fold("", true, true, true), "");
}

TEST(TextFold, composedAndDecomposedLettersDiffer)
{
    EXPECT_NE(TextFold::loose("é"), TextFold::loose("e\u0301"));
}

TEST(TextFold, looseIsEverythingTogether)
{
    EXPECT_EQ(TextFold::loose(" **Hello,**\n_World_ "), "hello, world");
    EXPECT_EQ(TextFold::loose(" **É,**\n_World_ "), "é, world");
}

TEST(TextFold, keepsNULs)
{
    using namespace std::string_literals;
    EXPECT_EQ(TextFold::fold(" a\0 B*"s, true, true, true), "a\0 b"s);
}

TEST(TextFold, theWayOfPlainTextAgreesWithTheGeneralOne)
{
    std::mt19937 random(3);
    constexpr std::string_view letters = "aB *_`~\t\n\r\f-.";
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t i = random() % 10; i > 0; --i)
            text += letters[random() % letters.size()];
        const bool whitespace = random() % 2 == 0;
        const bool letterCase = random() % 2 == 0;
        const bool markers = random() % 2 == 0;
        // A letter that isn't ASCII sends the text the general way, and stays.
        const std::string general = TextFold::fold(text + "é", whitespace, letterCase, markers);
        const std::string plain = TextFold::fold(text + "e", whitespace, letterCase, markers);
        ASSERT_EQ(general.substr(0, general.size() - 2), plain.substr(0, plain.size() - 1))
            << ::testing::PrintToString(text);
    }
}

TEST(TextFold, aLongTextFoldsAsItsWordsDo)
{
    // What folding looks at in its surroundings: capitals at the end of words, blanks and signs with accents, letters
    // that take the next character along, flags.
    const std::vector<std::string> pieces{"Σ", "ΑΣ", "A1", "é", "*", "_", " \u0301", "\u0600", "*\u0301", "🇫", "x", " ",
        "  ", "\t", "\u00A0", "\r\n", "e\u0301", " b "};
    std::mt19937 random(7);
    for (int round = 0; round < 16; ++round) {
        const bool whitespace = (round & 1) != 0;
        const bool letterCase = (round & 2) != 0;
        const bool markers = (round & 4) != 0;
        // Words fold one by one, as long as what parts them folds to itself.
        std::string text;
        std::string expected;
        while (text.size() < 300'000) {
            std::string word = "w";
            for (std::size_t i = random() % 30; i > 0; --i)
                word += pieces[random() % pieces.size()];
            word += "w";
            text += (text.empty() ? "" : " ") + word;
            expected += (expected.empty() ? "" : " ") + TextFold::fold(word, whitespace, letterCase, markers);
        }
        ASSERT_TRUE(TextFold::fold(text, whitespace, letterCase, markers) == expected) << round;
    }
}

TEST(TextFold, heedsAStopInALongText)
{
    std::stop_source source;
    source.request_stop();
    const std::string text(1U << 20U, 'a');
    EXPECT_EQ(TextFold::loose("short", source.get_token()), "short");
    EXPECT_THROW(static_cast<void>(TextFold::loose(text, source.get_token())), CancellationError);
}
