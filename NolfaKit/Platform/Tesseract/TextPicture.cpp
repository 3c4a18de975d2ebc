#include "Platform/Tesseract/TextPicture.h"

#include "Platform/PlatformError.h"

#include <algorithm>
#include <vector>

namespace nolfa {

namespace {

constexpr unsigned int white = 255;

/// Luma of a pixel on white paper, by the weights of ITU-R BT.601 in 256ths.
template <Bitmap::Layout layout> unsigned int luma(const std::uint8_t *pixel)
{
    if constexpr (layout == Bitmap::Layout::grey)
        return *pixel;
    constexpr unsigned int red = 77;
    constexpr unsigned int green = 150;
    constexpr unsigned int blue = 29;
    const unsigned int value = (red * pixel[0] + green * pixel[1] + blue * pixel[2]) >> 8U;
    if constexpr (layout == Bitmap::Layout::rgb)
        return value;
    const unsigned int alpha = pixel[3];
    return (value * alpha + white * (white - alpha)) / white;
}

/// Straight into Leptonica's layout: four pixels a word, the first in its highest byte.
template <Bitmap::Layout layout> void copyRow(const std::uint8_t *from, int width, l_uint32 *to)
{
    constexpr int pixelsPerWord = 4;
    constexpr auto channels = static_cast<std::ptrdiff_t>(layout);
    for (int column = 0; column < width; column += pixelsPerWord) {
        l_uint32 word = 0;
        for (int index = 0; index < pixelsPerWord; ++index) {
            const bool isInside = column + index < width;
            word = word << 8U | (isInside ? luma<layout>(from) : white);
            from += isInside ? channels : 0;
        }
        *to++ = word;
    }
}

/// Grey is all that recognition looks at, and a quarter of what colours would take.
PixHandle grey(const Bitmap &image)
{
    constexpr int depth = 8;
    PixHandle picture(pixCreateNoInit(image.width, image.height, depth));
    if (!picture)
        throw PlatformError("no memory for the picture");
    const auto copy = image.layout == Bitmap::Layout::grey ? copyRow<Bitmap::Layout::grey>
        : image.layout == Bitmap::Layout::rgb              ? copyRow<Bitmap::Layout::rgb>
                                                           : copyRow<Bitmap::Layout::rgba>;
    const l_int32 wordsPerRow = pixGetWpl(picture.get());
    for (int row = 0; row < image.height; ++row) {
        copy(image.pixels.data() + static_cast<std::size_t>(row) * image.bytesPerRow(), image.width,
            pixGetData(picture.get()) + static_cast<std::ptrdiff_t>(row) * wordsPerRow);
    }
    return picture;
}

/// The height of small letters, in pixels; 0 when the picture holds too few shapes to tell.
int letterHeight(Pix *picture)
{
    constexpr int middleGrey = 128;
    constexpr int neighbours = 8;
    constexpr int leastHeight = 5; // dots and dirt
    constexpr int leastWidth = 2;
    constexpr std::size_t leastCount = 50;
    struct BoxesDestroyer {
        void operator()(Boxa *boxes) const { boxaDestroy(&boxes); }
    };
    const PixHandle shapes(pixThresholdToBinary(picture, middleGrey));
    const std::unique_ptr<Boxa, BoxesDestroyer> boxes(shapes ? pixConnCompBB(shapes.get(), neighbours) : nullptr);
    std::vector<int> heights;
    for (int index = 0; boxes && index < boxaGetCount(boxes.get()); ++index) {
        int width = 0;
        int height = 0;
        boxaGetBoxGeometry(boxes.get(), index, nullptr, nullptr, &width, &height);
        if (width >= leastWidth && height >= leastHeight)
            heights.push_back(height);
    }
    if (heights.size() < leastCount)
        return 0;
    // A quarter of the way up: on a page with print in two sizes the smaller one decides.
    const auto quarter = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 4);
    std::nth_element(heights.begin(), quarter, heights.end());
    return *quarter;
}

} // namespace

PixHandle TextPicture::make(const Bitmap &image)
{
    // Measured: letters of this height are read fastest, and with the fewest errors.
    constexpr float bestHeight = 12;
    constexpr float worthScaling = 15;
    constexpr float leastScale = 0.2F;
    // Below it, Leptonica's way to scale by averages is the right one.
    constexpr float largestScaleByArea = 0.7F;
    PixHandle picture = grey(image);
    const auto height = static_cast<float>(letterHeight(picture.get()));
    if (height <= worthScaling)
        return picture;
    const float scale = std::max(bestHeight / height, leastScale);
    PixHandle scaled(scale < largestScaleByArea ? pixScaleAreaMap(picture.get(), scale, scale)
                                                : pixScaleGrayLI(picture.get(), scale, scale));
    return scaled ? std::move(scaled) : std::move(picture);
}

} // namespace nolfa
