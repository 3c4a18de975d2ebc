#include "Engine/Scratch.h"

#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <stdexcept>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;

TEST(Scratch, makesAPrivateDirectoryAmongTheTemporaryOnes)
{
    const TemporaryFolder temporary;
    const EnvironmentScope environment("TMPDIR", temporary.path());
    const Scratch scratch;
    EXPECT_EQ(scratch.dir().parent_path(), temporary.path());
    EXPECT_THAT(
        scratch.dir().filename().string(), ::testing::MatchesRegex("nolfa-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
    EXPECT_EQ(fs::status(scratch.dir()).permissions(), fs::perms::owner_all);
}

TEST(Scratch, liesInAFolderOfAnothersChoice)
{
    const TemporaryFolder folder;
    const Scratch scratch(folder.path());
    EXPECT_EQ(scratch.dir().parent_path(), folder.path());
    EXPECT_EQ(fs::status(scratch.dir()).permissions(), fs::perms::owner_all);
}

TEST(Scratch, namesFilesWithoutMakingThem)
{
    const Scratch scratch;
    EXPECT_EQ(scratch.file("interim.md"), scratch.dir() / "interim.md");
    EXPECT_TRUE(fs::is_empty(scratch.dir()));
}

TEST(Scratch, isGoneWithTheObjectAndCleansUpTwice)
{
    fs::path dir;
    {
        Scratch scratch;
        dir = scratch.dir();
        std::ofstream(scratch.file("x")) << "x";
        scratch.cleanup();
        EXPECT_FALSE(fs::exists(dir));
    }
    EXPECT_FALSE(fs::exists(dir));
}

TEST(Scratch, withScratchHandsOnTheResult)
{
    fs::path dir;
    const int result = Scratch::withScratch([&](const Scratch &scratch) {
        dir = scratch.dir();
        EXPECT_TRUE(fs::exists(dir));
        return 7;
    });
    EXPECT_EQ(result, 7);
    EXPECT_FALSE(fs::exists(dir));
}

TEST(Scratch, withScratchHandsOnTheFailure)
{
    fs::path dir;
    EXPECT_THROW(Scratch::withScratch([&](const Scratch &scratch) {
        dir = scratch.dir();
        throw std::runtime_error("x");
    }),
        std::runtime_error);
    EXPECT_FALSE(fs::exists(dir));
}

TEST(Scratch, thatCannotBeMadeFailsWithTheFileSystemsErrorBeforeTheBody)
{
    const EnvironmentScope environment("TMPDIR", "/nonexistent/folder");
    bool ran = false;
    EXPECT_THROW(Scratch::withScratch([&](const Scratch &) { ran = true; }), fs::filesystem_error);
    EXPECT_FALSE(ran);
}
