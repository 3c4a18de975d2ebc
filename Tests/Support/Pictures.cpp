#include "Support/Pictures.h"

#include "Support/ZipBuilder.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <zlib.h>

namespace nolfa::testing {

namespace {

constexpr unsigned int bitsPerByte = 8;

std::string number(std::uint32_t value, int bytes)
{
    std::string result;
    for (int index = bytes - 1; index >= 0; --index)
        result += static_cast<char>(value >> (bitsPerByte * static_cast<unsigned int>(index)) & 255U);
    return result;
}

std::string deflated(const std::string &bytes)
{
    uLongf size = compressBound(bytes.size());
    std::string result(size, '\0');
    compress2(reinterpret_cast<Bytef *>(result.data()), &size, reinterpret_cast<const Bytef *>(bytes.data()),
        bytes.size(), 9);
    result.resize(size);
    return result;
}

/// A row of samples, the first in the highest bits.
std::string packedRow(const PNGPicture &picture, int first, int across, int row)
{
    std::string bytes;
    unsigned int gathered = 0;
    unsigned int count = 0;
    for (int column = first; column < picture.width; column += across) {
        for (int channel = 0; channel < picture.channels(); ++channel) {
            gathered = gathered << static_cast<unsigned int>(picture.bits) | picture.sample(column, row, channel);
            count += static_cast<unsigned int>(picture.bits);
            for (; count >= bitsPerByte; count -= bitsPerByte)
                bytes += static_cast<char>(gathered >> (count - bitsPerByte) & 255U);
        }
    }
    if (count > 0)
        bytes += static_cast<char>(gathered << (bitsPerByte - count) & 255U);
    return bytes;
}

std::string filteredRow(int filter, const std::string &row, const std::string &above, std::size_t step)
{
    std::string result(1, static_cast<char>(filter));
    for (std::size_t index = 0; index < row.size(); ++index) {
        const char left = index >= step ? row[index - step] : '\0';
        const char predicted = filter == 1 ? left : filter == 2 && !above.empty() ? above[index] : '\0';
        result += static_cast<char>(row[index] - predicted);
    }
    return result;
}

std::string rowsOfPass(const PNGPicture &picture, const std::array<int, 4> &pass)
{
    const auto [left, top, across, down] = pass;
    const int bitsPerPixel = picture.channels() * picture.bits;
    const auto step = static_cast<std::size_t>(std::max(bitsPerPixel / static_cast<int>(bitsPerByte), 1));
    std::string result;
    std::string above;
    for (int row = top; row < picture.height && left < picture.width; row += down) {
        std::string packed = packedRow(picture, left, across, row);
        result += filteredRow(picture.filter, packed, above, step);
        above = std::move(packed);
    }
    return result;
}

std::string exif(int orientation)
{
    std::string result("Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
    result += static_cast<char>(orientation);
    result += std::string(6, '\0');
    return result;
}

void writeMarker(jpeg_compress_struct &jpeg, int marker, const std::string &content)
{
    jpeg_write_marker(
        &jpeg, marker, reinterpret_cast<const JOCTET *>(content.data()), static_cast<unsigned int>(content.size()));
}

} // namespace

std::string pngChunk(std::string_view name, std::string_view content)
{
    const std::string body = std::string(name).append(content);
    return number(static_cast<std::uint32_t>(content.size()), 4) + body + number(crc32(body), 4);
}

int PNGPicture::channels() const
{
    constexpr std::array channelsByType{1, 0, 3, 1, 2, 0, 4};
    return channelsByType.at(static_cast<std::size_t>(colourType));
}

std::string PNGPicture::data() const
{
    if (!isInterlaced)
        return deflated(rowsOfPass(*this, {0, 0, 1, 1}));
    std::string rows;
    for (const std::array<int, 4> &pass :
        {std::array{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}})
        rows += rowsOfPass(*this, pass);
    return deflated(rows);
}

std::string PNGPicture::file() const
{
    std::string header = number(static_cast<std::uint32_t>(width), 4) + number(static_cast<std::uint32_t>(height), 4);
    for (const int value : {bits, colourType, 0, 0, isInterlaced ? 1 : 0})
        header += static_cast<char>(value);
    std::string result = "\x89PNG\r\n\x1A\n" + pngChunk("IHDR", header);
    for (const auto &[name, content] : otherChunks)
        result += pngChunk(name, content);
    if (!palette.empty())
        result += pngChunk("PLTE", palette);
    if (!transparency.empty())
        result += pngChunk("tRNS", transparency);
    return result + pngChunk("IDAT", data()) + pngChunk("IEND", "");
}

std::string JPEGPicture::file() const
{
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = components;
    jpeg.in_color_space = components == 1 ? JCS_GRAYSCALE : components == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    constexpr int quality = 95;
    jpeg_set_quality(&jpeg, quality, TRUE);
    if (components == 4)
        jpeg.write_Adobe_marker = hasAdobeMarker ? TRUE : FALSE;
    if (isProgressive)
        jpeg_simple_progression(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    if (orientation != 0)
        writeMarker(jpeg, JPEG_APP0 + 1, exif(orientation));
    if (!profile.empty())
        writeMarker(jpeg, JPEG_APP0 + 2, std::string("ICC_PROFILE\0\x01\x01", 14) + profile);
    std::vector<JSAMPLE> row(static_cast<std::size_t>(width) * static_cast<std::size_t>(components));
    for (int line = 0; line < height; ++line) {
        std::size_t index = 0;
        for (int column = 0; column < width; ++column) {
            for (int channel = 0; channel < components; ++channel)
                row[index++] = static_cast<JSAMPLE>(sample(column, line, channel));
        }
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&jpeg, &pointer, 1);
    }
    jpeg_finish_compress(&jpeg);
    std::string result(reinterpret_cast<const char *>(bytes), size);
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
    return result;
}

std::string profileHeader(std::string_view space)
{
    std::string result(132, '\0');
    result[3] = static_cast<char>(132);
    result.replace(16, space.size(), space);
    result.replace(36, 4, "acsp");
    return result;
}

} // namespace nolfa::testing
