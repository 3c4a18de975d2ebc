#include "Engine/NumberText.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

using namespace nolfa;
using namespace std::string_literals;

TEST(NumberText, integersAreBaseTenOverTheWholeText)
{
    EXPECT_EQ(NumberText::integer("0"), 0);
    EXPECT_EQ(NumberText::integer("+12"), 12);
    EXPECT_EQ(NumberText::integer("-007"), -7);
    EXPECT_EQ(NumberText::integer("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(NumberText::integer("-9223372036854775808"), INT64_MIN);
    for (const std::string &text :
        {""s, "+"s, "-"s, "+-1"s, "-+1"s, "1 "s, " 1"s, "1.0"s, "0x1"s, "9223372036854775808"s, "1e3"s, "\0"s, "1\0"s})
        EXPECT_EQ(NumberText::integer(text), std::nullopt) << text;
}

TEST(NumberText, numbersAreAllThatStrtodTakes)
{
    for (const char *text : {"0", "3.50", "007", "1e3", "1E+3", "-0", "+.5", "5.", "0x1p3", "0X.8", "0x10", "1e999",
             "-inf", "INFINITY", "nan", "NaN(char_0)", "nan()", "123456789012345678901234567890.5",
             "1234567890123456789012345678901234567890"}) {
        char *end = nullptr;
        const double expected = std::strtod(text, &end);
        ASSERT_EQ(*end, 0) << text;
        const std::optional<double> number = NumberText::number(text);
        ASSERT_TRUE(number) << text;
        EXPECT_TRUE(*number == expected || (std::isnan(*number) && std::isnan(expected))) << text;
    }
}

TEST(NumberText, nothingElseIsANumber)
{
    for (const std::string &text : {""s, " 1"s, "\t1"s, "\n1"s, "\v1"s, "\f1"s, "\r1"s, "\0"s, "1\0"s, "1 "s, "1,5"s,
             "."s, "+"s, "e3"s, "0x"s, "1e"s, "infinite"s, "nan("s, "nan(-)"s, "1.2.3"s, "--1"s, "12 %"s, "½"s, "١"s})
        EXPECT_EQ(NumberText::number(text), std::nullopt) << text;
}

TEST(NumberText, theProcessesLocaleDoesNotMatter)
{
    // Whichever of these a machine has; a comma would be its decimal point.
    const char *chosen = nullptr;
    for (const char *name : {"fr_FR.UTF-8", "fr_FR.utf8", "de_DE.UTF-8"})
        chosen = chosen != nullptr ? chosen : std::setlocale(LC_ALL, name);
    EXPECT_EQ(NumberText::number("+1.5"), 1.5);
    EXPECT_EQ(NumberText::number("1,5"), std::nullopt);
    std::setlocale(LC_ALL, "C");
}
