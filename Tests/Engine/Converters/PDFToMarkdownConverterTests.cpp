#include "Engine/Converters/PDFToMarkdownConverter.h"

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Support/Expect.h"
#include "Support/PDFBuilder.h"
#include "Support/Scopes.h"
#include "Support/StubRecognizer.h"
#include "Support/TemporaryFolder.h"

#include <condition_variable>
#include <gmock/gmock.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string enoughText = "Enough text for a page of its own";

/// The width of a test page in pixels, by which a stand-in tells pages apart: page N is 100 + N points wide.
std::string box(int number)
{
    return "/MediaBox [0 0 " + std::to_string(100 + number) + " 200]";
}

int pageOf(const Bitmap &image)
{
    return image.width / 3 - 100;
}

class PDFToMarkdownConverterTest : public ::testing::Test {
protected:
    using Fragments = std::vector<RecognizedFragment>;

    static std::shared_ptr<StubRecognizer> recognizer(StubRecognizer::Answer answer)
    {
        return std::make_shared<StubRecognizer>(std::move(answer));
    }

    static std::shared_ptr<StubRecognizer> pageNumbers()
    {
        return recognizer([](const Bitmap &image, const auto &, const auto &) {
            return StubRecognizer::stacked({"recognised " + std::to_string(pageOf(image))});
        });
    }

    static PDFBuilder blankPages(int count)
    {
        PDFBuilder builder;
        for (int number = 1; number <= count; ++number)
            builder.page("", box(number));
        return builder;
    }

    std::string markdownOf(const PDFBuilder &builder, const std::shared_ptr<const TextRecognizing> &recognizer,
        PDFToMarkdownConverter::Options options = {}, const std::stop_token &stop = {})
    {
        builder.write(input);
        PDFToMarkdownConverter(std::move(options), recognizer).convert(input, output, {pdf, markdown}, stop);
        return contentOf(output);
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;
    fs::path input = folder / "in.pdf";
    fs::path output = folder / "out.md";
};

} // namespace

TEST_F(PDFToMarkdownConverterTest, aTextLayerIsReadWithoutRecognition)
{
    const auto stub = pageNumbers();
    EXPECT_EQ(markdownOf(PDFBuilder().page(PDFBuilder::show("Heading", 20, 800, 24)
                             + PDFBuilder::show("A line of the body text", 20, 700)
                             + PDFBuilder::show("1. An item of a list", 20, 680)),
                  stub),
        "# Heading\n\nA line of the body text\n- An item of a list\n");
    EXPECT_THAT(stub->calls(), IsEmpty());
}

TEST_F(PDFToMarkdownConverterTest, aPageOf24CharactersIsReadOneOf23IsRecognised)
{
    PDFBuilder builder;
    builder.page(PDFBuilder::show("exactly twenty-four ones", 10, 100, 5), box(1));
    builder.page(PDFBuilder::show("exactly twenty-3 of one", 10, 100, 5), box(2));
    EXPECT_EQ(markdownOf(builder, pageNumbers()), "exactly twenty-four ones\n\nrecognised 2\n");
}

TEST_F(PDFToMarkdownConverterTest, pagesKeepTheirOrderWhateverFinishesFirst)
{
    PDFBuilder builder;
    builder.page("", box(1)).page(PDFBuilder::show(enoughText, 5, 100, 5), box(2)).page("", box(3)).page("", box(4));
    const auto stub = recognizer([](const Bitmap &image, const auto &, const auto &) {
        std::this_thread::sleep_for(pageOf(image) == 1 ? 60ms : 1ms);
        return StubRecognizer::stacked({"recognised " + std::to_string(pageOf(image))});
    });
    EXPECT_EQ(markdownOf(builder, stub), "recognised 1\n\n" + enoughText + "\n\nrecognised 3\n\nrecognised 4\n");
}

