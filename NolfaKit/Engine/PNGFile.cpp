#include "Engine/PNGFile.h"

#include "Engine/ByteReader.h"
#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Platform/Zlib.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace nolfa {

namespace {

constexpr std::string_view signature("\x89PNG\r\n\x1A\n", 8);
constexpr std::size_t bitsPerByte = 8;

/// Fills a PNGFile chunk by chunk.
class ChunkReader {
public:
    explicit ChunkReader(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    bool run()
    {
        if (!m_bytes.starts_with(signature))
            return false;
        constexpr std::size_t frameSize = 12; // length, name, checksum
        std::size_t at = signature.size();
        while (!m_hasEnd) {
            const ByteReader reader(m_bytes);
            const std::size_t length = reader.doubleWord(at);
            if (m_bytes.size() - at < frameSize || length > m_bytes.size() - at - frameSize)
                return false;
            const bool isSound = crc32Of(m_bytes.substr(at + 4, length + 4)) == reader.doubleWord(at + 8 + length);
            const std::string_view name = m_bytes.substr(at + 4, 4);
            const bool isCritical = name.front() >= 'A' && name.front() <= 'Z';
            if (isCritical && !isSound)
                return false;
            if (isSound && !chunk(name, m_bytes.substr(at + 8, length)))
                return false;
            at += frameSize + length;
        }
        return !file.data.empty() && (file.colours != PNGFile::Colours::palette || !file.palette.empty());
    }

    PNGFile file;

private:
    bool chunk(std::string_view name, std::string_view content)
    {
        if ((name == "IHDR") == (file.width > 0))
            return false;
        if (name == "IHDR")
            return header(content);
        if (name == "IDAT")
            return dataPiece(content);
        m_isBehindData = !file.data.empty();
        if (name == "IEND")
            m_hasEnd = true;
        else if (name == "PLTE")
            return palette(content);
        else if (name == "tRNS" && isTransparency(content))
            file.transparency = content;
        else if (name == "iCCP")
            profile(content);
        return true;
    }

    bool header(std::string_view content)
    {
        constexpr std::size_t size = 13;
        constexpr std::uint32_t longest = 1'000'000;
        const ByteReader reader(content);
        if (content.size() != size || reader.byte(10) != 0 || reader.byte(11) != 0 || reader.byte(12) > 1)
            return false;
        const std::uint32_t width = reader.doubleWord(0);
        const std::uint32_t height = reader.doubleWord(4);
        if (width < 1 || height < 1 || width > longest || height > longest)
            return false;
        file.width = static_cast<int>(width);
        file.height = static_cast<int>(height);
        file.bits = reader.byte(8);
        file.colours = static_cast<PNGFile::Colours>(reader.byte(9));
        file.isInterlaced = reader.byte(12) == 1;
        return isKnownKind();
    }

    [[nodiscard]] bool isKnownKind() const
    {
        const auto isOneOf = [this](std::initializer_list<int> depths) {
            return std::ranges::find(depths, file.bits) != depths.end();
        };
        switch (file.colours) {
        case PNGFile::Colours::grey:
            return isOneOf({1, 2, 4, 8, 16});
        case PNGFile::Colours::palette:
            return isOneOf({1, 2, 4, 8});
        case PNGFile::Colours::rgb:
        case PNGFile::Colours::greyAlpha:
        case PNGFile::Colours::rgba:
            return isOneOf({8, 16});
        }
        return false;
    }

    /// The pieces follow one another without anything between.
    bool dataPiece(std::string_view content)
    {
        file.data.push_back(content);
        return !m_isBehindData;
    }

    bool palette(std::string_view content)
    {
        constexpr std::size_t bytesPerColour = 3;
        // For other kinds it is a mere suggestion.
        if (file.colours != PNGFile::Colours::palette)
            return true;
        const std::size_t most = bytesPerColour << static_cast<unsigned int>(file.bits);
        if (content.empty() || content.size() % bytesPerColour != 0 || m_isBehindData || !file.palette.empty())
            return false;
        file.palette = content.substr(0, most);
        return true;
    }

    [[nodiscard]] bool isTransparency(std::string_view content) const
    {
        constexpr std::size_t bytesPerSample = 2;
        switch (file.colours) {
        case PNGFile::Colours::grey:
        case PNGFile::Colours::rgb:
            return content.size() == static_cast<std::size_t>(file.channels()) * bytesPerSample;
        case PNGFile::Colours::palette:
            return !content.empty() && content.size() <= file.palette.size() / 3;
        default:
            return false;
        }
    }

    /// A name, a zero, the method (0 is deflate), and the stream.
    void profile(std::string_view content)
    {
        const std::size_t end = content.find('\0');
        if (end != std::string_view::npos && end + 2 < content.size() && content[end + 1] == '\0')
            file.profile = content.substr(end + 2);
    }

    std::string_view m_bytes;
    bool m_isBehindData = false;
    bool m_hasEnd = false;
};

/// Reads the stream of rows in spans of any size.
class RowStream {
public:
    explicit RowStream(const std::vector<std::string_view> &pieces)
        : m_pieces(pieces)
    {
    }

