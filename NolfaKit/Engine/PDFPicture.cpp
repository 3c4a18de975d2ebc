#include "Engine/PDFPicture.h"

#include "Engine/ConversionError.h"
#include "Engine/ImageFile.h"
#include "Engine/JPEGFile.h"
#include "Engine/PNGFile.h"
#include "Engine/RowPacker.h"
#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>

namespace nolfa {

namespace {

constexpr int bitsPerByte = 8;

std::string predictorFilter(int channels, int bits, int width)
{
    return "/Filter /FlateDecode /DecodeParms << /Predictor 15 /Colors " + std::to_string(channels)
        + " /BitsPerComponent " + std::to_string(bits) + " /Columns " + std::to_string(width) + " >>";
}

std::string deflated(std::string_view bytes)
{
    Deflater deflater;
    std::string result;
    deflater.append({reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size()}, result);
    deflater.finish(result);
    return result;
}

/// The first bytes of a deflated text; fewer when it is damaged or short.
std::string inflatedStart(std::string_view packed, std::size_t size)
{
    std::string result(size, '\0');
    std::size_t filled = 0;
    try {
        Inflater inflater;
        const std::span<unsigned char> room(reinterpret_cast<unsigned char *>(result.data()), size);
        for (;;) {
            const Inflater::Step step = inflater.inflate(packed, room.subspan(filled));
            packed.remove_prefix(step.taken);
            filled += step.made;
            if (filled == size || step.isAtEnd || (step.taken == 0 && step.made == 0))
                break;
        }
    } catch (const PlatformError &) {
        filled = 0;
    }
    result.resize(filled);
    return result;
}

/// Whether a colour profile (ICC.1, section 7.2) is meant for samples of that kind.
bool isProfileFor(PDFPicture::Colours colours, std::string_view profile)
{
    constexpr std::size_t headerSize = 128;
    constexpr std::size_t spaceAt = 16;
    constexpr std::size_t signatureAt = 36;
    if (profile.size() < headerSize || profile.substr(signatureAt, 4) != "acsp")
        return false;
    const std::string_view space = profile.substr(spaceAt, 4);
    switch (colours) {
    case PDFPicture::Colours::grey:
        return space == "GRAY";
    case PDFPicture::Colours::rgb:
        return space == "RGB ";
    case PDFPicture::Colours::cmyk:
        return space == "CMYK";
    }
    return false;
}

/// Whether a decoder makes a picture of the beginning of a JPEG: its tables and frame are then sound. The rest is left
/// alone, as decoders make a picture of any damage in the compressed data.
bool isBeginningSound(std::string_view bytes, std::size_t dataStart, const std::stop_token &stop)
{
    constexpr std::size_t enough = 1U << 16U;
    constexpr int small = 64;
    const std::unique_ptr<PictureSource> source = PictureSource::open(bytes.substr(0, dataStart + enough), stop);
    return source && source->thumbnail(small).has_value();
}

/// Splits pixels of bytes into colours and transparency, and packs both.
class AlphaSplitter {
public:
    /// @param channels        the transparency included, which comes last
    /// @param bytesPerSample  1 or 2
    AlphaSplitter(int width, std::size_t channels, std::size_t bytesPerSample)
        : m_colourSize((channels - 1) * bytesPerSample)
        , m_alphaSize(bytesPerSample)
        , m_colours(static_cast<std::size_t>(width) * m_colourSize)
        , m_alpha(static_cast<std::size_t>(width) * m_alphaSize)
        , m_colourPacker(m_colours.size(), m_colourSize)
        , m_alphaPacker(m_alpha.size(), m_alphaSize)
    {
    }

    void append(std::span<const std::uint8_t> row)
    {
        const std::uint8_t *from = row.data();
        std::uint8_t *alpha = m_alpha.data();
        for (std::uint8_t *to = m_colours.data(); to != m_colours.data() + m_colours.size(); to += m_colourSize) {
            std::copy_n(from, m_colourSize, to);
            std::copy_n(from + m_colourSize, m_alphaSize, alpha);
            from += m_colourSize + m_alphaSize;
            alpha += m_alphaSize;
        }
        constexpr std::uint8_t opaque = 255;
        m_isOpaque = m_isOpaque && std::ranges::all_of(m_alpha, [](std::uint8_t sample) { return sample == opaque; });
        m_colourPacker.append(m_colours);
        m_alphaPacker.append(m_alpha);
    }

