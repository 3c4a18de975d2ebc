#include "Engine/FileName.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(FileName, theExtensionFollowsTheLastDotOfTheLastComponent)
{
    EXPECT_EQ(FileName::pathExtension("/a.b/c.d.docx"), "docx");
    EXPECT_EQ(FileName::pathExtension("/a.b/c"), "");
    EXPECT_EQ(FileName::pathExtension("c."), "");
    EXPECT_EQ(FileName::pathExtension(".md"), "md");
    EXPECT_EQ(FileName::pathExtension("/a/letter.pages/"), "pages");
}

TEST(FileName, theStemIsWhatStandsBefore)
{
    EXPECT_EQ(FileName::stem("/x/a.b.docx"), "a.b");
    EXPECT_EQ(FileName::stem("/x/a"), "a");
    EXPECT_EQ(FileName::stem("/x/.md"), "");
    EXPECT_EQ(FileName::stem("/x/letter.pages/"), "letter");
}

TEST(FileName, whatIsShownIsUTF8)
{
    EXPECT_EQ(FileName::display("/x/été.md"), "été.md");
    EXPECT_EQ(FileName::display("/x/\xE9.md"), "\uFFFD.md");
}
