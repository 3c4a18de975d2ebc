#include "Engine/JPEGFile.h"

#include "Support/Pictures.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

TEST(JPEGFile, readsWhatTheFrameSays)
{
    for (const int components : {1, 3, 4}) {
        const std::optional<JPEGFile> file
            = JPEGFile::read(JPEGPicture{.width = 31, .height = 17, .components = components}.file());
        ASSERT_TRUE(file);
        EXPECT_EQ(file->width, 31);
        EXPECT_EQ(file->height, 17);
        EXPECT_EQ(file->components, components);
        EXPECT_EQ(file->bits, 8);
        EXPECT_EQ(file->scans, 1U);
        EXPECT_FALSE(file->isProgressive);
        EXPECT_FALSE(file->isPlainRGB);
        EXPECT_EQ(file->hasAdobeMarker, components == 4);
        EXPECT_EQ(file->orientation, 1);
    }
    const std::optional<JPEGFile> progressive = JPEGFile::read(JPEGPicture{.isProgressive = true}.file());
    ASSERT_TRUE(progressive);
    EXPECT_TRUE(progressive->isProgressive);
    EXPECT_GT(progressive->scans, 3U);
}

TEST(JPEGFile, readsTheOrientation)
{
    for (int orientation = 1; orientation <= 8; ++orientation)
        EXPECT_EQ(JPEGFile::read(JPEGPicture{.orientation = orientation}.file())->orientation, orientation);
    EXPECT_EQ(JPEGFile::read(JPEGPicture{.orientation = 9}.file())->orientation, 1);
}

TEST(JPEGFile, putsTheProfileTogether)
{
    const std::string profile = profileHeader("RGB ");
    EXPECT_EQ(JPEGFile::read(JPEGPicture{.profile = profile}.file())->profile, profile);
}

TEST(JPEGFile, theDataStartsBehindTheFirstScansHeader)
{
    const std::string file = JPEGPicture{}.file();
    const std::optional<JPEGFile> read = JPEGFile::read(file);
    const std::size_t scan = file.find("\xFF\xDA");
    ASSERT_NE(scan, std::string::npos);
    EXPECT_EQ(read->dataStart, scan + 2 + 12);
}

TEST(JPEGFile, dataThatEndsEarlyIsLeftToDecoders)
{
    const std::string file = JPEGPicture{.width = 200, .height = 200}.file();
    EXPECT_TRUE(JPEGFile::read(std::string_view(file).substr(0, file.size() - 500)));
}

TEST(JPEGFile, whatLacksAFrameOrAScanIsNone)
{
    const std::string file = JPEGPicture{}.file();
    const std::size_t frame = file.find("\xFF\xC0");
    const std::size_t scan = file.find("\xFF\xDA");
    for (const std::size_t size : {std::size_t{0}, std::size_t{2}, std::size_t{20}, frame, frame + 4, scan})
        EXPECT_FALSE(JPEGFile::read(std::string_view(file).substr(0, size))) << size;
    EXPECT_FALSE(JPEGFile::read("hello"));
    std::string flat = file;
    flat.replace(frame + 5, 2, std::string(2, '\0'));
    EXPECT_FALSE(JPEGFile::read(flat)) << "height 0";
}

TEST(JPEGFile, aTinyFileThatAsksForTooMuchIsABomb)
{
    std::string file = JPEGPicture{.isProgressive = true}.file();
    EXPECT_FALSE(JPEGFile::isBomb(file));
    const std::size_t frame = file.find("\xFF\xC2");
    file.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");
    EXPECT_TRUE(JPEGFile::isBomb(file)) << "65,500 by 65,500 kept until the last scan";
    std::string plain = JPEGPicture{}.file();
    plain.replace(plain.find("\xFF\xC0") + 5, 4, "\xFF\xDC\xFF\xDC");
    EXPECT_FALSE(JPEGFile::isBomb(plain)) << "goes by row by row";
}
