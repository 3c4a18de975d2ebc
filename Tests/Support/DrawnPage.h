#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace nolfa::testing {

/// A page as another program (Poppler) draws it: the media box without annotations, in colours on white.
struct DrawnPage {
    struct Pixel {
        std::uint8_t red = 0;
        std::uint8_t green = 0;
        std::uint8_t blue = 0;
        bool operator==(const Pixel &) const = default;
    };

    /// Columns and rows, both included; rows count from the top.
    struct Box {
        int left;
        int top;
        int right;
        int bottom;
    };

    int width = 0; ///< pixels
    int height = 0;
    std::vector<Pixel> pixels;

    [[nodiscard]] const Pixel &at(int x, int y) const;

    /// What surrounds every pixel that isn't white.
    [[nodiscard]] std::optional<Box> ink() const;

    bool operator==(const DrawnPage &) const = default;
};

/// Draws some pages in one run.
/// @param first, last  from 1; a page past the end is left out
/// @return none for a file that can't be drawn
[[nodiscard]] std::vector<DrawnPage> drawnPages(
    const std::filesystem::path &file, int first, int last, double dotsPerInch = 72);

/// Draws one page; fails the test when it can't.
[[nodiscard]] DrawnPage drawnPage(const std::filesystem::path &file, int page = 1, double dotsPerInch = 72);

/// The part of all pixels that differ by more than smoothed edges and a step of one pixel explain; 1 for pages of
/// different sizes.
[[nodiscard]] double difference(const DrawnPage &one, const DrawnPage &other);

} // namespace nolfa::testing