    /// @return whether there was that much
    /// @throws PlatformError when the stream is damaged
    bool fill(std::span<std::uint8_t> output)
    {
        while (!output.empty() && !m_isAtEnd) {
            while (m_left.empty() && m_next < m_pieces.size())
                m_left = m_pieces[m_next++];
            const Inflater::Step step = m_inflater.inflate(m_left, output);
            if (step.taken == 0 && step.made == 0 && !step.isAtEnd)
                return false;
            m_left.remove_prefix(step.taken);
            output = output.subspan(step.made);
            m_isAtEnd = step.isAtEnd;
        }
        return output.empty();
    }

    /// Whether nothing follows, and the checksum was right.
    bool isAtEnd()
    {
        std::array<std::uint8_t, 1> more{};
        return m_isAtEnd || (!fill(more) && m_isAtEnd);
    }

private:
    const std::vector<std::string_view> &m_pieces;
    std::size_t m_next = 0;
    std::string_view m_left;
    Inflater m_inflater;
    bool m_isAtEnd = false;
};

constexpr std::uint8_t lastFilter = 4;

std::uint8_t paeth(int left, int above, int aboveLeft)
{
    const int estimate = left + above - aboveLeft;
    const int toLeft = std::abs(estimate - left);
    const int toAbove = std::abs(estimate - above);
    const int toAboveLeft = std::abs(estimate - aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft)
        return static_cast<std::uint8_t>(left);
    return static_cast<std::uint8_t>(toAbove <= toAboveLeft ? above : aboveLeft);
}

/// Takes a row's filter away (section 9 of the standard).
/// @param step  bytes from a sample to the one of the pixel before
void unfilter(std::uint8_t filter, std::span<std::uint8_t> row, std::span<const std::uint8_t> above, std::size_t step)
{
    enum Filter : std::uint8_t { none, sub, up, average, paethFilter };
    const auto left = [&](std::size_t index) { return index >= step ? row[index - step] : std::uint8_t{0}; };
    const auto add
        = [&](std::size_t index, int predicted) { row[index] = static_cast<std::uint8_t>(row[index] + predicted); };
    if (filter == sub) {
        for (std::size_t index = step; index < row.size(); ++index)
            add(index, row[index - step]);
    } else if (filter == up) {
        for (std::size_t index = 0; index < row.size(); ++index)
            add(index, above[index]);
    } else if (filter == average) {
        for (std::size_t index = 0; index < row.size(); ++index)
            add(index, (left(index) + above[index]) / 2);
    } else if (filter == paethFilter) {
        for (std::size_t index = 0; index < row.size(); ++index) {
            add(index, paeth(left(index), above[index], index >= step ? above[index - step] : 0));
        }
    }
}

/// The rows of one picture, or of one pass over it.
class Rows {
public:
    Rows(RowStream &stream, std::size_t bytesPerRow, std::size_t step)
        : m_stream(stream)
        , m_step(step)
        , m_row(bytesPerRow + 1)
        , m_above(bytesPerRow + 1)
    {
    }

