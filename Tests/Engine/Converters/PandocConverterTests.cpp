#include "Engine/Converters/PandocConverter.h"

#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What a stand-in for pandoc says of how it was called: a line for its folder, then one for each argument.
std::string callOf(ConversionPair pair, const fs::path &input, const fs::path &output,
    const std::optional<fs::path> &referenceDocx = std::nullopt,
    const std::optional<fs::path> &referencePptx = std::nullopt)
{
    const PandocConverter converter({testProgram("report-call")}, referenceDocx, referencePptx);
    converter.convert(input, output, pair, {});
    return contentOf(output);
}

std::string lines(std::initializer_list<std::string> all)
{
    std::string text;
    for (const std::string &line : all)
        text += line + "\n";
    return text;
}

const std::string emptyArchive = "PK\x03\x04PK\x05\x06" + std::string(18, '\0');

PandocConverter scripted(const TemporaryFolder &folder, const std::string &script)
{
    const fs::path file = folder.write("tools/pandoc", "#!/bin/sh\n" + script + "\n");
    fs::permissions(file, fs::perms::owner_exec, fs::perm_options::add);
    return PandocConverter({file}, std::nullopt, std::nullopt);
}

} // namespace

TEST(PandocConverter, listsItsPairsInOrder)
{
    EXPECT_THAT(PandocConverter({"/x"}, std::nullopt, std::nullopt).pairs(),
        ElementsAre(ConversionPair{docx, markdown}, ConversionPair{markdown, docx}, ConversionPair{markdown, pptx}));
}

TEST(PandocConverter, refusesAnyOtherPair)
{
    const PandocConverter converter({"/nonexistent"}, std::nullopt, std::nullopt);
    expectError(ConversionError::unsupportedPair(docx, pptx), [&] { converter.convert("/a", "/b", {docx, pptx}, {}); });
}

TEST(PandocConverter, wordToMarkdownExtractsTheMediaBesideTheOutput)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("a b.docx", emptyArchive);
    fs::create_directory(folder / "out");
    const fs::path output = folder / "out/report.v2.md";
    EXPECT_EQ(callOf({docx, markdown}, input, output),
        lines({fs::current_path(), "-f", "docx", "-t", "gfm-raw_html", "--wrap=none", "--extract-media",
            folder / "out/report.v2-media", "-o", output, input}));
}

TEST(PandocConverter, markdownToOfficeRunsInTheTextsFolder)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("texts/a.md", "x");
    EXPECT_EQ(callOf({markdown, docx}, input, folder / "a.docx"),
        lines({folder / "texts", "-f", "gfm", "-t", "docx", "-o", folder / "a.docx", input}));
    EXPECT_EQ(callOf({markdown, pptx}, input, folder / "a.pptx"),
        lines({folder / "texts", "-f", "gfm", "-t", "pptx", "-o", folder / "a.pptx", input}));
}

TEST(PandocConverter, eachTargetTakesItsOwnReference)
{
    const TemporaryFolder folder;
    const fs::path input = folder.write("a.md", "x");
    EXPECT_EQ(callOf({markdown, docx}, input, folder / "a.docx", "/r.docx", "/r.pptx"),
        lines(
            {folder.path(), "-f", "gfm", "-t", "docx", "--reference-doc", "/r.docx", "-o", folder / "a.docx", input}));
    EXPECT_EQ(callOf({markdown, pptx}, input, folder / "a.pptx", "/r.docx", "/r.pptx"),
        lines(
            {folder.path(), "-f", "gfm", "-t", "pptx", "--reference-doc", "/r.pptx", "-o", folder / "a.pptx", input}));
}

TEST(PandocConverter, inputsThatCannotBeReadAreRefusedBeforePandocStarts)
{
    const TemporaryFolder folder;
    const PandocConverter converter({"/nonexistent"}, std::nullopt, std::nullopt);
    for (const ConversionPair pair : converter.pairs()) {
        expectError(ConversionError::unreadableInput(folder / "missing"),
            [&] { converter.convert(folder / "missing", folder / "out", pair, {}); });
        expectError(ConversionError::unreadableInput(folder.path()),
            [&] { converter.convert(folder.path(), folder / "out", pair, {}); });
    }
}

TEST(PandocConverter, aFailureLeavesNoHalfWrittenOutputAndNoMedia)
{
    const TemporaryFolder folder;
    // The output follows the ninth argument's "-o", the media folder is the seventh argument.
    const PandocConverter converter
        = scripted(folder, "mkdir -p \"$7/media\"; echo x > \"$7/media/a.png\"; echo half > \"$9\"; exit 1");
    const fs::path input = folder.write("in/a.docx", emptyArchive);
    fs::create_directory(folder / "out");
    EXPECT_THROW(converter.convert(input, folder / "out/a.md", {docx, markdown}, {}), ConversionError);
    EXPECT_THAT(namesIn(folder / "out"), IsEmpty());
}

TEST(PandocConverter, aFailureLeavesAMediaFolderThatWasThereBefore)
{
    const TemporaryFolder folder;
    const PandocConverter converter = scripted(folder, "echo half > \"$9\"; exit 1");
    const fs::path input = folder.write("in/a.docx", emptyArchive);
    folder.write("out/a-media/mine.png", "mine");
    EXPECT_THROW(converter.convert(input, folder / "out/a.md", {docx, markdown}, {}), ConversionError);
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("a-media"));
    EXPECT_EQ(contentOf(folder / "out/a-media/mine.png"), "mine");
}

TEST(PandocConverter, aStopLeavesNoHalfWrittenOutput)
{
    const TemporaryFolder folder;
    const PandocConverter converter = scripted(folder, "echo half > \"$6\"; exec sleep 60");
    const fs::path input = folder.write("a.md", "x");
    std::stop_source source;
    const std::jthread stopper([&] {
        EXPECT_TRUE(waitUntil(std::chrono::seconds(20), [&] { return fs::exists(folder / "a.docx"); }));
        source.request_stop();
    });
    expectError(ConversionError::cancelled(), [&] {
        converter.convert(input, folder / "a.docx", {markdown, docx}, source.get_token());
    });
    EXPECT_FALSE(fs::exists(folder / "a.docx"));
}

TEST(PandocConverter, whatPandocPrintsGoesNowhere)
{
    const TemporaryFolder folder;
    const PandocConverter converter = scripted(folder, "echo noise; echo warning >&2; echo done > \"$6\"");
    const fs::path input = folder.write("a.md", "x");
    converter.convert(input, folder / "a.docx", {markdown, docx}, {});
    EXPECT_EQ(contentOf(folder / "a.docx"), "done\n");
}
