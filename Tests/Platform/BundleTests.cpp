#include "Platform/Bundle.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;

TEST(Bundle, findsResourcesByNameExtensionAndSubfolder)
{
    const TemporaryFolder folder;
    folder.write("reference.docx", "x");
    folder.write("bin/pandoc", "x");
    const Bundle bundle(folder.path());
    EXPECT_EQ(bundle.resource("reference", "docx"), folder / "reference.docx");
    EXPECT_EQ(bundle.resource("pandoc", {}, "bin"), folder / "bin/pandoc");
    EXPECT_EQ(bundle.resource("pandoc"), std::nullopt);
    EXPECT_EQ(bundle.resource("reference", "pptx"), std::nullopt);
}

TEST(Bundle, listsTheFilesOfAnExtensionByName)
{
    const TemporaryFolder folder;
    folder.write("Fonts/b.ttf", "x");
    folder.write("Fonts/a.ttf", "x");
    folder.write("Fonts/a.txt", "x");
    folder.write("Fonts/below/c.ttf", "x");
    folder.write("top.ttf", "x");
    const Bundle bundle(folder.path());
    using Files = std::vector<std::filesystem::path>;
    EXPECT_EQ(bundle.resources("ttf", "Fonts"), (Files{folder / "Fonts/a.ttf", folder / "Fonts/b.ttf"}));
    EXPECT_EQ(bundle.resources("ttf"), Files{folder / "top.ttf"});
    EXPECT_EQ(bundle.resources("ttf", "nowhere"), Files{});
}

TEST(Bundle, readsValuesOfInfo)
{
    const TemporaryFolder folder;
    folder.write("Info.json", R"({"name": "Nolfa", "number": 3})");
    const Bundle bundle(folder.path());
    EXPECT_EQ(bundle.value("name"), "Nolfa");
    EXPECT_EQ(bundle.value("number"), std::nullopt);
    EXPECT_EQ(bundle.value("other"), std::nullopt);
}

TEST(Bundle, withoutInfoHasNoValues)
{
    const TemporaryFolder folder;
    EXPECT_EQ(Bundle(folder.path()).value("name"), std::nullopt);
    folder.write("Info.json", "{ damaged");
    EXPECT_EQ(Bundle(folder.path()).value("name"), std::nullopt);
}

TEST(Bundle, ofThisProgramHoldsTheTools)
{
    const Bundle bundle = Bundle::main();
    EXPECT_TRUE(bundle.resource("pandoc", {}, "bin"));
    EXPECT_TRUE(bundle.resource("typst", {}, "bin"));
    EXPECT_TRUE(bundle.value("CFBundleShortVersionString"));
}
