#include "Compare/PlainComparison.h"
#include "Compare/WordTokenizer.h"

#include <gmock/gmock.h>
#include <random>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> keys(std::string_view text, const ComparisonOptions &options)
{
    std::vector<std::string> all;
    for (const WordToken &token : WordTokenizer::tokens(text, options))
        all.push_back(token.key);
    return all;
}

} // namespace

TEST(WordTokenizer, cutsOnlyWhereAWordFollowsItsPunctuation)
{
    EXPECT_THAT(WordTokenizer::raw("hello, world"), ElementsAre("hello,", "world"));
    EXPECT_THAT(WordTokenizer::raw("(hello)"), ElementsAre("(hello)"));
    EXPECT_THAT(WordTokenizer::raw("a,b"), ElementsAre("a,", "b"));
    EXPECT_THAT(WordTokenizer::raw("don't"), ElementsAre("don't"));
    EXPECT_THAT(WordTokenizer::raw("don’t"), ElementsAre("don’t"));
    EXPECT_THAT(WordTokenizer::raw("state-of-the-art"), ElementsAre("state-of-the-art"));
    EXPECT_THAT(WordTokenizer::raw("3.14"), ElementsAre("3.", "14"));
    EXPECT_THAT(WordTokenizer::raw("foo--bar"), ElementsAre("foo--", "bar"));
    EXPECT_THAT(WordTokenizer::raw("rock-'n'-roll"), ElementsAre("rock-'", "n'-", "roll"));
    EXPECT_THAT(WordTokenizer::raw("a - b"), ElementsAre("a", "-", "b"));
    EXPECT_THAT(WordTokenizer::raw("word—word"), ElementsAre("word—", "word"));
}

TEST(WordTokenizer, noTextNoTokens)
{
    EXPECT_THAT(WordTokenizer::raw(""), IsEmpty());
    EXPECT_THAT(WordTokenizer::raw(" \t\r\n\u00A0\u2028"), IsEmpty());
    EXPECT_EQ(WordTokenizer::count(""), 0U);
    EXPECT_EQ(WordTokenizer::count(" \u3000"), 0U);
}

TEST(WordTokenizer, aConnectorAtTheEndIsTrailingPunctuation)
{
    EXPECT_THAT(WordTokenizer::raw("dogs' bark"), ElementsAre("dogs'", "bark"));
    EXPECT_THAT(WordTokenizer::raw("dogs'"), ElementsAre("dogs'"));
    EXPECT_THAT(WordTokenizer::raw("well-"), ElementsAre("well-"));
}

TEST(WordTokenizer, aConnectorBehindAConnectorIsNone)
{
    EXPECT_THAT(WordTokenizer::raw("a--b"), ElementsAre("a--", "b"));
    EXPECT_THAT(WordTokenizer::raw("a-b"), ElementsAre("a-b"));
}

TEST(WordTokenizer, thereAreFiveConnectors)
{
    for (const char *connector : {"'", "\u2019", "-", "\u2010", "\u2011"})
        EXPECT_EQ(WordTokenizer::count(std::string("é") + connector + "b"), 1U) << connector;
    for (const char *other : {".", ",", "\u2013", "\u2014", "\u2018", "_", "/", "-\u0301"})
        EXPECT_EQ(WordTokenizer::count(std::string("é") + other + "b"), 2U) << other;
}

TEST(WordTokenizer, leadingPunctuationStaysWithItsWord)
{
    EXPECT_THAT(WordTokenizer::raw("«été» ...b"), ElementsAre("«été»", "...b"));
    EXPECT_THAT(WordTokenizer::raw("-1,5 €"), ElementsAre("-1,", "5", "€"));
}

TEST(WordTokenizer, lettersWithAccentsAreOneCharacter)
{
    EXPECT_THAT(WordTokenizer::raw("e\u0301te\u0301,x"), ElementsAre("e\u0301te\u0301,", "x"));
    EXPECT_THAT(WordTokenizer::raw("漢字 ½kg"), ElementsAre("漢字", "½kg"));
    EXPECT_THAT(WordTokenizer::raw("👨‍👩‍👧x"), ElementsAre("👨‍👩‍👧x"));
}

TEST(WordTokenizer, theKeyFollowsTheOptions)
{
    const ComparisonOptions noCase{.ignoreCase = true};
    EXPECT_EQ(WordTokenizer::tokens("Word", noCase), WordTokenizer::tokens("word", noCase));
    EXPECT_EQ(WordTokenizer::tokens("Word", noCase).front().text, "Word");
    EXPECT_NE(WordTokenizer::tokens("Word", {}), WordTokenizer::tokens("word", {}));
    EXPECT_EQ(WordTokenizer::tokens("*word*", {}), WordTokenizer::tokens("word", {}));
    EXPECT_EQ(WordTokenizer::tokens("*word*", {}).front().text, "*word*");
    const ComparisonOptions strict{.ignoreFormattingMarkers = false};
    EXPECT_NE(WordTokenizer::tokens("*word*", strict), WordTokenizer::tokens("word", strict));
}

TEST(WordTokenizer, markersAloneKeepThemselvesAsTheirKey)
{
    EXPECT_THAT(keys("** a _", {}), ElementsAre("**", "a", "_"));
}

TEST(WordTokenizer, equalTokensHashEqually)
{
    const WordToken a{"*a*", "a"};
    const WordToken b{"a", "a"};
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<WordToken>()(a), std::hash<WordToken>()(b));
}

TEST(WordTokenizer, agreesWithThePlainStepsOnAnyText)
{
    std::mt19937 random(5);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = nolfa::testing::randomText(random, random() % 14);
        const ComparisonOptions options = nolfa::testing::randomOptions(random);
        ASSERT_EQ(WordTokenizer::raw(text), nolfa::testing::plainWords(text)) << ::testing::PrintToString(text);
        ASSERT_EQ(WordTokenizer::count(text, options), WordTokenizer::raw(text).size());
        ASSERT_EQ(keys(text, options), nolfa::testing::plainKeys(text, options)) << ::testing::PrintToString(text);
        std::string together;
        for (const std::string &word : WordTokenizer::raw(text))
            together += word;
        ASSERT_EQ(together, nolfa::testing::withoutWhitespace(text));
    }
}