TEST_F(PDFToMarkdownConverterTest, pagesAreDrawnAtThreePixelsAPointForTheLanguagesAskedFor)
{
    const auto stub = pageNumbers();
    PDFToMarkdownConverter::Options options;
    options.recognitionLanguages = {"de-DE"};
    markdownOf(blankPages(1), stub, options);
    EXPECT_THAT(stub->calls(), ElementsAre(StubRecognizer::Call{303, 600, {"de-DE"}}));
}

TEST_F(PDFToMarkdownConverterTest, withoutAWishTheLanguageInForceComesFirst)
{
    const LanguageScope french(NolfaLanguage::fr);
    const auto stub = pageNumbers();
    markdownOf(blankPages(1), stub);
    EXPECT_THAT(stub->calls(), ElementsAre(StubRecognizer::Call{303, 600, {"fr-FR", "en-US"}}));
}

TEST_F(PDFToMarkdownConverterTest, atMostFourPagesAreRecognisedAtOnce)
{
    std::mutex mutex;
    std::condition_variable arrived;
    int waiting = 0;
    const auto stub = recognizer([&](const Bitmap &, const auto &, const auto &) {
        std::unique_lock lock(mutex);
        ++waiting;
        arrived.notify_all();
        arrived.wait_for(lock, 5s, [&] { return waiting >= 4; });
        return StubRecognizer::stacked({"text"});
    });
    markdownOf(blankPages(9), stub);
    EXPECT_EQ(stub->mostAtOnce(), 4);
    EXPECT_EQ(stub->calls().size(), 9U);
}

TEST_F(PDFToMarkdownConverterTest, aWidthBelowOneIsOne)
{
    for (const int width : {0, -3}) {
        const auto stub = pageNumbers();
        PDFToMarkdownConverter::Options options;
        options.maxConcurrentOCRPages = width;
        fs::remove(output);
        EXPECT_EQ(markdownOf(blankPages(3), stub, options), "recognised 1\n\nrecognised 2\n\nrecognised 3\n");
        EXPECT_EQ(stub->mostAtOnce(), 1);
        const std::vector<StubRecognizer::Call> calls = stub->calls();
        ASSERT_EQ(calls.size(), 3U);
        EXPECT_LT(calls[0].width, calls[1].width) << "in page order";
        EXPECT_LT(calls[1].width, calls[2].width);
    }
}

TEST_F(PDFToMarkdownConverterTest, aPageThatCannotBeReadLeavesItsMarker)
{
    const auto stub = recognizer([](const Bitmap &image, const auto &, const auto &) -> Fragments {
        if (pageOf(image) == 2)
            throw PlatformError("broken");
        return StubRecognizer::stacked({"recognised " + std::to_string(pageOf(image))});
    });
    EXPECT_EQ(markdownOf(blankPages(3), stub), "recognised 1\n\n_(page 2 could not be read)_\n\nrecognised 3\n");
    const LanguageScope french(NolfaLanguage::fr);
    fs::remove(output);
    EXPECT_EQ(markdownOf(blankPages(3), stub), "recognised 1\n\n_(page 2 illisible)_\n\nrecognised 3\n");
}

TEST_F(PDFToMarkdownConverterTest, whenEveryPageFailsTheMarkersAreTheText)
{
    const auto stub
        = recognizer([](const auto &, const auto &, const auto &) -> Fragments { throw PlatformError("broken"); });
    EXPECT_EQ(markdownOf(blankPages(2), stub), "_(page 1 could not be read)_\n\n_(page 2 could not be read)_\n");
}

TEST_F(PDFToMarkdownConverterTest, aPageThatTakesTooLongLeavesItsMarker)
{
    const auto stub = recognizer([](const auto &, const auto &, const std::stop_token &stop) -> Fragments {
        while (!stop.stop_requested())
            std::this_thread::sleep_for(1ms);
        throw CancellationError();
    });
    PDFToMarkdownConverter::Options options;
    options.perPageOCRTimeout = 0.05;
    EXPECT_EQ(markdownOf(blankPages(1), stub, options), "_(page 1 could not be read)_\n");
}