    void finish(PDFPicture &picture)
    {
        const int bits = static_cast<int>(m_alphaSize) * bitsPerByte;
        const int channels = static_cast<int>(m_colourSize / m_alphaSize);
        picture.bits = bits;
        picture.alphaBits = bits;
        picture.samples = {predictorFilter(channels, bits, picture.width), {}, m_colourPacker.finish()};
        if (!m_isOpaque)
            picture.alpha = {predictorFilter(1, bits, picture.width), {}, m_alphaPacker.finish()};
    }

private:
    std::size_t m_colourSize; ///< bytes of a pixel
    std::size_t m_alphaSize;
    std::vector<std::uint8_t> m_colours; ///< of one row
    std::vector<std::uint8_t> m_alpha;
    RowPacker m_colourPacker;
    RowPacker m_alphaPacker;
    bool m_isOpaque = true;
};

/// The transparency of pictures with a palette: an alpha for each pixel's place in it.
class PaletteAlpha {
public:
    explicit PaletteAlpha(const PNGFile &file)
        : m_bits(static_cast<unsigned int>(file.bits))
        , m_row(static_cast<std::size_t>(file.width))
        , m_packer(m_row.size(), 1)
    {
        m_alphas.fill(opaque);
        std::ranges::transform(
            file.transparency, m_alphas.begin(), [](char alpha) { return static_cast<std::uint8_t>(alpha); });
    }

    void append(std::span<const std::uint8_t> row)
    {
        const unsigned int pixelsPerByte = bitsPerByte / m_bits;
        const unsigned int mask = (1U << m_bits) - 1U;
        for (std::size_t column = 0; column < m_row.size(); ++column) {
            const auto inByte = static_cast<unsigned int>(column % pixelsPerByte);
            const unsigned int shift = bitsPerByte - m_bits * (inByte + 1);
            m_row[column] = m_alphas.at(row[column / pixelsPerByte] >> shift & mask);
        }
        m_packer.append(m_row);
    }

    PDFPicture::Stream finish()
    {
        return {predictorFilter(1, bitsPerByte, static_cast<int>(m_row.size())), {}, m_packer.finish()};
    }

private:
    static constexpr std::uint8_t opaque = 255;

