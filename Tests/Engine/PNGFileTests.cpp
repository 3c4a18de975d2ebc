#include "Engine/PNGFile.h"

#include "Platform/CancellationError.h"
#include "Support/Pictures.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

std::vector<std::string> rowsOf(const PNGFile &file)
{
    std::vector<std::string> rows;
    const bool isWhole
        = file.readRows([&](std::span<const std::uint8_t> row) { rows.emplace_back(row.begin(), row.end()); }, {});
    EXPECT_TRUE(isWhole);
    return rows;
}

/// Every kind of picture that the standard knows.
std::vector<PNGPicture> allKinds()
{
    std::vector<PNGPicture> kinds;
    for (const auto &[type, depths] : std::vector<std::pair<int, std::vector<int>>>{
             {0, {1, 2, 4, 8, 16}}, {2, {8, 16}}, {3, {1, 2, 4, 8}}, {4, {8, 16}}, {6, {8, 16}}}) {
        for (const int bits : depths) {
            PNGPicture picture{.width = 19, .height = 13, .bits = bits, .colourType = type};
            if (type == 3)
                picture.palette = std::string("abcdef");
            picture.sample = [bits](int column, int row, int channel) {
                const auto value = static_cast<unsigned int>(column * 37 + row * 101 + channel * 11);
                return value * value & ((1U << static_cast<unsigned int>(bits)) - 1U);
            };
            kinds.push_back(picture);
        }
    }
    return kinds;
}

} // namespace

TEST(PNGFile, readsTheHeaderAndTheChunks)
{
    PNGPicture picture{.width = 5, .height = 3, .bits = 2, .colourType = 3};
    picture.palette = "abcdef";
    picture.transparency = "\x7F";
    picture.otherChunks = {{"iCCP", std::string("name\0\0packed", 12)}, {"tEXt", "Title"}};
    const std::string bytes = picture.file();
    const std::optional<PNGFile> file = PNGFile::read(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->width, 5);
    EXPECT_EQ(file->height, 3);
    EXPECT_EQ(file->bits, 2);
    EXPECT_EQ(file->colours, PNGFile::Colours::palette);
    EXPECT_FALSE(file->isInterlaced);
    EXPECT_EQ(file->palette, "abcdef");
    EXPECT_EQ(file->transparency, "\x7F");
    EXPECT_EQ(file->profile, "packed");
    ASSERT_EQ(file->data.size(), 1U);
    EXPECT_EQ(file->data.front(), picture.data());
    EXPECT_EQ(file->bytesPerRow(), 2U);
}

TEST(PNGFile, rowsOfEveryKindComeOutAlikeInterlacedOrNotAndWithAnyFilter)
{
    for (PNGPicture &picture : allKinds()) {
        const std::string plain = picture.file();
        const std::vector<std::string> expected = rowsOf(*PNGFile::read(plain));
        ASSERT_EQ(expected.size(), 13U);
        for (const int filter : {1, 2}) {
            picture.filter = filter;
            EXPECT_EQ(rowsOf(*PNGFile::read(picture.file())), expected) << picture.colourType << ' ' << picture.bits;
        }
        picture.isInterlaced = true;
        const std::string interlaced = picture.file();
        EXPECT_EQ(rowsOf(*PNGFile::read(interlaced)), expected) << picture.colourType << ' ' << picture.bits;
        EXPECT_TRUE(PNGFile::read(interlaced)->isStreamWhole({}));
        EXPECT_TRUE(PNGFile::read(plain)->isStreamWhole({}));
    }
}

TEST(PNGFile, smallInterlacedPicturesLackSomePasses)
{
    for (int size = 1; size <= 9; ++size) {
        for (const auto &[width, height] : {std::pair{size, 1}, {1, size}, {size, size}}) {
            PNGPicture picture{.width = width, .height = height, .bits = 1, .colourType = 0};
            const std::vector<std::string> expected = rowsOf(*PNGFile::read(picture.file()));
            picture.isInterlaced = true;
            EXPECT_EQ(rowsOf(*PNGFile::read(picture.file())), expected) << width << " by " << height;
        }
    }
}

TEST(PNGFile, damageAnywhereIsNoticed)
{
    const std::string file = PNGPicture{.width = 20, .height = 20}.file();
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_FALSE(PNGFile::read(std::string_view(file).substr(0, size))) << size;
    for (std::size_t index = 0; index < file.size(); ++index) {
        std::string damaged = file;
        damaged[index] = static_cast<char>(damaged[index] ^ 0x10);
        // The last chunk's name may turn into another that isn't critical, or the like: the data is whole then.
        const std::optional<PNGFile> read = PNGFile::read(damaged);
        EXPECT_FALSE(read) << index;
    }
}

TEST(PNGFile, aStreamThatIsTooShortOrWrongIsNotWhole)
{
    const std::string longer = PNGPicture{.width = 20, .height = 21}.file();
    std::string tooShort = PNGPicture{.width = 20, .height = 20}.file();
    // The header of the higher picture before the data of the other.
    tooShort.replace(8, 25, longer.substr(8, 25));
    ASSERT_TRUE(PNGFile::read(tooShort));
    EXPECT_FALSE(PNGFile::read(tooShort)->isStreamWhole({}));
    EXPECT_FALSE(PNGFile::read(tooShort)->readRows([](std::span<const std::uint8_t>) {}, {}));
    const std::string badFilter = PNGPicture{.filter = 5}.file();
    EXPECT_FALSE(PNGFile::read(badFilter)->isStreamWhole({}));
    EXPECT_FALSE(PNGFile::read(badFilter)->readRows([](std::span<const std::uint8_t>) {}, {}));
}

TEST(PNGFile, kindsThatTheStandardDoesNotKnowAreNone)
{
    for (const auto &[type, bits] : {std::pair{2, 4}, {3, 16}, {1, 8}, {7, 8}, {0, 3}}) {
        PNGPicture picture;
        std::string file = picture.file();
        std::string header("\0\0\0\x04\0\0\0\x04", 8);
        header += static_cast<char>(bits);
        header += static_cast<char>(type);
        header += std::string(3, '\0');
        file.replace(8, 25, pngChunk("IHDR", header));
        EXPECT_FALSE(PNGFile::read(file)) << type << ' ' << bits;
    }
    EXPECT_FALSE(PNGFile::read(PNGPicture{.colourType = 3}.file())) << "no palette";
}

TEST(PNGFile, aDamagedChunkThatIsNotNeededIsLeftOut)
{
    PNGPicture picture;
    picture.otherChunks = {{"iCCP", std::string("name\0\0packed", 12)}};
    std::string file = picture.file();
    file[file.find("packed")] = 'q';
    const std::optional<PNGFile> read = PNGFile::read(file);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->profile, "");
}

TEST(PNGFile, aStopEndsTheReading)
{
    std::stop_source stop;
    stop.request_stop();
    const std::string bytes = PNGPicture{}.file();
    const std::optional<PNGFile> file = PNGFile::read(bytes);
    EXPECT_THROW((void)file->isStreamWhole(stop.get_token()), CancellationError);
    EXPECT_THROW((void)file->readRows([](std::span<const std::uint8_t>) {}, stop.get_token()), CancellationError);
}
