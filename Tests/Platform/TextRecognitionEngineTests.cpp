#include "Platform/TextRecognitionEngine.h"

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

const std::vector<std::string> english{"en-US"};

Bitmap whitePage(int width, int height)
{
    const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, Bitmap::Layout::grey, std::vector<std::uint8_t>(size, 255)};
}

} // namespace

TEST(TextRecognitionEngine, languageTagsBecomeTheEnginesOwnInTheirOrder)
{
    const TemporaryFolder folder;
    for (const char *name : {"eng", "fra", "chi_sim", "chi_tra"})
        folder.write(std::string(name) + ".traineddata", "x");
    const auto names = [&folder](const std::vector<std::string> &tags) {
        return TextRecognitionEngine::engineLanguages(tags, folder.path());
    };
    EXPECT_EQ(names({"en-US", "fr-FR"}), "eng+fra");
    EXPECT_EQ(names({"fr-FR", "en-US"}), "fra+eng");
    EXPECT_EQ(names({"FR", "fr-CA", "fr_BE"}), "fra");
    EXPECT_EQ(names({"zh-Hant", "zh-Hans"}), "chi_tra+chi_sim");
}

TEST(TextRecognitionEngine, languagesWithoutDataAreSkipped)
{
    const TemporaryFolder folder;
    folder.write("eng.traineddata", "x");
    EXPECT_EQ(TextRecognitionEngine::engineLanguages({"de-DE", "tlh", "", "en-US"}, folder.path()), "eng");
    EXPECT_THROW((void)TextRecognitionEngine::engineLanguages({"de-DE", "tlh"}, folder.path()), PlatformError);
    EXPECT_THROW((void)TextRecognitionEngine::engineLanguages({}, folder.path()), PlatformError);
}

TEST(TextRecognitionEngine, theEnvironmentNamesTheFolderOfData)
{
    const TemporaryFolder folder;
    folder.write("here/eng.traineddata", "x");
    folder.write("above/tessdata/eng.traineddata", "x");
    {
        const EnvironmentScope chosen("TESSDATA_PREFIX", (folder / "here").string());
        EXPECT_EQ(TextRecognitionEngine::dataFolder(), folder / "here");
    }
    {
        const EnvironmentScope chosen("TESSDATA_PREFIX", (folder / "above").string());
        EXPECT_EQ(TextRecognitionEngine::dataFolder(), folder / "above/tessdata");
    }
    const EnvironmentScope none("TESSDATA_PREFIX", std::nullopt);
    EXPECT_TRUE(std::filesystem::exists(TextRecognitionEngine::dataFolder() / "eng.traineddata"));
}

TEST(TextRecognitionEngine, aFolderWithoutDataIsAFailureThatNamesIt)
{
    const TemporaryFolder folder;
    const EnvironmentScope chosen("TESSDATA_PREFIX", folder.path().string());
    try {
        (void)TextRecognitionEngine::read(whitePage(10, 10), english, std::nullopt, {});
        ADD_FAILURE() << "no failure";
    } catch (const PlatformError &error) {
        EXPECT_NE(std::string(error.what()).find(folder.path().string()), std::string::npos) << error.what();
    }
}

TEST(TextRecognitionEngine, damagedDataIsAFailure)
{
    const TemporaryFolder folder;
    folder.write("eng.traineddata", "x");
    const EnvironmentScope chosen("TESSDATA_PREFIX", folder.path().string());
    EXPECT_THROW((void)TextRecognitionEngine::read(whitePage(10, 10), english, std::nullopt, {}), PlatformError);
}

TEST(TextRecognitionEngine, aPictureWithoutTextHasNoLines)
{
    for (const auto &[width, height] : {std::pair{1, 1}, {3, 200}, {600, 400}, {0, 0}})
        EXPECT_EQ(TextRecognitionEngine::read(whitePage(width, height), english, std::nullopt, {}).size(), 0U);
}

TEST(TextRecognitionEngine, aStopBeforehandAndADeadlineInThePastEndIt)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW((void)TextRecognitionEngine::read(whitePage(600, 400), english, std::nullopt, source.get_token()),
        CancellationError);
    EXPECT_THROW((void)TextRecognitionEngine::read(whitePage(600, 400), english, std::chrono::steady_clock::now(), {}),
        PlatformError);
}
