#include "Platform/PictureSource.h"

#include "Support/Pictures.h"
#include "Support/Processes.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using Layout = Bitmap::Layout;

namespace {

std::optional<Bitmap> decoded(const std::string &file, int longest = 100000)
{
    const std::unique_ptr<PictureSource> source = PictureSource::open(file, {});
    return source ? source->thumbnail(longest) : std::nullopt;
}

} // namespace

TEST(PictureSource, keepsGreyColoursAndAlphaApart)
{
    PNGPicture picture{.width = 3, .height = 2, .bits = 8};
    picture.sample = [](int column, int row, int channel) {
        return static_cast<unsigned int>(column * 40 + row * 20 + channel * 3);
    };
    for (const auto &[type, layout] : {std::pair{0, Layout::grey}, {2, Layout::rgb}, {6, Layout::rgba}}) {
        picture.colourType = type;
        const std::optional<Bitmap> bitmap = decoded(picture.file());
        ASSERT_TRUE(bitmap) << type;
        EXPECT_EQ(bitmap->layout, layout);
        ASSERT_EQ(bitmap->pixels.size(), 3U * 2U * bitmap->channels());
        std::size_t index = 0;
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column) {
                for (int channel = 0; channel < static_cast<int>(bitmap->channels()); ++channel)
                    EXPECT_EQ(bitmap->pixels[index++], picture.sample(column, row, channel)) << type;
            }
        }
    }
}

TEST(PictureSource, opensTheKindsThatCamerasAndScannersWrite)
{
    const std::string sixteen = PNGPicture{.bits = 16, .colourType = 0}.file();
    const std::string palette
        = PNGPicture{.bits = 1, .colourType = 3, .palette = std::string("\0\0\0\xFF\xFF\xFF", 6)}.file();
    for (const std::string &file : {sixteen, palette, PNGPicture{.isInterlaced = true}.file(),
             JPEGPicture{.components = 1}.file(), JPEGPicture{.components = 3}.file(),
             JPEGPicture{.components = 4}.file(), JPEGPicture{.isProgressive = true}.file()})
        EXPECT_TRUE(decoded(file));
}

TEST(PictureSource, whatIsNoPictureIsAbsent)
{
    for (const std::string &file : {std::string(), std::string("hello"), std::string("%PDF-1.4\n"),
             std::string("#define a_width 1\n#define a_height 1\nstatic char a_bits[] = {1};\n"),
             std::string("P1 1 1 1")})
        EXPECT_EQ(PictureSource::open(file, {}), nullptr) << file;
}

TEST(PictureSource, onePixelIsEnough)
{
    const std::optional<Bitmap> bitmap = decoded(PNGPicture{.width = 1, .height = 1}.file());
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 1);
    EXPECT_EQ(bitmap->height, 1);
}

TEST(PictureSource, aGiantInATinyFileIsRefusedWithoutItsMemory)
{
    PNGPicture picture{.bits = 16, .colourType = 6};
    std::string file = picture.file();
    // The header claims 20,000 by 20,000; its checksum is put right.
    std::string header("\0\0\x4E\x20\0\0\x4E\x20\x10\x06\0\0\0", 13);
    file.replace(8, 25, pngChunk("IHDR", header));
    EXPECT_EQ(decoded(file), std::nullopt);
    EXPECT_EQ(decoded(file, 4000), std::nullopt);
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 1L << 20) << "kilobytes";
}

TEST(PictureSource, severalThreadsDecodeAtOnce)
{
    const std::string file = JPEGPicture{.width = 300, .height = 200}.file();
    const std::optional<Bitmap> expected = decoded(file, 150);
    std::vector<std::jthread> threads;
    std::array<bool, 4> same{};
    for (bool &one : same)
        threads.emplace_back([&] { one = decoded(file, 150) == expected; });
    threads.clear();
    for (const bool one : same)
        EXPECT_TRUE(one);
}

TEST(PictureSource, aStoppedSourceGivesNothing)
{
    std::stop_source stop;
    const std::string file = JPEGPicture{.width = 300, .height = 200}.file();
    const std::unique_ptr<PictureSource> source = PictureSource::open(file, stop.get_token());
    ASSERT_TRUE(source);
    stop.request_stop();
    EXPECT_EQ(source->thumbnail(100), std::nullopt);
}
