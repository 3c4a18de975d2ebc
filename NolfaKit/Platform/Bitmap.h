#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nolfa {

/// A decoded picture: 8 bits a channel, rows from the top, without padding.
struct Bitmap {
    /// How a pixel's bytes follow one another. Alpha isn't multiplied into the colours.
    enum class Layout { grey = 1, rgb = 3, rgba = 4 };

    int width = 0; ///< pixels
    int height = 0; ///< pixels
    Layout layout = Layout::rgb;
    std::vector<std::uint8_t> pixels; ///< height × width × channels bytes

    [[nodiscard]] std::size_t channels() const noexcept { return static_cast<std::size_t>(layout); }
    [[nodiscard]] std::size_t bytesPerRow() const noexcept { return static_cast<std::size_t>(width) * channels(); }

    bool operator==(const Bitmap &) const = default;
};

} // namespace nolfa
