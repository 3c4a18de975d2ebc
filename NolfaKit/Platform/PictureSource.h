#pragma once

#include "Platform/Bitmap.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <string_view>

namespace nolfa {

/// A picture that is still packed. Belongs to one thread at a time; several may work side by side.
class PictureSource {
public:
    /// In pixels, as stored: before the orientation is applied.
    struct Dimensions {
        int width;
        int height;

        bool operator==(const Dimensions &) const = default;
    };

    PictureSource() = default;
    PictureSource(const PictureSource &) = delete;
    PictureSource &operator=(const PictureSource &) = delete;
    virtual ~PictureSource() = default;

    /// @param bytes  a whole PNG, JPEG, GIF, BMP, TIFF or WebP file (the last two where the system reads them); what
    ///               it is shows in its content. Must outlive the source.
    /// @param stop   ends the decoding soon after it is requested; the picture is then absent
    /// @return absent when it is no picture
    /// @throws PlatformError when the decoder can't be loaded
    [[nodiscard]] static std::unique_ptr<PictureSource> open(std::string_view bytes, const std::stop_token &stop);

    /// Absent when the picture doesn't tell; both at least 1.
    [[nodiscard]] virtual std::optional<Dimensions> pixelSize() = 0;

    /// Decodes straight to a size, with the orientation applied. Never enlarges.
    /// @param longest  of the longer side, in pixels, at least 1
    /// @return absent when the data is damaged, or the picture too large to hold
    [[nodiscard]] virtual std::optional<Bitmap> thumbnail(int longest) = 0;

    /// Decodes at full size, as it is stored.
    [[nodiscard]] virtual std::optional<Bitmap> fullPicture() = 0;
};

} // namespace nolfa
