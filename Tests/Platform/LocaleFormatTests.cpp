#include "Platform/LocaleFormat.h"

#include <gtest/gtest.h>

using namespace nolfa;

namespace {

const Locale english{"en", "US"};
const Locale french{"fr", "FR"};

} // namespace

TEST(LocaleFormat, sizesAreDecimalAndRoundedByUnit)
{
    EXPECT_EQ(LocaleFormat::byteCount(1, english), "1 byte");
    EXPECT_EQ(LocaleFormat::byteCount(999, english), "999 bytes");
    EXPECT_EQ(LocaleFormat::byteCount(1000, english), "1 kB");
    EXPECT_EQ(LocaleFormat::byteCount(1500, english), "2 kB");
    EXPECT_EQ(LocaleFormat::byteCount(999'499, english), "999 kB");
    EXPECT_EQ(LocaleFormat::byteCount(999'500, english), "1 MB");
    EXPECT_EQ(LocaleFormat::byteCount(1'250'000, english), "1.3 MB");
    EXPECT_EQ(LocaleFormat::byteCount(2'345'000'000, english), "2.35 GB");
    EXPECT_EQ(LocaleFormat::byteCount(7'000'000'000'000, english), "7 TB");
}

TEST(LocaleFormat, zeroIsSpelledOut)
{
    EXPECT_EQ(LocaleFormat::byteCount(0, english), "Zero kB");
    EXPECT_EQ(LocaleFormat::byteCount(0, french), "Zéro\u202Fko");
}

TEST(LocaleFormat, sizesFollowTheLanguage)
{
    EXPECT_EQ(LocaleFormat::byteCount(1'250'000, french), "1,3\u202FMo");
}

TEST(LocaleFormat, everySizeHasAText)
{
    EXPECT_FALSE(LocaleFormat::byteCount(INT64_MAX, english).empty());
    EXPECT_FALSE(LocaleFormat::byteCount(INT64_MIN, english).empty());
    EXPECT_FALSE(LocaleFormat::byteCount(0, Locale()).empty());
}

TEST(LocaleFormat, datesHaveTheLocalesOrder)
{
    using namespace std::chrono;
    const system_clock::time_point date = sys_days(2026y / March / 5) + hours(12);
    EXPECT_EQ(LocaleFormat::longDate(date, english), "March 5, 2026");
    EXPECT_EQ(LocaleFormat::longDate(date, Locale{"en", "GB"}), "5 March 2026");
    EXPECT_EQ(LocaleFormat::longDate(date, french), "5 mars 2026");
}
