#include "Engine/PicturePDF.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace nolfa::PicturePDF {

namespace {

/// The objects, in the order of the file. The last two are there if they are needed.
enum Object : std::size_t { catalog = 1, pages, page, content, image, alpha, profile };

std::string number(double value)
{
    constexpr int decimals = 4;
    std::array<char, 32> buffer{};
    const auto result
        = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    std::string text(buffer.data(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string reference(Object object)
{
    return std::to_string(object) + " 0 R";
}

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result = "<";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        result += digits[value >> 4U];
        result += digits[value & 15U];
    }
    return result + ">";
}

/// Counts the bytes as they are written, and remembers where objects begin.
class ObjectWriter {
public:
    explicit ObjectWriter(FileWriter &file)
        : m_file(file)
    {
        // The comment tells programs that move files that this isn't text.
        put("%PDF-1.5\n%\xE2\xE3\xCF\xD3\n");
    }

    void object(Object number, const std::string &dictionary)
    {
        begin(number);
        put(dictionary + "\nendobj\n");
    }

    void stream(Object number, const std::string &entries, const PDFPicture::Stream &stream)
    {
        begin(number);
        put("<< " + entries + " /Length " + std::to_string(stream.size()) + " >>\nstream\n");
        for (const std::string_view piece : stream.pieces)
            put(piece);
        put(stream.packed);
        put("\nendstream\nendobj\n");
    }

    /// The table of where the objects are, and the end.
    void finish()
    {
        const std::size_t start = m_size;
        std::string table = "xref\n0 1\n0000000000 65535 f \n";
        for (const auto &[number, offset] : m_offsets) {
            std::array<char, 32> entry{};
            std::snprintf(entry.data(), entry.size(), "%010zu 00000 n \n", offset);
            table += std::to_string(number) + " 1\n" + entry.data();
        }
        put(table + "trailer\n<< /Size " + std::to_string(m_offsets.back().first + 1) + " /Root " + reference(catalog)
            + " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n");
        m_file.finish();
    }

private:
    void begin(Object number)
    {
        m_offsets.emplace_back(number, m_size);
        put(std::to_string(number) + " 0 obj\n");
    }

    void put(std::string_view bytes)
    {
        constexpr std::size_t small = 4096;
        m_size += bytes.size();
        if (bytes.size() <= small) {
            m_file.text += bytes;
            return;
        }
        // What is large needs no gathering.
        m_file.finish();
        m_file.write(bytes);
    }

    FileWriter &m_file;
    std::size_t m_size = 0;
    std::vector<std::pair<std::size_t, std::size_t>> m_offsets;
};

/// How the unit square of a stored picture comes to stand as it is to be seen: a, b, c, d, e, f of x' = ax + cy + e and
/// y' = bx + dy + f. By Exif's numbers (2.3, section 4.6.4), from 1.
using Matrix = std::array<int, 6>;
constexpr std::array<Matrix, 8> orientations{{
    {1, 0, 0, 1, 0, 0},
    {-1, 0, 0, 1, 1, 0},
    {-1, 0, 0, -1, 1, 1},
    {1, 0, 0, -1, 0, 1},
    {0, -1, -1, 0, 1, 1},
    {0, -1, 1, 0, 0, 1},
    {0, 1, 1, 0, 0, 0},
    {0, 1, -1, 0, 1, 0},
}};

std::string pageContent(int orientation, const Rectangle &place)
{
    const Matrix &matrix = orientations.at(static_cast<std::size_t>(orientation - 1));
    std::string result = "q ";
    for (std::size_t index = 0; index < matrix.size(); index += 2) {
        const bool isOffset = index + 2 == matrix.size();
        result += number((isOffset ? place.x : 0) + matrix.at(index) * place.width) + " ";
        result += number((isOffset ? place.y : 0) + matrix.at(index + 1) * place.height) + " ";
    }
    return result + "cm /Picture Do Q";
}

std::string plainColours(PDFPicture::Colours colours)
{
    switch (colours) {
    case PDFPicture::Colours::grey:
        return "/DeviceGray";
    case PDFPicture::Colours::rgb:
        return "/DeviceRGB";
    case PDFPicture::Colours::cmyk:
        return "/DeviceCMYK";
    }
    return {};
}

std::string colourSpace(const PDFPicture &picture)
{
    std::string base
        = picture.profile.empty() ? plainColours(picture.colours) : "[ /ICCBased " + reference(profile) + " ]";
    if (picture.palette.empty())
        return base;
    constexpr std::size_t bytesPerColour = 3;
    const std::size_t last = picture.palette.size() / bytesPerColour - 1;
    return "[ /Indexed " + base + " " + std::to_string(last) + " " + hexadecimal(picture.palette) + " ]";
}

std::string imageEntries(const PDFPicture &picture, const std::string &colours, int bits)
{
    return "/Type /XObject /Subtype /Image /Width " + std::to_string(picture.width) + " /Height "
        + std::to_string(picture.height) + " /ColorSpace " + colours + " /BitsPerComponent " + std::to_string(bits);
}

} // namespace

void write(FileWriter &file, const PDFPicture &picture, const Size &pageSize, const Rectangle &place)
{
    ObjectWriter writer(file);
    writer.object(catalog, "<< /Type /Catalog /Pages " + reference(pages) + " >>");
    writer.object(pages, "<< /Type /Pages /Count 1 /Kids [ " + reference(page) + " ] >>");
    writer.object(page,
        "<< /Type /Page /Parent " + reference(pages) + " /MediaBox [ 0 0 " + number(pageSize.width) + " "
            + number(pageSize.height) + " ] /Resources << /XObject << /Picture " + reference(image)
            + " >> >> /Contents " + reference(content) + " >>");
    writer.stream(content, {}, {{}, {}, pageContent(picture.orientation, place)});

    std::string entries = imageEntries(picture, colourSpace(picture), picture.bits) + " " + picture.samples.filter;
    if (!picture.decode.empty())
        entries += " /Decode " + picture.decode;
    if (!picture.mask.empty())
        entries += " /Mask " + picture.mask;
    if (picture.alpha)
        entries += " /SMask " + reference(alpha);
    writer.stream(image, entries, picture.samples);
    if (picture.alpha) {
        writer.stream(alpha, imageEntries(picture, "/DeviceGray", picture.alphaBits) + " " + picture.alpha->filter,
            *picture.alpha);
    }
    if (!picture.profile.empty()) {
        const auto channels = static_cast<int>(picture.colours);
        writer.stream(profile,
            "/N " + std::to_string(channels) + " /Alternate " + plainColours(picture.colours) + " /Filter /FlateDecode",
            {{}, {picture.profile}, {}});
    }
    writer.finish();
}

} // namespace nolfa::PicturePDF
