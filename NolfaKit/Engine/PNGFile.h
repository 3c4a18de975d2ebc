#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string_view>
#include <vector>

namespace nolfa {

/// The chunks of a PNG file (W3C PNG, second edition), and its pixels as they were stored. Borrows the file's bytes.
struct PNGFile {
    enum class Colours : std::uint8_t { grey = 0, rgb = 2, palette = 3, greyAlpha = 4, rgba = 6 };

    int width = 0; ///< pixels
    int height = 0;
    int bits = 0; ///< of a sample: 1, 2, 4, 8 or 16
    Colours colours = Colours::grey;
    bool isInterlaced = false;
    std::string_view palette; ///< three bytes a colour
    std::string_view transparency; ///< the colour that is left out (two bytes a sample), or an alpha for each of the
                                   ///< palette's first colours
    std::string_view profile; ///< the colour profile (ICC), deflated; empty without one
    std::vector<std::string_view> data; ///< pieces of the one deflated stream of rows

    /// By the first bytes.
    [[nodiscard]] static bool isPNG(std::string_view bytes);

    /// Critical chunks with a wrong checksum are damage, others are left out.
    /// @return absent when it isn't a whole and well-formed PNG
    [[nodiscard]] static std::optional<PNGFile> read(std::string_view bytes);

    [[nodiscard]] int channels() const;
    /// Of a row of pixels.
    [[nodiscard]] std::size_t bytesPerRow() const { return bytesPerRow(width); }
    [[nodiscard]] std::size_t bytesPerRow(int pixels) const;

    /// Whether the stream of rows is whole.
    /// @throws CancellationError after a stop
    [[nodiscard]] bool isStreamWhole(const std::stop_token &stop) const;

    /// Gives out the rows from the top, without filters: samples of `bits` bits, the first in the highest bits.
    /// @return whether the stream held them all; false as well for an interlaced picture of more than 256 MiB
    /// @throws CancellationError after a stop
    [[nodiscard]] bool readRows(
        const std::function<void(std::span<const std::uint8_t> row)> &give, const std::stop_token &stop) const;
};

} // namespace nolfa
