#include "Nolfa/App/AppSettings.h"

#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

class AppSettingsTests : public ::testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<QSettings> file() const
    {
        return std::make_unique<QSettings>(
            QString::fromStdString((m_folder / "settings.ini").native()), QSettings::IniFormat);
    }

    void store(const QString &key, const QVariant &value) const { file()->setValue(key, value); }
    [[nodiscard]] QVariant stored(const QString &key) const { return file()->value(key); }

private:
    const TemporaryFolder m_folder;
    const LanguageScope m_language{NolfaLanguage::system};
    const LocaleScope m_locale{NolfaFormat::locale()};
    const SystemLocaleScope m_system{"en_GB.UTF-8"};
};

} // namespace

TEST_F(AppSettingsTests, withNothingStoredTheDefaultsHold)
{
    const AppSettings settings(file());
    EXPECT_EQ(settings.language(), NolfaLanguage::system);
    EXPECT_EQ(settings.outputMode(), OutputMode::besideOriginal);
    EXPECT_EQ(settings.customOutputDirectoryPath(), std::nullopt);
    EXPECT_FALSE(settings.revealAfterConvert());
    EXPECT_TRUE(file()->allKeys().isEmpty()) << "loading writes nothing";
}

TEST_F(AppSettingsTests, whatIsSetIsWrittenAtOnceUnderItsKeyAndReadAgain)
{
    AppSettings settings(file());
    settings.setLanguage(NolfaLanguage::fr);
    settings.setOutputMode(OutputMode::custom);
    settings.setCustomOutputDirectoryPath("/home/é, b");
    settings.setRevealAfterConvert(true);
    EXPECT_EQ(stored("nolfa.language"), "fr");
    EXPECT_EQ(stored("nolfa.outputMode"), "custom");
    EXPECT_EQ(stored("nolfa.customOutputDirectory"), "/home/é, b");
    EXPECT_EQ(stored("nolfa.revealAfterConvert").toBool(), true);

    const AppSettings again(file());
    EXPECT_EQ(again.language(), NolfaLanguage::fr);
    EXPECT_EQ(again.outputMode(), OutputMode::custom);
    EXPECT_EQ(again.customOutputDirectoryPath(), "/home/é, b");
    EXPECT_TRUE(again.revealAfterConvert());
}

TEST_F(AppSettingsTests, aDamagedLanguageCountsAsSystemAndIsLeftAloneUntilTheUserChooses)
{
    for (const char *damaged : {"FR", "de", "", "fr "}) {
        store("nolfa.language", damaged);
        AppSettings settings(file());
        EXPECT_EQ(settings.language(), NolfaLanguage::system) << damaged;
        settings.setLanguage(NolfaLanguage::system);
        EXPECT_EQ(stored("nolfa.language"), damaged) << "nothing changed, nothing is written";
        settings.setLanguage(NolfaLanguage::en);
        EXPECT_EQ(stored("nolfa.language"), "en");
    }
}

TEST_F(AppSettingsTests, anUnknownOutputModeIsIgnored)
{
    store("nolfa.outputMode", "Custom");
    EXPECT_EQ(AppSettings(file()).outputMode(), OutputMode::besideOriginal);
    EXPECT_EQ(stored("nolfa.outputMode"), "Custom");
}

TEST_F(AppSettingsTests, anAbsentFolderRemovesItsKey)
{
    AppSettings settings(file());
    settings.setCustomOutputDirectoryPath("/out");
    settings.setCustomOutputDirectoryPath(std::nullopt);
    EXPECT_FALSE(file()->contains("nolfa.customOutputDirectory"));
    settings.setProperty("customOutputDirectoryPath", "/out");
    EXPECT_EQ(settings.customOutputDirectoryPath(), "/out");
}

TEST_F(AppSettingsTests, theOutputFolderIsThereOnlyInCustomModeWithAPath)
{
    AppSettings settings(file());
    EXPECT_EQ(settings.outputDirectory(), std::nullopt);
    settings.setCustomOutputDirectoryPath("/out");
    EXPECT_EQ(settings.outputDirectory(), std::nullopt) << "beside the original";
    settings.setOutputMode(OutputMode::custom);
    EXPECT_EQ(settings.outputDirectory(), "/out");
    settings.setCustomOutputDirectoryPath("");
    EXPECT_EQ(settings.outputDirectory(), std::nullopt) << "an empty path";
    settings.setCustomOutputDirectoryPath(std::nullopt);
    EXPECT_EQ(settings.outputDirectory(), std::nullopt) << "no path";
}

TEST_F(AppSettingsTests, loadingPutsTheLanguageInForceWhateverWasRead)
{
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    NolfaFormat::setLocale({"fr", "FR"});
    const AppSettings settings(file());
    EXPECT_EQ(NolfaL10n::current(), NolfaLanguage::system);
    EXPECT_EQ(NolfaFormat::locale(), (Locale{"en", "GB"}));
}

TEST_F(AppSettingsTests, theLanguageChangesButTheRegionStays)
{
    store("nolfa.language", "fr");
    AppSettings settings(file());
    EXPECT_EQ(NolfaL10n::current(), NolfaLanguage::fr);
    EXPECT_EQ(NolfaFormat::locale(), (Locale{"fr", "GB"}));
    const SystemLocaleScope canada("fr_CA.UTF-8");
    settings.setLanguage(NolfaLanguage::en);
    EXPECT_EQ(NolfaFormat::locale(), (Locale{"en", "CA"}));
    EXPECT_EQ(NolfaFormat::paper(), NolfaFormat::Paper::usLetter);
    settings.setLanguage(NolfaLanguage::system);
    EXPECT_EQ(NolfaFormat::locale(), (Locale{"fr", "CA"}));
}

