#include "Engine/UnpackedPackage.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
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