TEST_F(PDFToMarkdownConverterTest, aPageWithoutAreaIsEmptyAndLeavesNoMarker)
{
    PDFBuilder builder;
    builder.page("", "/MediaBox [0 0 0 0]").page(PDFBuilder::show(enoughText, 5, 100, 5), box(2));
    const auto stub = pageNumbers();
    EXPECT_EQ(markdownOf(builder, stub), enoughText + "\n");
    EXPECT_THAT(stub->calls(), IsEmpty());
}

TEST_F(PDFToMarkdownConverterTest, pageMarkersStandBeforeEveryPage)
{
    EXPECT_EQ(PDFToMarkdownConverter::pageMarker(7), "<!-- nolfa:page 7 -->");
    const auto stub = recognizer([](const Bitmap &image, const auto &, const auto &) {
        return pageOf(image) == 2 ? Fragments() : StubRecognizer::stacked({"text"});
    });
    PDFToMarkdownConverter::Options options;
    options.emitPageMarkers = true;
    EXPECT_EQ(markdownOf(blankPages(3), stub, options),
        "<!-- nolfa:page 1 -->\n\ntext\n\n<!-- nolfa:page 2 -->\n\n<!-- nolfa:page 3 -->\n\ntext\n");
}

TEST_F(PDFToMarkdownConverterTest, blankPagesAloneAreAnEmptyResultEvenWithMarkers)
{
    const auto nothing = recognizer([](const auto &, const auto &, const auto &) { return Fragments(); });
    for (const bool emitPageMarkers : {false, true}) {
        PDFToMarkdownConverter::Options options;
        options.emitPageMarkers = emitPageMarkers;
        expectError(ConversionError::emptyResult(pdf, markdown), [&] { markdownOf(blankPages(2), nothing, options); });
        EXPECT_FALSE(fs::exists(output));
    }
    expectError(ConversionError::emptyResult(pdf, markdown), [&] { markdownOf(PDFBuilder(), nothing); });
}

TEST_F(PDFToMarkdownConverterTest, whatIsNoPDFIsUnreadable)
{
    const PDFToMarkdownConverter converter({}, pageNumbers());
    const auto convert = [&](const fs::path &file) { converter.convert(file, output, {pdf, markdown}, {}); };
    expectError(ConversionError::unreadableInput(folder / "missing.pdf"), [&] { convert(folder / "missing.pdf"); });
    const fs::path text = folder.write("text.pdf", "no document");
    expectError(ConversionError::unreadableInput(text), [&] { convert(text); });
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(PDFToMarkdownConverterTest, aStopEndsTheRecognitionOfEveryPageAndWritesNothing)
{
    std::stop_source stop;
    std::atomic<int> begun = 0;
    const auto stub = recognizer([&](const auto &, const auto &, const std::stop_token &pageStop) -> Fragments {
        if (++begun == 4)
            stop.request_stop();
        while (!pageStop.stop_requested())
            std::this_thread::sleep_for(1ms);
        throw CancellationError();
    });
    EXPECT_THROW(markdownOf(blankPages(30), stub, {}, stop.get_token()), CancellationError);
    EXPECT_EQ(begun, 4) << "no further page begins";
    EXPECT_FALSE(fs::exists(output));
}

TEST_F(PDFToMarkdownConverterTest, theInputStaysAsItIs)
{
    const PDFBuilder builder = blankPages(2);
    markdownOf(builder, pageNumbers());
    EXPECT_EQ(contentOf(input), builder.bytes());
    EXPECT_THAT(folder.names(), ElementsAre("in.pdf", "out.md"));
}

TEST_F(PDFToMarkdownConverterTest, manyPagesAreReadOnAllProcessorsInOrder)
{
    PDFBuilder builder;
    std::string expected;
    for (int page = 1; page <= 300; ++page) {
        builder.textPage({"This is the text of page " + std::to_string(page)});
        expected += "This is the text of page " + std::to_string(page) + (page == 300 ? "\n" : "\n\n");
    }
    EXPECT_EQ(markdownOf(builder, pageNumbers()), expected);
}