TEST_F(AppSettingsTests, aChangeOfLanguageIsToldOnceAndWhenItIsInForce)
{
    AppSettings settings(file());
    std::vector<std::string> heard;
    QObject::connect(&settings, &AppSettings::languageChanged, [&] { heard.push_back(T("Convert", "Conversion")); });
    settings.setLanguage(NolfaLanguage::fr);
    settings.setLanguage(NolfaLanguage::fr);
    settings.setProperty("language", "en");
    settings.setProperty("language", "tlh");
    EXPECT_EQ(heard, (std::vector<std::string>{"Conversion", "Convert"}));
}

TEST_F(AppSettingsTests, screensReadAndWriteRawValues)
{
    AppSettings settings(file());
    EXPECT_EQ(settings.property("language"), "system");
    EXPECT_EQ(settings.property("outputMode"), "besideOriginal");
    int told = 0;
    QObject::connect(&settings, &AppSettings::outputModeChanged, [&] { ++told; });
    settings.setProperty("outputMode", "custom");
    settings.setProperty("outputMode", "nowhere");
    EXPECT_EQ(settings.outputMode(), OutputMode::custom);
    EXPECT_EQ(told, 1);
}

TEST_F(AppSettingsTests, theStandardSettingsAreOfTheUserAlone)
{
    const TemporaryFolder home;
    const EnvironmentScope place("XDG_CONFIG_HOME", home.path());
    const std::unique_ptr<QSettings> defaults = AppSettings::standardDefaults();
    EXPECT_TRUE(defaults->fileName().endsWith("/nolfa.conf")) << defaults->fileName().toStdString();
    EXPECT_FALSE(defaults->fallbacksEnabled());
}

namespace {

std::vector<std::string> textsOf(const AppSettings &settings, const char *property, const char *key = "text")
{
    std::vector<std::string> texts;
    for (const QVariant &entry : settings.property(property).toList())
        texts.push_back(entry.toMap().value(key).toString().toStdString());
    return texts;
}

} // namespace

TEST_F(AppSettingsTests, whatThereIsToChooseFromIsCalledInTheLanguageInForce)
{
    using Texts = std::vector<std::string>;
    AppSettings settings(file());
    EXPECT_EQ(textsOf(settings, "languages", "value"), (Texts{"system", "en", "fr"}));
    EXPECT_EQ(textsOf(settings, "outputModes", "value"), (Texts{"besideOriginal", "custom"}));
    Texts languages;
    Texts modes;
    QObject::connect(&settings, &AppSettings::languageChanged, [&] {
        languages = textsOf(settings, "languages");
        modes = textsOf(settings, "outputModes");
    });
    settings.setLanguage(NolfaLanguage::fr);
    EXPECT_EQ(languages, (Texts{"Système", "English", "Français"}));
    EXPECT_EQ(modes, (Texts{"À côté de l’original", "Dans un dossier de mon choix"}));
    settings.setLanguage(NolfaLanguage::en);
    EXPECT_EQ(languages, (Texts{"System", "English", "Français"}));
    EXPECT_EQ(modes, (Texts{"Next to the original", "In a folder I choose"}));
}

TEST_F(AppSettingsTests, choosingAFolderWithBesideOriginalOnSwitchesTheModeToCustom)
{
    AppSettings settings(file());
    settings.outputFolderChosen(QUrl("file:///out/%C3%A9%20%25"));
    EXPECT_EQ(settings.customOutputDirectoryPath(), "/out/é %");
    EXPECT_EQ(settings.outputMode(), OutputMode::custom);
    EXPECT_EQ(settings.outputDirectory(), "/out/é %");
    EXPECT_EQ(stored("nolfa.customOutputDirectory"), "/out/é %");
    EXPECT_EQ(stored("nolfa.outputMode"), "custom");
    EXPECT_EQ(settings.property("customOutputDirectoryURL").toUrl(), QUrl("file:///out/%C3%A9%20%25"));
}

TEST_F(AppSettingsTests, anAddressThatIsNoFolderOfThisMachineChangesNothing)
{
    AppSettings settings(file());
    for (const char *address : {"", "https://example.org/out", "sftp://host/out", "file://host/out"})
        settings.outputFolderChosen(QUrl(QString::fromLatin1(address)));
    EXPECT_EQ(settings.customOutputDirectoryPath(), std::nullopt);
    EXPECT_EQ(settings.outputMode(), OutputMode::besideOriginal);
    EXPECT_TRUE(settings.property("customOutputDirectoryURL").toUrl().isEmpty());
}

TEST_F(AppSettingsTests, aFolderBelowTheUsersOwnIsShownWithATilde)
{
    const EnvironmentScope home("HOME", "/home/ada");
    AppSettings settings(file());
    const auto shown = [&settings](const char *path) {
        settings.setCustomOutputDirectoryPath(QString::fromUtf8(path));
        return settings.property("shortCustomOutputDirectory").toString();
    };
    EXPECT_EQ(shown("/home/ada"), "~");
    EXPECT_EQ(shown("/home/ada/Documents"), "~/Documents");
    EXPECT_EQ(shown("/home/adam/Documents"), "/home/adam/Documents");
    EXPECT_EQ(shown("/srv"), "/srv");
    settings.setCustomOutputDirectoryPath(std::nullopt);
    EXPECT_EQ(settings.property("shortCustomOutputDirectory").toString(), "");
}