    unsigned int m_bits;
    std::array<std::uint8_t, 256> m_alphas{};
    std::vector<std::uint8_t> m_row;
    RowPacker m_packer;
};

/// "[ 12 12 0 0 ]": from and to of each sample of the colour that is left out.
std::string maskArray(const PNGFile &file)
{
    constexpr unsigned int bitsOfByte = 8;
    std::string result = "[";
    for (std::size_t index = 0; index + 1 < file.transparency.size(); index += 2) {
        const unsigned int high = static_cast<std::uint8_t>(file.transparency[index]);
        const unsigned int low = static_cast<std::uint8_t>(file.transparency[index + 1]);
        // Only as many bits as a sample has count.
        const std::string value
            = std::to_string((high << bitsOfByte | low) & ((1U << static_cast<unsigned int>(file.bits)) - 1U));
        result.append(" ").append(value).append(" ").append(value);
    }
    return result + " ]";
}

/// A profile that is short enough to stand in the PDF a second time.
std::string keptProfile(PDFPicture::Colours colours, std::string_view profile)
{
    constexpr std::size_t most = 3072;
    if (!isProfileFor(colours, profile))
        return {};
    std::string packed = deflated(profile);
    return packed.size() <= most ? packed : std::string();
}

bool hasAlpha(const PNGFile &file)
{
    return file.colours == PNGFile::Colours::greyAlpha || file.colours == PNGFile::Colours::rgba;
}

/// Fills in the rows of a PNG without an alpha for each pixel: as they are stored, if they can be read like that.
bool takeRows(PDFPicture &picture, const PNGFile &file, const std::stop_token &stop)
{
    const std::string filter = predictorFilter(file.channels(), file.bits, file.width);
    const bool isTransparent = file.colours == PNGFile::Colours::palette && !file.transparency.empty();
    if (!file.isInterlaced && !isTransparent) {
        picture.samples = {filter, file.data, {}};
        return file.isStreamWhole(stop);
    }
    const std::size_t step = file.bytesPerRow(1);
    std::optional<PaletteAlpha> alpha;
    if (isTransparent)
        alpha.emplace(file);
    std::optional<RowPacker> packer;
    if (file.isInterlaced)
        packer.emplace(file.bytesPerRow(), step);
    const auto take = [&](std::span<const std::uint8_t> row) {
        if (alpha)
            alpha->append(row);
        if (packer)
            packer->append(row);
    };
    if (!file.readRows(take, stop))
        return false;
    if (alpha)
        picture.alpha = alpha->finish();
    if (packer)
        picture.samples = {filter, {}, packer->finish()};
    else
        picture.samples = {filter, file.data, {}};
    return true;
}

bool takeRowsWithAlpha(PDFPicture &picture, const PNGFile &file, const std::stop_token &stop)
{
    AlphaSplitter splitter(
        file.width, static_cast<std::size_t>(file.channels()), static_cast<std::size_t>(file.bits / bitsPerByte));
    if (!file.readRows([&](std::span<const std::uint8_t> row) { splitter.append(row); }, stop))
        return false;
    splitter.finish(picture);
    return true;
}

} // namespace

std::size_t PDFPicture::Stream::size() const
{
    std::size_t result = packed.size();
    for (const std::string_view piece : pieces)
        result += piece.size();
    return result;
}

PDFPicture PDFPicture::read(const std::filesystem::path &url, const std::stop_token &stop)
{
    PDFPicture picture;
    picture.m_bytes = std::make_shared<const std::string>(ImageFile::read(url));
    throwIfStopped(stop);
    if (picture.takeJPEG(stop) || picture.takePNG(stop))
        return picture;
    throwIfStopped(stop);
    PDFPicture decoded;
    decoded.takeDecoded(url, stop);
    return decoded;
}

bool PDFPicture::takeJPEG(const std::stop_token &stop)
{
    const std::optional<JPEGFile> file = JPEGFile::read(*m_bytes);
    const bool isKnown = file && file->bits == bitsPerByte
        && (file->components == 1 || file->components == 3 || file->components == 4);
    if (!isKnown || !isBeginningSound(*m_bytes, file->dataStart, stop))
        return false;
    width = file->width;
    height = file->height;
    orientation = file->orientation;
    colours = static_cast<Colours>(file->components);
    samples = {"/Filter /DCTDecode", {*m_bytes}, {}};
    if (file->isPlainRGB && !file->hasAdobeMarker)
        samples.filter += " /DecodeParms << /ColorTransform 0 >>";
    if (colours == Colours::cmyk && file->hasAdobeMarker)
        decode = "[ 1 0 1 0 1 0 1 0 ]";
    profile = keptProfile(colours, file->profile);
    return true;
}

bool PDFPicture::takePNG(const std::stop_token &stop)
{
    const std::optional<PNGFile> file = PNGFile::read(*m_bytes);
    if (!file)
        return false;
    width = file->width;
    height = file->height;
    bits = file->bits;
    const bool isGrey = file->colours == PNGFile::Colours::grey || file->colours == PNGFile::Colours::greyAlpha;
    colours = isGrey ? Colours::grey : Colours::rgb;
    palette = file->palette;
    if (file->colours != PNGFile::Colours::palette && !file->transparency.empty())
        mask = maskArray(*file);
    // The profile was deflated in the file; it only moves.
    constexpr std::size_t headerSize = 128;
    if (isProfileFor(colours, inflatedStart(file->profile, headerSize)))
        profile = file->profile;
    return hasAlpha(*file) ? takeRowsWithAlpha(*this, *file, stop) : takeRows(*this, *file, stop);
}

void PDFPicture::takeDecoded(const std::filesystem::path &url, const std::stop_token &stop)
{
    const Bitmap bitmap = ImageFile::load(url, std::nullopt, stop);
    width = bitmap.width;
    height = bitmap.height;
    colours = bitmap.layout == Bitmap::Layout::grey ? Colours::grey : Colours::rgb;
    const auto row = [&bitmap](int index) {
        return std::span(bitmap.pixels)
            .subspan(static_cast<std::size_t>(index) * bitmap.bytesPerRow(), bitmap.bytesPerRow());
    };
    if (bitmap.layout == Bitmap::Layout::rgba) {
        AlphaSplitter splitter(width, bitmap.channels(), 1);
        for (int index = 0; index < height; ++index) {
            throwIfStopped(stop);
            splitter.append(row(index));
        }
        splitter.finish(*this);
        return;
    }
    RowPacker packer(bitmap.bytesPerRow(), bitmap.channels());
    for (int index = 0; index < height; ++index) {
        throwIfStopped(stop);
        packer.append(row(index));
    }
    samples = {predictorFilter(static_cast<int>(bitmap.channels()), bitsPerByte, width), {}, packer.finish()};
}

} // namespace nolfa
