#include "Engine/Converters/ChainedConverter.h"

#include "Support/Expect.h"
#include "Support/Scopes.h"
#include "Support/StubConverter.h"
#include "Support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A chain from PDF to Excel whose legs do what a test says, with a temporary directory of its own.
class ChainedConverterTest : public ::testing::Test {
protected:
    void convert(ConversionPair pair = {pdf, xlsx})
    {
        const auto leg = [this](StubConverter::Work &work) {
            return std::make_shared<StubConverter>(std::vector<ConversionPair>{},
                [this, &work](
                    const fs::path &input, const fs::path &output, ConversionPair legPair, std::stop_token stop) {
                    pairs.push_back(legPair);
                    work(input, output, legPair, stop);
                });
        };
        const ChainedConverter chain(pdf, xlsx, markdown, leg(into), leg(outOf));
        chain.convert(folder / "in.pdf", folder / "out.xlsx", pair, source.get_token());
    }

    void TearDown() override { EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch is left"; }

    static void write(const fs::path &file, const char *text) { std::ofstream(file) << text; }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
    std::stop_source source;
    std::vector<ConversionPair> pairs;
    StubConverter::Work into
        = [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) { write(output, "text"); };
    StubConverter::Work outOf = into;
};

} // namespace

TEST_F(ChainedConverterTest, runsBothLegsThroughAnInterimFile)
{
    fs::path interim;
    into = [&](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
        EXPECT_EQ(input, folder / "in.pdf");
        interim = output;
        write(output, "hub");
    };
    outOf = [&](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
        EXPECT_EQ(input, interim);
        EXPECT_EQ(contentOf(input), "hub");
        write(output, "done");
    };
    convert();
    EXPECT_EQ(interim.filename(), "interim.md");
    EXPECT_EQ(interim.parent_path().parent_path(), temporary.path());
    EXPECT_EQ(contentOf(folder / "out.xlsx"), "done");
    EXPECT_THAT(pairs, ElementsAre(ConversionPair{pdf, markdown}, ConversionPair{markdown, xlsx}));
}

TEST_F(ChainedConverterTest, mediaBesideTheInterimFileLiveForTheSecondLeg)
{
    into = [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
        fs::create_directories(output.parent_path() / "interim-media/media");
        write(output, "hub");
        write(output.parent_path() / "interim-media/media/picture.png", "x");
    };
    outOf = [](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
        EXPECT_TRUE(fs::exists(input.parent_path() / "interim-media/media/picture.png"));
        write(output, "done");
    };
    convert();
}

TEST_F(ChainedConverterTest, anEmptyInterimFileIsTheFirstLegsFault)
{
    into = [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) { write(output, ""); };
    expectError(ConversionError::emptyResult(pdf, markdown), [&] { convert(); });
    EXPECT_EQ(pairs.size(), 1U) << "the second leg never runs";
}

TEST_F(ChainedConverterTest, aMissingInterimFileIsTheFirstLegsFault)
{
    into = [](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {};
    expectError(ConversionError::emptyResult(pdf, markdown), [&] { convert(); });
}

TEST_F(ChainedConverterTest, anEmptyOutputIsTheSecondLegsFaultAndStays)
{
    outOf = [](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) { write(output, ""); };
    expectError(ConversionError::emptyResult(markdown, xlsx), [&] { convert(); });
    EXPECT_TRUE(fs::exists(folder / "out.xlsx"));
}

TEST_F(ChainedConverterTest, aLegsFailurePassesUnchanged)
{
    into = [](const fs::path &input, const fs::path &, ConversionPair, std::stop_token) {
        throw ConversionError::passwordProtected(input);
    };
    expectError(ConversionError::passwordProtected(folder / "in.pdf"), [&] { convert(); });
    into = outOf;
    outOf = [](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {
        throw ConversionError::timedOut("zip");
    };
    expectError(ConversionError::timedOut("zip"), [&] { convert(); });
}

TEST_F(ChainedConverterTest, cancelledBeforeTheStartRunsNothing)
{
    source.request_stop();
    expectError(ConversionError::cancelled(), [&] { convert(); });
    EXPECT_THAT(pairs, IsEmpty());
}

TEST_F(ChainedConverterTest, cancelledDuringAFirstLegThatDoesNotNoticeNeverStartsTheSecond)
{
    into = [&](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
        source.request_stop();
        write(output, "text");
    };
    expectError(ConversionError::cancelled(), [&] { convert(); });
    EXPECT_EQ(pairs.size(), 1U);
}

TEST_F(ChainedConverterTest, theStopReachesBothLegs)
{
    const auto check = [&](const fs::path &, const fs::path &output, ConversionPair, const std::stop_token &stop) {
        EXPECT_EQ(stop, source.get_token());
        write(output, "text");
    };
    into = check;
    outOf = check;
    convert();
}

TEST_F(ChainedConverterTest, refusesAnyOtherPair)
{
    expectError(ConversionError::unsupportedPair(xlsx, pdf), [&] { convert({xlsx, pdf}); });
    expectError(ConversionError::unsupportedPair(pdf, markdown), [&] { convert({pdf, markdown}); });
    EXPECT_THAT(pairs, IsEmpty());
}

TEST_F(ChainedConverterTest, withoutScratchFailsWithTheFileSystemsError)
{
    const EnvironmentScope nowhere("TMPDIR", "/nonexistent/folder");
    EXPECT_THROW(convert(), fs::filesystem_error);
    EXPECT_THAT(pairs, IsEmpty());
}

TEST(ChainedConverter, servesOnePairInOneDirection)
{
    const ChainedConverter chain(docx, pptx, markdown, nullptr, nullptr);
    EXPECT_THAT(chain.pairs(), ElementsAre(ConversionPair{docx, pptx}));
}
