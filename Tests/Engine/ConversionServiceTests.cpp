#include "Engine/ConversionService.h"

#include "Engine/FileName.h"
#include "Support/Expect.h"
#include "Support/StubConverter.h"
#include "Support/TemporaryFolder.h"

#include <condition_variable>
#include <fstream>
#include <gmock/gmock.h>
#include <mutex>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

void writeText(const fs::path & /*input*/, const fs::path &output, ConversionPair /*pair*/, std::stop_token /*stop*/)
{
    std::ofstream(output) << "text";
}

std::shared_ptr<const Converter> converter(std::vector<ConversionPair> pairs, StubConverter::Work work = writeText)
{
    return std::make_shared<StubConverter>(std::move(pairs), std::move(work));
}

ConversionService serviceFor(std::vector<ConversionPair> pairs, StubConverter::Work work = writeText)
{
    return ConversionService({converter(std::move(pairs), std::move(work))});
}

} // namespace

TEST(ConversionService, writesBesideTheInputUnderItsStem)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("report.docx", "x");
    const fs::path output = serviceFor({{docx, markdown}}).convert(input, markdown, std::nullopt, {});
    EXPECT_EQ(output, folder / "report.md");
    EXPECT_EQ(contentOf(output), "text");
}

TEST(ConversionService, takenNamesAreCountedUpward)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("report.docx", "x");
    folder.write("report.md", "mine");
    folder.write("report 2.md", "mine too");
    EXPECT_EQ(serviceFor({{docx, markdown}}).convert(input, markdown, std::nullopt, {}), folder / "report 3.md");
    EXPECT_EQ(contentOf(folder / "report.md"), "mine");
    EXPECT_EQ(contentOf(folder / "report 2.md"), "mine too");
}

TEST(ConversionService, aNameKeepsItsOtherDots)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("a.b.docx", "x");
    EXPECT_EQ(serviceFor({{docx, markdown}}).convert(input, markdown, std::nullopt, {}), folder / "a.b.md");
}

TEST(ConversionService, writesIntoTheDirectoryThatWasChosen)
{
    const TemporaryFolder folder;
    const TemporaryFolder chosen;
    const fs::path input = folder.write("a.docx", "x");
    EXPECT_EQ(serviceFor({{docx, pdf}}).convert(input, pdf, chosen.path(), {}), chosen / "a.pdf");
    EXPECT_THAT(folder.names(), ElementsAre("a.docx"));
}

TEST(ConversionService, doesNotMakeTheDirectory)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("a.docx", "x");
    expectError(ConversionError::emptyResult(docx, pdf), [&] {
        (void)serviceFor({{docx, pdf}}).convert(input, pdf, folder / "missing", {});
    });
    EXPECT_FALSE(fs::exists(folder / "missing"));
}

TEST(ConversionService, relativePathsReachTheConverterAsAbsoluteOnes)
{
    const TemporaryFolder folder;
    folder.write("-v.docx", "x");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    fs::path seen;
    const fs::path output = serviceFor(
        {{docx, markdown}}, [&](const fs::path &input, const fs::path &to, ConversionPair, std::stop_token) {
            seen = input;
            std::ofstream(to) << "x";
        }).convert("-v.docx", markdown, std::nullopt, {});
    fs::current_path(before);
    EXPECT_EQ(seen, folder / "-v.docx");
    EXPECT_EQ(output, folder / "-v.md");
}

TEST(ConversionService, ofTwoConvertersForAPairTheLaterServes)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("a.docx", "x");
    const auto writing = [](const char *text) {
        return [text](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
            std::ofstream(output) << text;
        };
    };
    const ConversionService service({converter({{docx, markdown}, {docx, pdf}}, writing("first")),
        converter({{docx, markdown}}, writing("later"))});
    EXPECT_EQ(contentOf(service.convert(input, markdown, std::nullopt, {})), "later");
    EXPECT_EQ(contentOf(service.convert(input, pdf, std::nullopt, {})), "first");
}

TEST(ConversionService, targetsStandInOrderWithoutTheSourceAndWhatCannotBeMade)
{
    const ConversionService service = serviceFor(
        {{image, pdf}, {image, docx}, {image, markdown}, {image, image}, {image, gdoc}, {markdown, markdown}});
    EXPECT_THAT(service.supportedTargets(image), ElementsAre(markdown, docx, pdf));
    EXPECT_THAT(service.supportedTargets(markdown), IsEmpty());
    EXPECT_THAT(ConversionService({}).supportedTargets(docx), IsEmpty());
}

