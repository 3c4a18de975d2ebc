#include "Engine/OutputNaming.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <set>
#include <thread>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
namespace fs = std::filesystem;

TEST(OutputNaming, aFreeNameIsTakenAsItIs)
{
    const TemporaryFolder folder;
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report.md");
    EXPECT_TRUE(folder.names().empty()) << "nothing is created";
}

TEST(OutputNaming, takenNamesAreCountedFromTwo)
{
    const TemporaryFolder folder;
    folder.write("report.md", "");
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report 2.md");
    folder.write("report 2.md", "");
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report 3.md");
    folder.write("report 4.md", "");
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report 3.md");
}

TEST(OutputNaming, foldersAndDanglingLinksTakeNamesToo)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "report.md");
    fs::create_symlink("nowhere", folder / "report 2.md");
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report 3.md");
}

TEST(OutputNaming, aSiblingHasTheStemAndTheSuffixAsItStands)
{
    const TemporaryFolder folder;
    const TemporaryFolder other;
    EXPECT_EQ(OutputNaming::sibling(folder / "a.b.pdf", " (copy)", "pdf", std::nullopt), folder / "a.b (copy).pdf");
    EXPECT_EQ(OutputNaming::sibling(folder / "a.pdf", "-x", "md", other.path()), other / "a-x.md");
    folder.write("a-x.md", "");
    EXPECT_EQ(OutputNaming::sibling(folder / "a.pdf", "-x", "md", std::nullopt), folder / "a-x 2.md");
}

TEST(OutputNaming, aClaimedNameIsTakenUntilTheClaimGoes)
{
    const TemporaryFolder folder;
    {
        const OutputClaim first = OutputNaming::claim(folder.path(), "report", "md");
        const OutputClaim second = OutputNaming::claim(folder.path(), "report", "md");
        EXPECT_EQ(first.url(), folder / "report.md");
        EXPECT_EQ(second.url(), folder / "report 2.md");
        EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report 3.md");
    }
    EXPECT_EQ(OutputNaming::unique(folder.path(), "report", "md"), folder / "report.md");
}

TEST(OutputNaming, aClaimHoldsThroughAnotherSpellingOfTheFolder)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "real");
    fs::create_directory_symlink(folder / "real", folder / "link");
    const OutputClaim claim = OutputNaming::claim(folder / "real", "report", "md");
    EXPECT_EQ(OutputNaming::unique(folder / "link", "report", "md"), folder / "link/report 2.md");
    EXPECT_EQ(OutputNaming::unique(folder / "real/../real", "report", "md"), folder / "real/../real/report 2.md");
}

TEST(OutputNaming, manyThreadsNeverGetTheSameName)
{
    const TemporaryFolder folder;
    std::mutex mutex;
    std::vector<OutputClaim> claims;
    {
        std::vector<std::jthread> threads;
        for (int count = 0; count < 8; ++count) {
            threads.emplace_back([&] {
                for (int turn = 0; turn < 20; ++turn) {
                    OutputClaim claim = OutputNaming::claim(folder.path(), "x", "md");
                    const std::scoped_lock lock(mutex);
                    claims.push_back(std::move(claim));
                }
            });
        }
    }
    std::set<fs::path> names;
    for (const OutputClaim &claim : claims)
        names.insert(claim.url());
    EXPECT_EQ(names.size(), 160U);
}
