#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa::testing {

/// A sample of a made picture, from the top left corner; in the picture's own bits.
using Sample = std::function<unsigned int(int column, int row, int channel)>;

/// A PNG file, written by code of the tests' own.
struct PNGPicture {
    int width = 4;
    int height = 4;
    int bits = 8;
    int colourType = 2; ///< 0 grey, 2 colours, 3 palette, 4 grey and alpha, 6 colours and alpha
    bool isInterlaced = false;
    int filter = 0; ///< of every row: 0 none, 1 sub, 2 up
    std::string palette;
    std::string transparency;
    std::vector<std::pair<std::string, std::string>> otherChunks; ///< in front of the data
    Sample sample = [](int column, int row, int channel) {
        return static_cast<unsigned int>(column * 7 + row * 3 + channel) & 1U;
    };

    [[nodiscard]] std::string file() const;
    /// The compressed rows, as they lie in the file.
    [[nodiscard]] std::string data() const;
    [[nodiscard]] int channels() const;
};

/// A chunk with its length and checksum.
[[nodiscard]] std::string pngChunk(std::string_view name, std::string_view content);

/// A JPEG file, written by libjpeg.
struct JPEGPicture {
    int width = 16;
    int height = 16;
    int components = 3; ///< 1 grey, 3 colours, 4 inks
    bool isProgressive = false;
    bool hasAdobeMarker = true; ///< of four components
    int orientation = 0; ///< of Exif; 0 leaves it out
    std::string profile; ///< ICC
    Sample sample = [](int column, int row, int channel) {
        return static_cast<unsigned int>(column * 13 + row * 5 + channel * 70) & 255U;
    };

    [[nodiscard]] std::string file() const;
};

/// A colour profile that is no more than its header, for "GRAY", "RGB " or "CMYK".
[[nodiscard]] std::string profileHeader(std::string_view space);

} // namespace nolfa::testing
