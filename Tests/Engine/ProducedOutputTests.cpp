#include "Engine/ProducedOutput.h"

#include "Support/Expect.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;

TEST(ProducedOutput, nothingAndEmptyThingsAreNotUsable)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(ProducedOutput::isUsable(folder / "missing"));
    EXPECT_FALSE(ProducedOutput::isUsable(folder.write("empty", "")));
    fs::create_directory(folder / "hollow");
    EXPECT_FALSE(ProducedOutput::isUsable(folder / "hollow"));
}

TEST(ProducedOutput, aFileWithAByteAndAFolderWithAnEntryAre)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(ProducedOutput::isUsable(folder.write("file", "x")));
    folder.write("package/part", "");
    EXPECT_TRUE(ProducedOutput::isUsable(folder / "package"));
}

TEST(ProducedOutput, refusalNamesTheFormats)
{
    const TemporaryFolder folder;
    expectError(ConversionError::emptyResult(DocumentFormat::pdf, DocumentFormat::xlsx),
        [&] { ProducedOutput::require(folder / "missing", DocumentFormat::pdf, DocumentFormat::xlsx); });
}

TEST(UnfinishedOutput, removesWhatWasMadeSinceUnlessItIsKept)
{
    const TemporaryFolder folder;
    {
        UnfinishedOutput kept({folder / "kept"});
        folder.write("kept", "x");
        kept.keep();
        const UnfinishedOutput lost({folder / "lost", folder / "media"});
        folder.write("lost", "x");
        folder.write("media/picture", "x");
    }
    EXPECT_THAT(folder.names(), ElementsAre("kept"));
}

TEST(UnfinishedOutput, leavesWhatStoodThereBefore)
{
    const TemporaryFolder folder;
    folder.write("media/old", "x");
    {
        const UnfinishedOutput unfinished({folder / "media"});
        folder.write("media/new", "x");
    }
    EXPECT_THAT(namesIn(folder / "media"), ElementsAre("new", "old"));
}
