#include "Localization/NolfaFormat.h"

#include "Support/Scopes.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using NolfaFormat::Paper;

namespace {

Paper paperIn(const Locale &locale)
{
    const LocaleScope scope(locale);
    return NolfaFormat::paper();
}

} // namespace

TEST(NolfaFormat, theRegionDecidesThePaper)
{
    EXPECT_EQ(paperIn({"fr", "FR"}), Paper::a4);
    EXPECT_EQ(paperIn({"en", "CA"}), Paper::usLetter);
    EXPECT_EQ(paperIn({"fr", "CA"}), Paper::usLetter);
    EXPECT_EQ(paperIn({"en", "GB"}), Paper::a4);
    for (const char *region : {"US", "CA", "MX", "PH", "CL", "PR"})
        EXPECT_EQ(paperIn({"en", region}), Paper::usLetter) << region;
}

TEST(NolfaFormat, aLocaleWithoutRegionAsksTheMachine)
{
    const SystemLocaleScope machine("en_US.UTF-8");
    EXPECT_EQ(paperIn({"fr", ""}), Paper::usLetter);
    const SystemLocaleScope none("C");
    EXPECT_EQ(paperIn({"fr", ""}), Paper::a4);
}

TEST(NolfaFormat, aStoredChoiceWinsUntilItIsReset)
{
    const LocaleScope locale({"en", "US"});
    NolfaFormat::setPaper(Paper::a4);
    EXPECT_EQ(NolfaFormat::paper(), Paper::a4);
    NolfaFormat::resetPaper();
    EXPECT_EQ(NolfaFormat::paper(), Paper::usLetter);
}

TEST(NolfaFormat, papersHaveRawValuesAndSizes)
{
    EXPECT_EQ(NolfaFormat::paperFromRawValue("a4"), Paper::a4);
    EXPECT_EQ(NolfaFormat::paperFromRawValue("usLetter"), Paper::usLetter);
    EXPECT_EQ(NolfaFormat::paperFromRawValue("A4"), std::nullopt);
    EXPECT_EQ(NolfaFormat::rawValue(Paper::usLetter), "usLetter");
    EXPECT_EQ(NolfaFormat::sizePoints(Paper::a4), (NolfaFormat::PaperSize{595, 842}));
    EXPECT_EQ(NolfaFormat::sizePoints(Paper::usLetter), (NolfaFormat::PaperSize{612, 792}));
}

TEST(NolfaFormat, sizesSpellZeroInTheLocalesLanguage)
{
    const LocaleScope locale({"en", "US"});
    EXPECT_EQ(NolfaFormat::fileSize(0), "Zero kB");
    NolfaFormat::setLocale({"fr", "US"});
    EXPECT_TRUE(NolfaFormat::fileSize(0).starts_with("Zéro")) << NolfaFormat::fileSize(0);
}

TEST(NolfaFormat, datesFollowALocaleChangeAtTheNextCall)
{
    using namespace std::chrono;
    const system_clock::time_point date = sys_days(2026y / August / 1) + hours(12);
    const LocaleScope locale({"en", "US"});
    EXPECT_EQ(NolfaFormat::longDate(date), "August 1, 2026");
    NolfaFormat::setLocale({"fr", "FR"});
    EXPECT_EQ(NolfaFormat::longDate(date), "1 août 2026");
}