TEST(ConversionService, anUnknownExtensionIsUnreadable)
{
    const TemporaryFolder folder;
    for (const char *name : {"a.txt", "a", "a."}) {
        const fs::path input = folder / name;
        expectError(ConversionError::unreadableInput(input), [&] {
            (void)serviceFor({{docx, markdown}}).convert(input, markdown, std::nullopt, {});
        });
    }
}

TEST(ConversionService, aPairWithoutConverterIsUnsupportedAndTouchesNothing)
{
    const TemporaryFolder folder;
    expectError(ConversionError::unsupportedPair(docx, pdf), [&] {
        (void)serviceFor({{docx, markdown}}).convert(folder / "a.docx", pdf, std::nullopt, {});
    });
    expectError(ConversionError::unsupportedPair(docx, markdown),
        [&] { (void)ConversionService({}).convert(folder / "a.docx", markdown, std::nullopt, {}); });
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(ConversionService, aMissingFileOfAKnownExtensionReachesTheConverter)
{
    const TemporaryFolder folder;
    expectError(ConversionError::engineFailure("from the converter"), [&] {
        (void)serviceFor({{docx, markdown}}, [](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {
            throw ConversionError::engineFailure("from the converter");
        }).convert(folder / "missing.docx", markdown, std::nullopt, {});
    });
}

TEST(ConversionService, anythingThatAConverterThrowsPassesUnchanged)
{
    const TemporaryFolder folder;
    const ConversionService service
        = serviceFor({{docx, markdown}}, [](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {
              throw fs::filesystem_error("x", std::make_error_code(std::errc::no_space_on_device));
          });
    EXPECT_THROW((void)service.convert(folder / "a.docx", markdown, std::nullopt, {}), fs::filesystem_error);
}

TEST(ConversionService, aConverterThatLeavesNothingIsFoundOut)
{
    const TemporaryFolder folder;
    const auto convert = [&](StubConverter::Work work) {
        expectError(ConversionError::emptyResult(docx, markdown), [&] {
            (void)serviceFor({{docx, markdown}}, std::move(work))
                .convert(folder / "a.docx", markdown, std::nullopt, {});
        });
    };
    convert([](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {});
    convert([](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
        fs::create_directory(output);
    });
    convert(
        [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) { std::ofstream file(output); });
    EXPECT_THAT(folder.names(), ElementsAre("a 2.md", "a.md")) << "what failed verification stays";
}

TEST(ConversionService, aPackageFolderWithOneEntryPasses)
{
    const TemporaryFolder folder;
    const ConversionService service
        = serviceFor({{docx, pages}}, [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
              fs::create_directory(output);
              std::ofstream file(output / "Index.zip");
          });
    EXPECT_EQ(service.convert(folder / "a.docx", pages, std::nullopt, {}), folder / "a.pages");
}

TEST(ConversionService, theStopReachesTheConverter)
{
    const TemporaryFolder folder;
    std::stop_source source;
    (void)serviceFor({{docx, markdown}},
        [&](const fs::path &, const fs::path &output, ConversionPair, std::stop_token stop) {
            EXPECT_EQ(stop, source.get_token());
            std::ofstream(output) << "x";
        })
        .convert(folder / "a.docx", markdown, std::nullopt, source.get_token());
}

TEST(ConversionService, capabilityAnswersForPairsThatAreNotOnOffer)
{
    const ConversionService service({});
    EXPECT_EQ(service.capability(docx, pdf), Fidelity::capability(docx, pdf));
    EXPECT_TRUE(service.capability(docx, pdf));
    EXPECT_FALSE(service.capability(pptx, xlsx));
}

TEST(ConversionService, twoAtOnceNeverShareAnOutput)
{
    const TemporaryFolder folder;
    folder.write("one/a.docx", "1");
    folder.write("two/a.docx", "2");
    std::mutex mutex;
    std::condition_variable arrived;
    int running = 0;
    // Both have chosen their names before either writes.
    const ConversionService service = serviceFor(
        {{docx, markdown}}, [&](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
            std::unique_lock lock(mutex);
            ++running;
            arrived.notify_all();
            arrived.wait(lock, [&] { return running == 2; });
            lock.unlock();
            std::ofstream(output) << contentOf(input);
        });
    fs::path first;
    {
        const std::jthread other([&] { first = service.convert(folder / "one/a.docx", markdown, folder.path(), {}); });
        const fs::path second = service.convert(folder / "two/a.docx", markdown, folder.path(), {});
        EXPECT_EQ(contentOf(second), "2");
    }
    EXPECT_EQ(contentOf(first), "1");
    EXPECT_THAT(folder.names(), ElementsAre("a 2.md", "a.md", "one", "two"));
}
