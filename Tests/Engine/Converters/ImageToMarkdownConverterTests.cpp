#include "Engine/Converters/ImageToMarkdownConverter.h"

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Support/Expect.h"
#include "Support/Pictures.h"
#include "Support/Scopes.h"
#include "Support/StubRecognizer.h"
#include "Support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using enum DocumentFormat;
namespace fs = std::filesystem;

namespace {

constexpr ConversionPair imageToMarkdown{image, markdown};

class ImageToMarkdown : public ::testing::Test {
protected:
    ImageToMarkdown() { folder.write("a.png", PNGPicture{}.file()); }

    void convert(std::shared_ptr<const TextRecognizing> recognizer, ImageToMarkdownConverter::Options options = {},
        std::stop_token stop = {})
    {
        ImageToMarkdownConverter(std::move(options), std::move(recognizer))
            .convert(folder / "a.png", folder / "a.md", imageToMarkdown, std::move(stop));
    }

    /// A recogniser that fails with this.
    template <typename Failure> static std::shared_ptr<const StubRecognizer> failing(Failure failure)
    {
        return std::make_shared<const StubRecognizer>(
            [failure](const Bitmap &, const std::vector<std::string> &,
                const std::stop_token &) -> std::vector<RecognizedFragment> { throw failure; });
    }

    TemporaryFolder folder;
};

std::shared_ptr<const StubRecognizer> reading(const std::vector<std::string> &lines)
{
    return std::make_shared<const StubRecognizer>(lines);
}

} // namespace

TEST_F(ImageToMarkdown, servesOnePairAndRefusesOthers)
{
    const ImageToMarkdownConverter converter({}, reading({"x"}));
    EXPECT_EQ(converter.pairs(), std::vector<ConversionPair>{imageToMarkdown});
    expectError(ConversionError::unsupportedPair(image, pdf), [&] {
        converter.convert(folder / "a.png", folder / "a.pdf", {image, pdf}, {});
    });
}

TEST_F(ImageToMarkdown, theLinesReadAndOneLineFeedAreWritten)
{
    convert(reading({"first line", "second line"}));
    EXPECT_EQ(contentOf(folder / "a.md"), "first line\nsecond line\n");
}

TEST_F(ImageToMarkdown, aPictureWithoutTextIsAnEmptyResult)
{
    for (const std::vector<std::string> &lines : {std::vector<std::string>{}, std::vector<std::string>{" ", "\t\n"}}) {
        expectError(ConversionError::emptyResult(image, markdown), [&] { convert(reading(lines)); });
        EXPECT_FALSE(fs::exists(folder / "a.md"));
    }
}

TEST_F(ImageToMarkdown, aDamagedPictureIsUnreadableAndReachesNoRecogniser)
{
    folder.write("a.png", PNGPicture{}.file().substr(0, 50));
    const auto recognizer = reading({"x"});
    expectError(ConversionError::unreadableInput(folder / "a.png"), [&] { convert(recognizer); });
    EXPECT_TRUE(recognizer->calls().empty());
}

TEST_F(ImageToMarkdown, thePictureGivenToRecognitionIsAtMost4000PixelsLong)
{
    folder.write("a.png", PNGPicture{.width = 8000, .height = 2000, .colourType = 0}.file());
    const auto recognizer = reading({"x"});
    convert(recognizer);
    ASSERT_EQ(recognizer->calls().size(), 1U);
    EXPECT_EQ(recognizer->calls().front().width, 4000);
    EXPECT_EQ(recognizer->calls().front().height, 1000);
}

TEST_F(ImageToMarkdown, theLanguagesAreTheOptionsOrThoseOfTheLanguageInForce)
{
    const auto recognizer = reading({"x"});
    {
        const LanguageScope french(NolfaLanguage::fr);
        convert(recognizer);
    }
    const LanguageScope english(NolfaLanguage::en);
    convert(recognizer);
    convert(recognizer, {.recognitionLanguages = std::vector<std::string>{"de-DE"}});
    const std::vector<StubRecognizer::Call> calls = recognizer->calls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].languages, (std::vector<std::string>{"fr-FR", "en-US"}));
    EXPECT_EQ(calls[1].languages, (std::vector<std::string>{"en-US", "fr-FR"}));
    EXPECT_EQ(calls[2].languages, (std::vector<std::string>{"de-DE"}));
}

TEST_F(ImageToMarkdown, aFailedRecognitionIsAToolFailureInBothLanguages)
{
    const auto failureIn = [this](NolfaLanguage language) {
        const LanguageScope scope(language);
        return expectCase<ConversionError::ToolFailure>([this] { convert(failing(PlatformError("no data"))); });
    };
    const ConversionError::ToolFailure english = failureIn(NolfaLanguage::en);
    EXPECT_EQ(english.tool, "Vision");
    EXPECT_EQ(english.detail, "no data");
    EXPECT_EQ(english.summary,
        "Text recognition could not read this picture. Try again, and check that the file opens in Preview.");
    EXPECT_EQ(failureIn(NolfaLanguage::fr).summary,
        "La reconnaissance de texte n’a pas pu lire cette image. Réessayez, et vérifiez que le fichier s’ouvre dans "
        "Aperçu.");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
}

TEST_F(ImageToMarkdown, aConversionErrorPassesUnchanged)
{
    expectError(
        ConversionError::engineFailure("mine"), [&] { convert(failing(ConversionError::engineFailure("mine"))); });
}

TEST_F(ImageToMarkdown, thePlatformsCancellationIsTheConversions)
{
    expectError(ConversionError::cancelled(), [&] { convert(failing(CancellationError())); });
}

TEST_F(ImageToMarkdown, anyFailureAfterAStopIsACancellation)
{
    std::stop_source source;
    const auto recognizer
        = std::make_shared<const StubRecognizer>([&source](const Bitmap &, const std::vector<std::string> &,
                                                     const std::stop_token &) -> std::vector<RecognizedFragment> {
              source.request_stop();
              throw PlatformError("stopped in the middle");
          });
    expectError(ConversionError::cancelled(), [&] { convert(recognizer, {}, source.get_token()); });
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
}

TEST_F(ImageToMarkdown, aRecognitionBeyondTheLimitIsTimedOutInTheLanguageInForce)
{
    const auto slow = std::make_shared<const StubRecognizer>(
        [](const Bitmap &, const std::vector<std::string> &, const std::stop_token &stop) {
            while (!stop.stop_requested())
                std::this_thread::sleep_for(1ms);
            return StubRecognizer::stacked({"late"});
        });
    {
        const LanguageScope scope(NolfaLanguage::en);
        expectError(ConversionError::timedOut("text recognition"), [&] { convert(slow, {.timeout = 0.05}); });
    }
    const LanguageScope scope(NolfaLanguage::fr);
    expectError(ConversionError::timedOut("reconnaissance de texte"), [&] { convert(slow, {.timeout = 0.05}); });
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
}
