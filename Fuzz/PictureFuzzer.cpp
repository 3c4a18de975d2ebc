#include "Check.h"

#include "Engine/ConversionError.h"
#include "Engine/ImageFile.h"
#include "Engine/JPEGFile.h"
#include "Engine/PDFPicture.h"
#include "Engine/PNGFile.h"
#include "Engine/PicturePDF.h"
#include "Engine/Scratch.h"
#include "Platform/File.h"

namespace {

using namespace nolfa;

/// Pictures that take seconds to decode are other tests' business.
bool isLarge(std::string_view bytes)
{
    constexpr int most = 1U << 22U;
    const std::optional<JPEGFile> jpeg = JPEGFile::read(bytes);
    const std::optional<PNGFile> png = PNGFile::read(bytes);
    return (jpeg && jpeg->width > most / jpeg->height / static_cast<int>(jpeg->scans + 1))
        || (png && png->width > most / png->height);
}

/// The rows of a PNG are of the size that its header promises, and whole when its stream is.
void checkRows(const PNGFile &file)
{
    int rows = 0;
    const auto count = [&](std::span<const std::uint8_t> row) {
        check(row.size() == file.bytesPerRow());
        ++rows;
    };
    const bool isRead = file.readRows(count, {});
    check(isRead == file.isStreamWhole({}));
    check(!isRead || rows == file.height);
}

bool isDecoded(const std::filesystem::path &file)
{
    try {
        constexpr int small = 100;
        const Bitmap bitmap = ImageFile::load(file, small, {});
        check(bitmap.width >= 1 && bitmap.height >= 1);
        check(bitmap.pixels.size() == bitmap.bytesPerRow() * static_cast<std::size_t>(bitmap.height));
        return true;
    } catch (const ConversionError &error) {
        check(error == ConversionError::unreadableInput(file));
        return false;
    }
}

bool isPlacedInPDF(const std::filesystem::path &file, const std::filesystem::path &output, std::string_view bytes)
{
    try {
        const PDFPicture picture = PDFPicture::read(file, {});
        check(picture.width >= 1 && picture.height >= 1 && picture.orientation >= 1 && picture.orientation <= 8);
        FileWriter writer(output);
        PicturePDF::write(writer, picture, {595, 842}, {36, 36, 523, 770});
        const bool isAsStored = picture.samples.packed.empty() && !picture.alpha;
        check(!isAsStored || std::filesystem::file_size(output) <= bytes.size() + 4096);
        return true;
    } catch (const ConversionError &error) {
        check(error == ConversionError::unreadableInput(file));
        return false;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const std::filesystem::path file = scratch.file("picture.png");
    const std::string_view bytes = textOf(data, size);
    (void)JPEGFile::isBomb(bytes);
    if (isLarge(bytes))
        return 0;
    File::write(file, bytes);
    const std::optional<PNGFile> png = PNGFile::read(bytes);
    if (png)
        checkRows(*png);
    const bool isInPDF = isPlacedInPDF(file, scratch.file("picture.pdf"), bytes);
    // What is damaged for one converter is damaged for the other; the palette and its likes are the decoder's to judge.
    if (!isDecoded(file) && PNGFile::isPNG(bytes))
        check(!isInPDF || png.has_value());
    return 0;
}
