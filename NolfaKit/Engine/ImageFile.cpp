#include "Engine/ImageFile.h"

#include "Engine/ConversionError.h"
#include "Engine/JPEGFile.h"
#include "Engine/PNGFile.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"

#include <algorithm>

namespace nolfa::ImageFile {

namespace fs = std::filesystem;

namespace {

/// Larger than what any camera or scanner writes, and held in memory as a whole.
constexpr std::uintmax_t largestFile = std::uintmax_t{256} << 20U;

bool isTooLarge(const fs::path &url)
{
    std::error_code failure;
    return fs::file_size(url, failure) > largestFile || failure;
}

/// The decoder would refuse it too, but not without a line on the standard error stream.
bool isDamagedPNG(std::string_view bytes, const std::stop_token &stop)
{
    if (!PNGFile::isPNG(bytes))
        return false;
    const std::optional<PNGFile> file = PNGFile::read(bytes);
    return !file || !file->isStreamWhole(stop);
}

} // namespace

std::string read(const fs::path &url)
{
    if (isTooLarge(url))
        throw ConversionError::unreadableInput(url);
    std::optional<std::string> bytes = File::contents(url);
    if (!bytes || JPEGFile::isBomb(*bytes))
        throw ConversionError::unreadableInput(url);
    return std::move(*bytes);
}

Bitmap loadSync(PictureSource &source, const fs::path &url, std::optional<int> maxPixelSize)
{
    const std::optional<PictureSource::Dimensions> size = source.pixelSize();
    const int longest = size ? std::max(size->width, size->height) : 0;
    const int wanted = !maxPixelSize ? longest : longest >= 1 ? std::min(*maxPixelSize, longest) : *maxPixelSize;
    std::optional<Bitmap> picture = wanted >= 1 ? source.thumbnail(wanted) : std::nullopt;
    if (!picture)
        picture = source.fullPicture();
    if (!picture)
        throw ConversionError::unreadableInput(url);
    return std::move(*picture);
}

Bitmap load(const fs::path &url, std::optional<int> maxPixelSize, const std::stop_token &stop)
{
    const std::string bytes = read(url);
    throwIfStopped(stop);
    if (isDamagedPNG(bytes, stop))
        throw ConversionError::unreadableInput(url);
    const std::unique_ptr<PictureSource> source = PictureSource::open(bytes, stop);
    if (!source)
        throw ConversionError::unreadableInput(url);
    try {
        return loadSync(*source, url, maxPixelSize);
    } catch (const ConversionError &) {
        // A stop makes the decoder give up, too.
        throwIfStopped(stop);
        throw;
    }
}

} // namespace nolfa::ImageFile
