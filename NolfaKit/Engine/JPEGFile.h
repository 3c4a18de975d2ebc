#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// What the markers of a JPEG file (ITU-T T.81) say about its picture. The compressed data itself is not looked into.
struct JPEGFile {
    int width = 0; ///< pixels, as stored
    int height = 0;
    int components = 0; ///< 1 grey, 3 colours, 4 inks
    int bits = 0; ///< of a sample
    bool isProgressive = false;
    bool hasAdobeMarker = false; ///< written by programs that store inks inverted
    bool isPlainRGB = false; ///< no luma and chroma, by the names of the components
    int orientation = 1; ///< of Exif, 1 to 8
    std::size_t scans = 0;
    std::size_t dataStart = 0; ///< where the compressed data of the first scan begins
    std::string profile; ///< the colour profile (ICC), put together from its pieces; empty without one

    /// @return absent when the file isn't a whole JPEG of a usual kind: baseline or progressive, by Huffman codes
    [[nodiscard]] static std::optional<JPEGFile> read(std::string_view bytes);

    /// Whether decoding would take more memory or time than an honest picture does: a few hundred bytes can ask for
    /// many passes over billions of pixels.
    [[nodiscard]] static bool isBomb(std::string_view bytes);
};

} // namespace nolfa
