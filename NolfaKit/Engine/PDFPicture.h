#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// A picture in the form in which a PDF holds it. What was stored in the file goes over as it is wherever a PDF can
/// hold it: a JPEG whole, a PNG's compressed rows.
class PDFPicture {
public:
    enum class Colours { grey = 1, rgb = 3, cmyk = 4 };

    /// Samples of the picture, or of its transparency.
    struct Stream {
        std::string filter; ///< the entries of the stream's dictionary that say how it is packed
        std::vector<std::string_view> pieces; ///< into the file's bytes
        std::string packed; ///< instead of pieces, where the samples were packed anew

        [[nodiscard]] std::size_t size() const;
    };

    /// @throws ConversionError::unreadableInput when no decoder can make a picture of it; CancellationError
    [[nodiscard]] static PDFPicture read(const std::filesystem::path &url, const std::stop_token &stop);

    PDFPicture(PDFPicture &&) = default;
    PDFPicture &operator=(PDFPicture &&) = default;
    PDFPicture(const PDFPicture &) = delete;
    PDFPicture &operator=(const PDFPicture &) = delete;
    ~PDFPicture() = default;

    int width = 0; ///< pixels, as stored
    int height = 0;
    int orientation = 1; ///< how it is to be turned, by Exif's numbers 1 to 8
    int bits = 8; ///< of a sample
    int alphaBits = 8;
    Colours colours = Colours::rgb;
    std::string palette; ///< of three bytes each; then a sample is a place in it
    std::string profile; ///< the colour profile (ICC), deflated; empty without one
    std::string decode; ///< the Decode array, if it isn't the usual one
    std::string mask; ///< the colours that are left out, as a Mask array
    Stream samples;
    std::optional<Stream> alpha;

    /// Whether a viewer sees it on its side.
    [[nodiscard]] bool isTurned() const noexcept { return orientation > 4; }

private:
    PDFPicture() = default;

    [[nodiscard]] bool takeJPEG(const std::stop_token &stop);
    [[nodiscard]] bool takePNG(const std::stop_token &stop);
    void takeDecoded(const std::filesystem::path &url, const std::stop_token &stop);

    /// On the heap, so that views into it survive a move.
    std::shared_ptr<const std::string> m_bytes;
};

} // namespace nolfa
