#include "Engine/ImageFile.h"

#include "Platform/CancellationError.h"
#include "Support/Expect.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;

namespace {

/// A source that does what the test says, and remembers what it was asked for.
class StubSource : public PictureSource {
public:
    std::optional<Dimensions> size;
    std::optional<Bitmap> small;
    std::optional<Bitmap> full;
    std::vector<int> wanted; ///< sizes of thumbnails; 0 for the full picture

    std::optional<Dimensions> pixelSize() override { return size; }
    std::optional<Bitmap> thumbnail(int longest) override
    {
        wanted.push_back(longest);
        return small;
    }
    std::optional<Bitmap> fullPicture() override
    {
        wanted.push_back(0);
        return full;
    }
};

Bitmap bitmapOf(int width)
{
    return {width, 1, Bitmap::Layout::grey, std::vector<std::uint8_t>(static_cast<std::size_t>(width))};
}

/// The grey of a picture's four corners, from the top left by rows.
std::vector<int> corners(const Bitmap &bitmap)
{
    const auto at = [&bitmap](int column, int row) {
        return bitmap.pixels.at(static_cast<std::size_t>(row) * bitmap.bytesPerRow()
            + static_cast<std::size_t>(column) * bitmap.channels());
    };
    const int right = bitmap.width - 3;
    const int bottom = bitmap.height - 3;
    std::vector<int> result;
    for (const auto &[column, row] : {std::pair{2, 2}, {right, 2}, {2, bottom}, {right, bottom}})
        result.push_back((at(column, row) + 20) / 40);
    return result;
}

/// 48 by 32 with a grey of its own for each quarter: 0, 1, 2 and 3 times 40, by rows.
JPEGPicture quarters(int orientation)
{
    JPEGPicture picture{.width = 48, .height = 32, .components = 1, .orientation = orientation};
    picture.sample = [](int column, int row, int) { return (column < 24 ? 0U : 40U) + (row < 16 ? 0U : 80U); };
    return picture;
}

} // namespace

TEST(ImageFile, whatIsNoPictureIsUnreadable)
{
    const TemporaryFolder folder;
    const fs::path text = folder.write("a.png", "not a picture");
    const fs::path empty = folder.write("b.jpg", "");
    for (const fs::path &file : {text, empty, folder / "missing.png", folder.path()})
        expectError(ConversionError::unreadableInput(file), [&] { (void)ImageFile::load(file, 4000, {}); });
}

TEST(ImageFile, aLongPictureIsDecodedToTheLimitAndAShortOneStays)
{
    const TemporaryFolder folder;
    const auto load = [&](int width, int height, std::optional<int> limit) {
        const fs::path file
            = folder.write("a.png", PNGPicture{.width = width, .height = height, .colourType = 0}.file());
        const Bitmap bitmap = ImageFile::load(file, limit, {});
        return std::pair(bitmap.width, bitmap.height);
    };
    EXPECT_EQ(load(8000, 2000, 4000), std::pair(4000, 1000));
    EXPECT_EQ(load(800, 200, 4000), std::pair(800, 200));
    EXPECT_EQ(load(800, 200, std::nullopt), std::pair(800, 200));
    EXPECT_EQ(load(5000, 1, 4000), std::pair(4000, 1));
}

TEST(ImageFile, allEightOrientationsAreApplied)
{
    const std::vector<std::vector<int>> expected{
        {0, 1, 2, 3}, {1, 0, 3, 2}, {3, 2, 1, 0}, {2, 3, 0, 1}, {0, 2, 1, 3}, {2, 0, 3, 1}, {3, 1, 2, 0}, {1, 3, 0, 2}};
    const TemporaryFolder folder;
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const fs::path file = folder.write("a.jpg", quarters(orientation).file());
        for (const std::optional<int> limit : {std::optional<int>(), std::optional(24)}) {
            const Bitmap bitmap = ImageFile::load(file, limit, {});
            EXPECT_EQ(corners(bitmap), expected.at(static_cast<std::size_t>(orientation - 1))) << orientation;
            EXPECT_EQ(bitmap.width > bitmap.height, orientation <= 4) << orientation;
            EXPECT_EQ(std::max(bitmap.width, bitmap.height), limit.value_or(48)) << orientation;
        }
    }
}