    /// @return the next row; empty when there is none
    std::span<const std::uint8_t> next()
    {
        std::swap(m_row, m_above);
        if (!m_stream.fill(m_row) || m_row.front() > lastFilter)
            return {};
        const std::span<std::uint8_t> row = std::span(m_row).subspan(1);
        unfilter(m_row.front(), row, std::span(m_above).subspan(1), m_step);
        return row;
    }

private:
    RowStream &m_stream;
    std::size_t m_step;
    std::vector<std::uint8_t> m_row; ///< the filter in front
    std::vector<std::uint8_t> m_above;
};

/// The passes of an interlaced picture (section 8.2): where each begins, and how far its pixels lie apart.
struct Pass {
    int left;
    int top;
    int across;
    int down;
};
constexpr std::array<Pass, 7> passes{{
    {0, 0, 8, 8},
    {4, 0, 8, 8},
    {0, 4, 4, 8},
    {2, 0, 4, 4},
    {0, 2, 2, 4},
    {1, 0, 2, 2},
    {0, 1, 1, 2},
}};

/// Copies one pixel of less than a byte, or of whole bytes, between rows.
void copyPixel(std::span<const std::uint8_t> from, std::size_t source, std::span<std::uint8_t> to, std::size_t target,
    std::size_t bitsPerPixel)
{
    if (bitsPerPixel >= bitsPerByte) {
        const std::size_t size = bitsPerPixel / bitsPerByte;
        std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(source * size), size,
            to.begin() + static_cast<std::ptrdiff_t>(target * size));
        return;
    }
    const auto shift
        = [bitsPerPixel](std::size_t pixel) { return bitsPerByte - bitsPerPixel - pixel * bitsPerPixel % bitsPerByte; };
    const unsigned int mask = (1U << bitsPerPixel) - 1U;
    const unsigned int value = from[source * bitsPerPixel / bitsPerByte] >> shift(source) & mask;
    std::uint8_t &byte = to[target * bitsPerPixel / bitsPerByte];
    byte = static_cast<std::uint8_t>(byte | value << shift(target));
}

} // namespace

bool PNGFile::isPNG(std::string_view bytes)
{
    return bytes.starts_with(signature);
}

std::optional<PNGFile> PNGFile::read(std::string_view bytes)
{
    ChunkReader reader(bytes);
    if (!reader.run())
        return std::nullopt;
    return std::move(reader.file);
}

int PNGFile::channels() const
{
    constexpr std::array<int, 7> channelsByType{1, 0, 3, 1, 2, 0, 4};
    return channelsByType.at(static_cast<std::size_t>(colours));
}

std::size_t PNGFile::bytesPerRow(int pixels) const
{
    const auto bitsPerPixel = static_cast<std::size_t>(channels()) * static_cast<std::size_t>(bits);
    return (static_cast<std::size_t>(pixels) * bitsPerPixel + bitsPerByte - 1) / bitsPerByte;
}

namespace {

/// Goes through rows without looking at more than their filters.
bool skipRows(RowStream &stream, std::size_t rowSize, std::size_t count, const std::stop_token &stop)
{
    // In batches of about the size of a cache.
    constexpr std::size_t batchSize = 1U << 17U;
    const std::size_t rowsPerBatch = std::max<std::size_t>(batchSize / rowSize, 1);
    std::vector<std::uint8_t> batch(rowsPerBatch * rowSize);
    while (count > 0) {
        throwIfStopped(stop);
        const std::size_t rows = std::min(count, rowsPerBatch);
        if (!stream.fill(std::span(batch).first(rows * rowSize)))
            return false;
        for (std::size_t row = 0; row < rows; ++row) {
            if (batch[row * rowSize] > lastFilter)
                return false;
        }
        count -= rows;
    }
    return true;
}

/// Of one pass over a picture's width or height.
int countInPass(int length, int start, int distance)
{
    return (length - start + distance - 1) / distance;
}

} // namespace

