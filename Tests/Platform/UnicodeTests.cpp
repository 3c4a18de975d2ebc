#include "Platform/Unicode.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(Unicode, validityIsStrict)
{
    EXPECT_TRUE(Unicode::isValidUTF8(""));
    EXPECT_TRUE(Unicode::isValidUTF8("é\xF0\x9F\x98\x80"));
    for (const char *text : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "a\x80"})
        EXPECT_FALSE(Unicode::isValidUTF8(text));
}

TEST(Unicode, repairReplacesBrokenSequencesOnly)
{
    EXPECT_EQ(Unicode::repaired("été"), "été");
    EXPECT_EQ(Unicode::repaired("a\xFFz"), "a\uFFFDz");
}

TEST(Unicode, lowerCaseIsTheFullMapping)
{
    EXPECT_EQ(Unicode::lowercased("JPEG.Z9"), "jpeg.z9");
    EXPECT_EQ(Unicode::lowercased("ÉTÉ ΣΑΣ"), "été σας");
    EXPECT_EQ(Unicode::lowercased("İ"), "i\u0307");
}

TEST(Unicode, trimmingTakesWhitespaceAndNewlines)
{
    EXPECT_EQ(Unicode::trimmed(" \t\r\n\u00A0\u2003\u2028\u0085 a b \v\f"), "a b");
    EXPECT_EQ(Unicode::trimmed("\u200Ba\u200B"), "\u200Ba\u200B");
    EXPECT_EQ(Unicode::trimmed(" \n "), "");
}

TEST(Unicode, trimmingOfBlanksLeavesNewlines)
{
    EXPECT_EQ(Unicode::trimmedOfBlanks(" \t\u00A0a\n "), "a\n");
}

TEST(Unicode, printableTextIsOneLine)
{
    EXPECT_EQ(Unicode::printable("a\nb\x1B[31m\xFF"
                                 "c\u2028d\u0085"),
        "a?b?[31m\uFFFDc?d?");
    EXPECT_EQ(Unicode::printable("déjà « vu »"), "déjà « vu »");
}

TEST(Unicode, decodesByMarkOnly)
{
    EXPECT_EQ(Unicode::decodedByMark(std::string("\xFF\xFE"
                                                 "a\0\xE9\0",
                  6)),
        "aé");
    EXPECT_EQ(Unicode::decodedByMark(std::string("\xFE\xFF\0a\xD8\x3D\xDE\0", 8)), "a\U0001F600");
    EXPECT_EQ(Unicode::decodedByMark(std::string("\0\0\xFE\xFF\0\0\0a", 8)), "a");
    EXPECT_EQ(Unicode::decodedByMark("abc"), std::nullopt);
    EXPECT_EQ(Unicode::decodedByMark(std::string("\xFF\xFE\0\xD8"
                                                 "a\0",
                  6)),
        std::nullopt)
        << "a lone surrogate";
}

TEST(Unicode, everyByteIsALatin1Character)
{
    EXPECT_EQ(Unicode::decodedLatin1("\xE9t\xE9\x80"), "été\u0080");
}