TEST(ImageFile, aPictureWithoutASizeGoesToTheFullDecoder)
{
    StubSource source;
    source.full = bitmapOf(7);
    EXPECT_EQ(ImageFile::loadSync(source, "a.png", std::nullopt), bitmapOf(7));
    EXPECT_EQ(source.wanted, (std::vector<int>{0}));
}

TEST(ImageFile, aPictureWithoutASizeIsDecodedToTheLimitWhenThereIsOne)
{
    StubSource source;
    source.small = bitmapOf(5);
    EXPECT_EQ(ImageFile::loadSync(source, "a.png", 4000), bitmapOf(5));
    EXPECT_EQ(source.wanted, (std::vector<int>{4000}));
}

TEST(ImageFile, theSizeAskedForIsNeverAboveThePicturesOwn)
{
    StubSource source;
    source.size = PictureSource::Dimensions{300, 500};
    source.small = bitmapOf(5);
    (void)ImageFile::loadSync(source, "a.png", 4000);
    (void)ImageFile::loadSync(source, "a.png", 400);
    (void)ImageFile::loadSync(source, "a.png", std::nullopt);
    EXPECT_EQ(source.wanted, (std::vector<int>{500, 400, 500}));
}

TEST(ImageFile, whereTheThumbnailFailsTheFullDecoderIsAskedAndThenThePictureIsUnreadable)
{
    StubSource source;
    source.size = PictureSource::Dimensions{300, 500};
    source.full = bitmapOf(7);
    EXPECT_EQ(ImageFile::loadSync(source, "a.png", 400), bitmapOf(7));
    source.full.reset();
    expectError(ConversionError::unreadableInput("a.png"), [&] { (void)ImageFile::loadSync(source, "a.png", 400); });
}

TEST(ImageFile, aLimitOfNothingGoesToTheFullDecoder)
{
    StubSource source;
    source.size = PictureSource::Dimensions{300, 500};
    source.full = bitmapOf(7);
    EXPECT_EQ(ImageFile::loadSync(source, "a.png", 0), bitmapOf(7));
    EXPECT_EQ(source.wanted, (std::vector<int>{0}));
}

TEST(ImageFile, aWrongExtensionDoesNotMatter)
{
    const TemporaryFolder folder;
    EXPECT_EQ(ImageFile::load(folder.write("a.jpg", PNGPicture{}.file()), 4000, {}).width, 4);
    EXPECT_EQ(ImageFile::load(folder.write("a.png", JPEGPicture{}.file()), 4000, {}).width, 16);
}

TEST(ImageFile, aTruncatedPNGIsUnreadableAndATruncatedJPEGIsWhatIsLeftOfIt)
{
    const TemporaryFolder folder;
    const std::string png = PNGPicture{.width = 300, .height = 300}.file();
    const std::string jpeg = JPEGPicture{.width = 300, .height = 300}.file();
    const fs::path damaged = folder.write("a.png", png.substr(0, png.size() / 2));
    ::testing::internal::CaptureStderr();
    expectError(ConversionError::unreadableInput(damaged), [&] { (void)ImageFile::load(damaged, 4000, {}); });
    EXPECT_EQ(ImageFile::load(folder.write("a.jpg", jpeg.substr(0, jpeg.size() / 2)), 4000, {}).width, 300);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "decoders keep their complaints to themselves";
}

TEST(ImageFile, aBombIsUnreadable)
{
    const TemporaryFolder folder;
    std::string bomb = JPEGPicture{.isProgressive = true}.file();
    bomb.replace(bomb.find("\xFF\xC2") + 5, 4, "\xFF\xDC\xFF\xDC");
    const fs::path file = folder.write("a.jpg", bomb);
    expectError(ConversionError::unreadableInput(file), [&] { (void)ImageFile::load(file, 4000, {}); });
}

TEST(ImageFile, aStopIsNoDamage)
{
    const TemporaryFolder folder;
    const fs::path file = folder.write("a.jpg", JPEGPicture{}.file());
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW((void)ImageFile::load(file, 4000, stop.get_token()), CancellationError);
}
