#include "Platform/File.h"

#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace nolfa;
namespace fs = std::filesystem;
using nolfa::testing::runProgram;
using nolfa::testing::TemporaryFolder;

TEST(File, contentsAreBytes)
{
    const TemporaryFolder folder;
    const std::string bytes("a\0b\r\n\xFF", 6);
    EXPECT_EQ(File::contents(folder.write("x", bytes)), bytes);
    EXPECT_EQ(File::contents(folder.write("empty", "")), "");
}

TEST(File, contentsOfWhatIsNoFileAreAbsent)
{
    const TemporaryFolder folder;
    EXPECT_EQ(File::contents(folder.path()), std::nullopt);
    EXPECT_EQ(File::contents(folder / "missing"), std::nullopt);
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(File::contents(folder / "fifo"), std::nullopt) << "and it must not wait for a writer";
}

TEST(File, aRangeIsAsMuchAsThereIs)
{
    const TemporaryFolder folder;
    const fs::path file = folder.write("x", "0123456789");
    EXPECT_EQ(File::range(file, 2, 3), "234");
    EXPECT_EQ(File::range(file, 8, 100), "89");
    EXPECT_EQ(File::range(file, 10, 1), "");
    EXPECT_EQ(File::range(file, 1U << 31U, 1), "");
    EXPECT_EQ(File::range(folder.path(), 0, 1), "");
    EXPECT_EQ(File::range(folder / "missing", 0, 1), "");
}

TEST(File, isInMemoryAsksForTheKindOfTheDisc)
{
    EXPECT_FALSE(File::isInMemory("/proc"));
    EXPECT_FALSE(File::isInMemory("/nonexistent"));
    EXPECT_EQ(
        File::isInMemory("/dev/shm"), runProgram("/usr/bin/stat", {"-f", "-c", "%T", "/dev/shm"}).stdout == "tmpfs\n");
}

TEST(File, isExecutableAsksForTheBitOfARegularFile)
{
    const TemporaryFolder folder;
    const fs::path file = folder.write("tool", "");
    EXPECT_FALSE(File::isExecutable(file));
    fs::permissions(file, fs::perms::owner_exec, fs::perm_options::add);
    EXPECT_TRUE(File::isExecutable(file));
    EXPECT_FALSE(File::isExecutable(folder.path()));
}

TEST(File, aNameIsTakenByAnythingEvenADanglingLink)
{
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder / "link");
    fs::create_directory(folder / "folder");
    EXPECT_TRUE(File::isNameTaken(folder / "link"));
    EXPECT_TRUE(File::isNameTaken(folder / "folder"));
    EXPECT_FALSE(File::isNameTaken(folder / "free"));
}

TEST(File, aPrivateFolderIsForItsOwnerAlone)
{
    const TemporaryFolder folder;
    File::makePrivateFolder(folder / "a/b");
    EXPECT_EQ(fs::status(folder / "a/b").permissions(), fs::perms::owner_all);
    EXPECT_THROW(File::makePrivateFolder(folder / "a/b"), fs::filesystem_error);
}

TEST(File, removesFoldersThatWereClosed)
{
    const TemporaryFolder folder;
    folder.write("closed/inner/file", "x");
    fs::permissions(folder / "closed/inner", fs::perms::none);
    fs::permissions(folder / "closed", fs::perms::owner_read);
    File::removeFolder(folder / "closed");
    EXPECT_FALSE(fs::exists(folder / "closed"));
}

TEST(File, removalDoesNotFollowLinks)
{
    const TemporaryFolder folder;
    folder.write("kept/file", "x");
    fs::create_directory(folder / "gone");
    fs::create_directory_symlink(folder / "kept", folder / "gone/link");
    File::removeFolder(folder / "gone");
    EXPECT_TRUE(fs::exists(folder / "kept/file"));
    EXPECT_FALSE(fs::exists(folder / "gone"));
}
