#include "Engine/InkArea.h"

#include <algorithm>
#include <cstdlib>

namespace nolfa::InkArea {

namespace {

/// Differences of a channel that compression or a scanner's light makes by itself, of 255.
constexpr int noise = 24;

/// Tells paper from ink.
class Paper {
public:
    explicit Paper(const Bitmap &image)
        : m_image(image)
        , m_row(image.bytesPerRow())
        , m_channels(image.channels())
    {
    }

    /// The first byte of a row that is ink; the row's length for none.
    [[nodiscard]] std::size_t firstInk(int row) const
    {
        const std::uint8_t *const bytes = at(row);
        for (std::size_t i = 0; i < m_row; ++i) {
            if (isInk(bytes[i], i))
                return i;
        }
        return m_row;
    }

    /// One behind the last byte of a row that is ink, if that lies beyond @p least; otherwise @p least.
    [[nodiscard]] std::size_t endOfInk(int row, std::size_t least) const
    {
        const std::uint8_t *const bytes = at(row);
        std::size_t end = m_row;
        while (end > least && !isInk(bytes[end - 1], end - 1))
            --end;
        return end;
    }

private:
    [[nodiscard]] const std::uint8_t *at(int row) const
    {
        return m_image.pixels.data() + static_cast<std::size_t>(row) * m_row;
    }

    [[nodiscard]] bool isInk(std::uint8_t value, std::size_t index) const
    {
        const std::size_t channel = m_channels == 1 ? 0 : index % m_channels;
        return std::abs(int{value} - int{m_image.pixels[channel]}) > noise;
    }

    const Bitmap &m_image;
    std::size_t m_row;
    std::size_t m_channels;
};

} // namespace

std::optional<PixelArea> find(const Bitmap &image)
{
    if (image.pixels.empty())
        return std::nullopt;
    const Paper paper(image);
    std::size_t first = image.bytesPerRow();
    std::size_t end = 0;
    int top = -1;
    int bottom = -1;
    for (int row = 0; row < image.height; ++row) {
        const std::size_t ink = paper.firstInk(row);
        if (ink == image.bytesPerRow())
            continue;
        top = top < 0 ? row : top;
        bottom = row;
        first = std::min(first, ink);
        end = paper.endOfInk(row, end);
    }
    if (top < 0)
        return std::nullopt;
    const auto left = static_cast<int>(first / image.channels());
    const auto right = static_cast<int>((end + image.channels() - 1) / image.channels());
    return PixelArea{left, top, right - left, bottom + 1 - top};
}

PixelArea withRim(PixelArea area, const Bitmap &image, int rim)
{
    const int left = std::max(area.left - rim, 0);
    const int top = std::max(area.top - rim, 0);
    const int right = std::min(area.left + area.width + rim, image.width);
    const int bottom = std::min(area.top + area.height + rim, image.height);
    return {left, top, right - left, bottom - top};
}

Bitmap cropped(const Bitmap &image, PixelArea area)
{
    Bitmap result{area.width, area.height, image.layout, {}};
    result.pixels.reserve(result.bytesPerRow() * static_cast<std::size_t>(area.height));
    for (int row = area.top; row < area.top + area.height; ++row) {
        const auto start = image.pixels.begin()
            + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(row) * image.bytesPerRow()
                + static_cast<std::size_t>(area.left) * image.channels());
        result.pixels.insert(result.pixels.end(), start, start + static_cast<std::ptrdiff_t>(result.bytesPerRow()));
    }
    return result;
}

Rectangle ofWhole(Rectangle ofArea, PixelArea area, const Bitmap &image)
{
    const double width = image.width;
    const double height = image.height;
    const double below = image.height - area.top - area.height;
    return {(area.left + ofArea.x * area.width) / width, (below + ofArea.y * area.height) / height,
        ofArea.width * area.width / width, ofArea.height * area.height / height};
}

} // namespace nolfa::InkArea
