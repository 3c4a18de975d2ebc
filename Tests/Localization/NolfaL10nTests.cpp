#include "Localization/NolfaL10n.h"

#include "Support/Scopes.h"

#include <gmock/gmock.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using ::testing::ElementsAre;

TEST(NolfaL10n, systemFollowsTheMachine)
{
    const LanguageScope language(NolfaLanguage::system);
    const auto onMachine = [](const char *locale) {
        const SystemLocaleScope scope(locale);
        return T("a", "b");
    };
    EXPECT_EQ(onMachine("fr_FR.UTF-8"), "b");
    EXPECT_EQ(onMachine("fr_CA"), "b");
    EXPECT_EQ(onMachine("fr"), "b");
    EXPECT_EQ(onMachine("es_ES.UTF-8"), "a");
    EXPECT_EQ(onMachine("de_DE.UTF-8"), "a");
    EXPECT_EQ(onMachine("frr_DE.UTF-8"), "a") << "North Frisian is not French";
}

TEST(NolfaL10n, noLanguageAtAllIsEnglish)
{
    const LanguageScope language(NolfaLanguage::system);
    const SystemLocaleScope none("");
    EXPECT_EQ(T("a", "b"), "a");
    const SystemLocaleScope posix("C.UTF-8");
    EXPECT_EQ(T("a", "b"), "a");
}

TEST(NolfaL10n, aChangeShowsAtOnce)
{
    const LanguageScope language(NolfaLanguage::en);
    EXPECT_EQ(T("a", "b"), "a");
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    EXPECT_EQ(T("a", "b"), "b");
}

TEST(NolfaL10n, recognitionPutsTheLanguageInForceFirst)
{
    const LanguageScope language(NolfaLanguage::system);
    const SystemLocaleScope machine("fr_CA.UTF-8");
    EXPECT_THAT(NolfaL10n::ocrLanguages(), ElementsAre("fr-FR", "en-US"));
    NolfaL10n::setCurrent(NolfaLanguage::en);
    EXPECT_THAT(NolfaL10n::ocrLanguages(), ElementsAre("en-US", "fr-FR"));
}

TEST(NolfaL10n, languagesHaveRawValuesAndTitles)
{
    const LanguageScope language(NolfaLanguage::en);
    std::vector<std::string> rawValues;
    std::vector<std::string> titles;
    for (const NolfaLanguage each : NolfaLanguages::allCases) {
        rawValues.emplace_back(rawValue(each));
        titles.push_back(title(each));
        EXPECT_EQ(languageFromRawValue(rawValue(each)), each);
    }
    EXPECT_THAT(rawValues, ElementsAre("system", "en", "fr"));
    EXPECT_THAT(titles, ElementsAre("System", "English", "Français"));
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    EXPECT_EQ(title(NolfaLanguage::system), "Système");
    EXPECT_EQ(title(NolfaLanguage::en), "English");
    EXPECT_EQ(languageFromRawValue("French"), std::nullopt);
}

TEST(NolfaL10n, anyThreadMayAskWhileAnotherChanges)
{
    const LanguageScope language(NolfaLanguage::en);
    std::jthread writer([] {
        for (int count = 0; count < 2000; ++count)
            NolfaL10n::setCurrent(count % 2 == 0 ? NolfaLanguage::fr : NolfaLanguage::en);
    });
    for (int count = 0; count < 2000; ++count) {
        const std::string text = T("a", "b");
        EXPECT_TRUE(text == "a" || text == "b");
    }
}
