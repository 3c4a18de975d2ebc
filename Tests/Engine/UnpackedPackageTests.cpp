#include "Engine/UnpackedPackage.h"

#include "Engine/ConversionError.h"
#include "Platform/File.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(UnpackedPackage, findsRegularFilesInside)
{
    const TemporaryFolder folder;
    folder.write("root/xl/a.xml", "");
    const UnpackedPackage package(folder / "root");
    EXPECT_EQ(package.part(folder / "root/xl/a.xml"), folder / "root/xl/a.xml");
    EXPECT_EQ(package.part(folder / "root/ppt/../xl/a.xml"), std::nullopt) << "through a folder that isn't there";
    EXPECT_EQ(package.part(folder / "root/xl/../xl/a.xml"), folder / "root/xl/a.xml");
    EXPECT_EQ(package.part(folder / "root/xl"), std::nullopt);
    EXPECT_EQ(package.part(folder / "root/xl/missing.xml"), std::nullopt);
}

TEST(UnpackedPackage, neverLeavesTheFolder)
{
    const TemporaryFolder folder;
    folder.write("outside.xml", "");
    folder.write("rootlike/a.xml", "");
    fs::create_directories(folder / "root/xl");
    const UnpackedPackage package(folder / "root");
    EXPECT_EQ(package.part(folder / "root/../outside.xml"), std::nullopt);
    EXPECT_EQ(package.part(folder / "root/xl/../../outside.xml"), std::nullopt);
    EXPECT_EQ(package.part(folder / "rootlike/a.xml"), std::nullopt);
    EXPECT_EQ(package.part("/etc/passwd"), std::nullopt);
}

TEST(UnpackedPackage, linksAreNoParts)
{
    const TemporaryFolder folder;
    folder.write("outside/a.xml", "");
    folder.write("root/real.xml", "");
    fs::create_symlink(folder / "outside/a.xml", folder / "root/file.xml");
    fs::create_symlink("real.xml", folder / "root/inner.xml");
    fs::create_directory_symlink(folder / "outside", folder / "root/folder");
    const UnpackedPackage package(folder / "root");
    EXPECT_EQ(package.part(folder / "root/file.xml"), std::nullopt);
    EXPECT_EQ(package.part(folder / "root/inner.xml"), std::nullopt);
    EXPECT_EQ(package.part(folder / "root/folder/a.xml"), std::nullopt);
    EXPECT_THAT(package.parts(folder / "root", "xml"), ElementsAre(folder / "root/real.xml"));
}

TEST(UnpackedPackage, listsByNameAndExactExtension)
{
    const TemporaryFolder folder;
    for (const char *name : {"sheet2.xml", "sheet10.xml", "é.xml", "z.xml", "a.XML", "b.xml.bak", "xml"})
        folder.write(std::string("root/") + name, "");
    fs::create_directory(folder / "root/folder.xml");
    const UnpackedPackage package(folder / "root");
    EXPECT_THAT(package.parts(folder / "root", "xml"),
        ElementsAre(
            folder / "root/sheet10.xml", folder / "root/sheet2.xml", folder / "root/z.xml", folder / "root/é.xml"));
    EXPECT_THAT(package.parts(folder / "root/missing", "xml"), IsEmpty());
}

namespace {

class UnpackedArchiveTest : public ::testing::Test {
protected:
    /// Our folders in the memory that all processes share; other tests may be making theirs.
    static std::vector<std::string> inMemory()
    {
        std::vector<std::string> names = namesIn("/dev/shm");
        std::erase_if(names, [](const std::string &name) { return !name.starts_with("nolfa-"); });
        return names;
    }

    void skipWithoutMemory()
    {
        std::error_code failure;
        const fs::space_info space = fs::space("/dev/shm", failure);
        if (failure || space.available < 512ULL << 20U || !File::isInMemory("/dev/shm"))
            GTEST_SKIP() << "no memory to unpack into";
    }

    TemporaryFolder folder;
    // Nobody orders a place.
    EnvironmentScope tmpdir{"TMPDIR", std::nullopt};
    EnvironmentScope tmp{"TMP", std::nullopt};
    EnvironmentScope temp{"TEMP", std::nullopt};
    EnvironmentScope tempdir{"TEMPDIR", std::nullopt};
};

} // namespace

TEST_F(UnpackedArchiveTest, aSmallOneLiesInMemoryForItsOwnerOnly)
{
    skipWithoutMemory();
    fs::path root;
    {
        const UnpackedPackage package
            = UnpackedPackage::unpack(ZipBuilder().add("xl/a.xml", "x").write(folder / "a.xlsx"), {});
        root = package.root();
        EXPECT_EQ(root.parent_path(), fs::canonical("/dev/shm"));
        EXPECT_EQ(fs::status(root).permissions(), fs::perms::owner_all);
        const std::optional<fs::path> part = package.part(root / "xl/a.xml");
        ASSERT_TRUE(part);
        EXPECT_EQ(File::contents(*part), "x");
    }
    EXPECT_FALSE(fs::exists(root));
}

TEST_F(UnpackedArchiveTest, aPlaceThatTheUserNamesIsRespected)
{
    const EnvironmentScope ordered("TMPDIR", folder.path());
    const UnpackedPackage package = UnpackedPackage::unpack(ZipBuilder().add("a", "x").write(folder / "a.xlsx"), {});
    EXPECT_EQ(package.root().parent_path(), folder.path());
}

TEST_F(UnpackedArchiveTest, aLargeOneLiesAmongTheTemporaryFiles)
{
    const ZipBuilder large = ZipBuilder().add("a", std::string((8U << 20U) + 1, 'x'));
    const UnpackedPackage package = UnpackedPackage::unpack(large.write(folder / "a.xlsx"), {});
    EXPECT_EQ(package.root().parent_path(), fs::canonical(fs::temp_directory_path()));
}

TEST_F(UnpackedArchiveTest, oneLargeFileAmongManyMovesAllToTheDisc)
{
    ZipBuilder builder;
    builder.add("large", std::string(2U << 20U, 'x'));
    for (int entry = 0; entry < 300; ++entry)
        builder.add("small" + std::to_string(entry), "x");
    const UnpackedPackage package = UnpackedPackage::unpack(builder.write(folder / "a.xlsx"), {});
    EXPECT_EQ(package.root().parent_path(), fs::canonical(fs::temp_directory_path()));
    EXPECT_TRUE(package.part(package.root() / "small299"));
    EXPECT_EQ(fs::file_size(package.root() / "large"), 2U << 20U);
}

TEST_F(UnpackedArchiveTest, whatIsRefusedLeavesNothingInMemory)
{
    const std::vector<std::string> before = inMemory();
    EXPECT_THROW(
        (void)UnpackedPackage::unpack(ZipBuilder().encrypted().add("a", "xxxxxxxxxxxxxxxx").write(folder / "a"), {}),
        ConversionError);
    EXPECT_THROW((void)UnpackedPackage::unpack(folder.write("b", "no archive"), {}), ConversionError);
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_THROW((void)UnpackedPackage::unpack(ZipBuilder().add("a", "x").write(folder / "c"), stopped.get_token()),
        ConversionError);
    // Other programs come and go there meanwhile: what is new must go away.
    for (const std::string &name : inMemory()) {
        const auto isGone = [&] { return !fs::exists("/dev/shm/" + name); };
        EXPECT_TRUE(std::ranges::binary_search(before, name) || waitUntil(std::chrono::seconds(10), isGone)) << name;
    }
}
