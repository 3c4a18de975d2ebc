#include "Engine/MediaLinks.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using nolfa::testing::contentOf;
using nolfa::testing::TemporaryFolder;
namespace fs = std::filesystem;

TEST(MediaLinks, destinationsEncodeWhatWouldEndOrChangeThem)
{
    EXPECT_EQ(MediaLinks::destination("/a/été-media/image1.png"), "/a/été-media/image1.png");
    EXPECT_EQ(MediaLinks::destination("a b(c)"), "a%20b%28c%29");
    EXPECT_EQ(MediaLinks::destination("100% #1?"), "100%25%20%231%3F");
    EXPECT_EQ(MediaLinks::destination("l\nf\t\x7F"), "l%0Af%09%7F");
    EXPECT_EQ(MediaLinks::destination("caf\xE9\xFF"), "caf%E9%FF");
    EXPECT_EQ(MediaLinks::destination(""), "");
}

TEST(MediaLinks, repairsLinksToFilesOfTheFolderOnly)
{
    const TemporaryFolder folder;
    const std::string media = (folder / "a b-media").string();
    folder.write("a b-media/media/image1.png", "x");
    folder.write("a b-media/media/image1.png (2).png", "x");
    const fs::path text = folder.write("a b.md",
        "![](" + media + "/media/image1.png) ![x](" + media
            + "/media/image1.png (2).png \"title\")\n"
              "[![]("
            + media
            + "/media/image1.png)](https://example.org)\n"
              "`"
            + media + "/media/image1.png` ![](" + media + "/media/other.png) [](");
    MediaLinks::repair(text, media);
    const std::string right = (folder / "a%20b-media").string();
    EXPECT_EQ(contentOf(text),
        "![](" + right + "/media/image1.png) ![x](" + right
            + "/media/image1.png%20%282%29.png \"title\")\n"
              "[![]("
            + right
            + "/media/image1.png)](https://example.org)\n"
              "`"
            + media + "/media/image1.png` ![](" + media + "/media/other.png) [](");
}

TEST(MediaLinks, leavesATextAloneWhoseLinksAreRight)
{
    const TemporaryFolder folder;
    folder.write("a-media/image1.png", "x");
    const fs::path text = folder.write("a.md", "![](" + (folder / "a-media/image1.png").string() + ")");
    fs::last_write_time(text, fs::file_time_type());
    MediaLinks::repair(text, folder / "a-media");
    MediaLinks::repair(text, folder / "missing-media");
    EXPECT_EQ(fs::last_write_time(text), fs::file_time_type());
}