bool PNGFile::isStreamWhole(const std::stop_token &stop) const
{
    static constexpr std::array<Pass, 1> onePass{{{0, 0, 1, 1}}};
    try {
        RowStream stream(data);
        for (const Pass &pass : isInterlaced ? std::span<const Pass>(passes) : std::span<const Pass>(onePass)) {
            const int columns = countInPass(width, pass.left, pass.across);
            const int rows = countInPass(height, pass.top, pass.down);
            if (columns > 0 && rows > 0
                && !skipRows(stream, bytesPerRow(columns) + 1, static_cast<std::size_t>(rows), stop))
                return false;
        }
        return stream.isAtEnd();
    } catch (const PlatformError &) {
        return false;
    }
}

namespace {

bool readPlainRows(const PNGFile &file, std::size_t step,
    const std::function<void(std::span<const std::uint8_t> row)> &give, const std::stop_token &stop)
{
    RowStream stream(file.data);
    Rows rows(stream, file.bytesPerRow(), step);
    for (int row = 0; row < file.height; ++row) {
        throwIfStopped(stop);
        const std::span<const std::uint8_t> next = rows.next();
        if (next.empty())
            return false;
        give(next);
    }
    return stream.isAtEnd();
}

bool readInterlacedRows(const PNGFile &file, std::size_t step,
    const std::function<void(std::span<const std::uint8_t> row)> &give, const std::stop_token &stop)
{
    constexpr std::size_t mostBytes = std::size_t{256} << 20U;
    const std::size_t rowSize = file.bytesPerRow();
    const auto bitsPerPixel = static_cast<std::size_t>(file.channels()) * static_cast<std::size_t>(file.bits);
    if (rowSize > mostBytes / static_cast<std::size_t>(file.height))
        return false;
    std::vector<std::uint8_t> picture(rowSize * static_cast<std::size_t>(file.height));
    RowStream stream(file.data);
    for (const Pass &pass : passes) {
        const int columns = countInPass(file.width, pass.left, pass.across);
        if (columns < 1)
            continue;
        Rows rows(stream, file.bytesPerRow(columns), step);
        for (int row = pass.top; row < file.height; row += pass.down) {
            throwIfStopped(stop);
            const std::span<const std::uint8_t> next = rows.next();
            if (next.empty())
                return false;
            const std::span<std::uint8_t> target
                = std::span(picture).subspan(static_cast<std::size_t>(row) * rowSize, rowSize);
            for (int column = 0; column < columns; ++column) {
                copyPixel(next, static_cast<std::size_t>(column), target,
                    static_cast<std::size_t>(pass.left)
                        + static_cast<std::size_t>(column) * static_cast<std::size_t>(pass.across),
                    bitsPerPixel);
            }
        }
    }
    for (std::size_t start = 0; start < picture.size(); start += rowSize)
        give(std::span(picture).subspan(start, rowSize));
    return stream.isAtEnd();
}

} // namespace

bool PNGFile::readRows(
    const std::function<void(std::span<const std::uint8_t> row)> &give, const std::stop_token &stop) const
{
    const std::size_t step
        = std::max<std::size_t>(static_cast<std::size_t>(channels()) * static_cast<std::size_t>(bits) / bitsPerByte, 1);
    try {
        return isInterlaced ? readInterlacedRows(*this, step, give, stop) : readPlainRows(*this, step, give, stop);
    } catch (const PlatformError &) {
        return false;
    }
}

} // namespace nolfa
