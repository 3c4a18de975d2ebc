#include "Platform/CharacterWalk.h"

#include "Platform/Unicode.h"

#include <gmock/gmock.h>
#include <random>
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

using namespace nolfa;
using ::testing::ElementsAre;

namespace {

std::vector<std::string> characters(std::string_view text)
{
    std::vector<std::string> all;
    for (CharacterWalk walk(text); walk.next();)
        all.emplace_back(walk.character());
    return all;
}

/// What the library makes of the whole text at once.
std::vector<std::string> expected(const std::string &text)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> rules(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    rules->setText(wide);
    std::vector<std::string> all;
    for (int start = rules->first(), end = rules->next(); end != icu::BreakIterator::DONE;
         start = end, end = rules->next())
        wide.tempSubStringBetween(start, end).toUTF8String(all.emplace_back());
    return all;
}

/// Code points that join with others in every way there is.
constexpr std::array<char32_t, 48> joining{'a', 'B', '7', ' ', '\n', '\r', '\t', '\0', '-', '\'', 0xE9, 0x300, 0x308,
    0x36F, 0x200B, 0x200C, 0x200D, 0xFE0F, 0x85, 0x2028, 0xA0, 0x600, 0x915, 0x94D, 0x937, 0x903, 0xE33, 0xE01, 0x1100,
    0x1161, 0x11A8, 0xAC00, 0xAC01, 0x1F1E6, 0x1F1FA, 0x1F468, 0x1F469, 0x1F3FD, 0x2764, 0x4E00, 0x3042, 0x10FFFF,
    0xFFFD, 0x2019, 0xBD, 0x5D0, 0x1F600, 0xE0020};

} // namespace

TEST(CharacterWalk, givesUserPerceivedCharacters)
{
    EXPECT_THAT(characters(""), ElementsAre());
    EXPECT_THAT(characters("ab c"), ElementsAre("a", "b", " ", "c"));
    EXPECT_THAT(characters("e\u0301te"), ElementsAre("e\u0301", "t", "e"));
    EXPECT_THAT(characters("a\r\n\rb"), ElementsAre("a", "\r\n", "\r", "b"));
    EXPECT_THAT(characters("👨‍👩‍👧x🇫🇷🇧🇪"), ElementsAre("👨‍👩‍👧", "x", "🇫🇷", "🇧🇪"));
    EXPECT_THAT(characters("\n\u0301"), ElementsAre("\n", "\u0301"));
    EXPECT_THAT(characters("한국어"), ElementsAre("한", "국", "어"));
}

TEST(CharacterWalk, classifiesByTheFirstCodePoint)
{
    const auto kind = [](std::string_view text) {
        CharacterWalk walk(text);
        EXPECT_TRUE(walk.next());
        return walk.kind();
    };
    for (const char *word : {"a", "Z", "0", "é", "ß", "語", "½", "Ⅳ", "²", "ª", "e\u0301"})
        EXPECT_EQ(kind(word), CharacterClass::word) << word;
    for (const char *space :
        {" ", "\t", "\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u00A0", "\u2028", "\u3000", " \u0301"})
        EXPECT_EQ(kind(space), CharacterClass::whitespace) << space;
    for (const char *other : {"-", ".", "€", "—", "\u200B", "😀", "\u0301", "\x01", "_", "\xFF"})
        EXPECT_EQ(kind(other), CharacterClass::other) << other;
}

TEST(CharacterWalk, everyBrokenSequenceIsACharacter)
{
    EXPECT_THAT(characters("a\xFF\xFEz"), ElementsAre("a", "\xFF", "\xFE", "z"));
    EXPECT_THAT(characters("\xC3"), ElementsAre("\xC3"));
    EXPECT_EQ(characters("\xED\xA0\x80").front()[0], '\xED') << "a lone surrogate";
}

TEST(CharacterWalk, agreesWithTheFullRulesOnAnyMixture)
{
    std::mt19937 random(20);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t i = random() % 12; i > 0; --i)
            Unicode::append(text, joining[random() % joining.size()]);
        ASSERT_EQ(characters(text), expected(text)) << ::testing::PrintToString(text);
    }
}

TEST(CharacterWalk, coversEveryByteOfAnything)
{
    std::mt19937 random(21);
    for (int round = 0; round < 5'000; ++round) {
        std::string text;
        for (std::size_t i = random() % 24; i > 0; --i)
            text += static_cast<char>(random() % 3 == 0 ? 'a' : random());
        std::string together;
        for (const std::string &character : characters(text)) {
            EXPECT_FALSE(character.empty());
            together += character;
        }
        ASSERT_EQ(together, text);
    }
}
