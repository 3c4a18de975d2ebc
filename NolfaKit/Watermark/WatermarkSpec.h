#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <variant>

namespace nolfa {

/// The complete description of a text watermark: what it says, how it looks, where it goes and on which pages. A plain
/// value; page numbers count from 1.
struct WatermarkSpec {
    enum class Placement {
        diagonal, ///< one line through the page centre, at the rotation
        horizontalCenter, ///< one line through the page centre, level
        tiled ///< the line repeated over the page, at the rotation
    };
    static constexpr std::array allPlacements{Placement::diagonal, Placement::horizontalCenter, Placement::tiled};

    /// Which pages are stamped.
    class Pages {
    public:
        struct Range {
            std::int64_t lower;
            std::int64_t upper; ///< included
            bool operator==(const Range &) const = default;
        };
        struct Indices {
            std::set<std::int64_t> numbers;
            bool operator==(const Indices &) const = default;
        };
        struct All {
            bool operator==(const All &) const = default;
        };
        using Case = std::variant<Range, Indices, All>;

        static Pages range(std::int64_t lower, std::int64_t upper);
        static Pages indices(std::set<std::int64_t> numbers);
        static Pages all();

        [[nodiscard]] const Case &value() const noexcept { return m_value; }

        /// @param pageNumber  from 1
        [[nodiscard]] bool contains(std::int64_t pageNumber) const;

        bool operator==(const Pages &) const = default;

    private:
        explicit Pages(Case value);

        Case m_value;
    };

    std::string text; ///< the words to stamp; empty: nothing is drawn
    std::string fontName = "Newsreader24pt-SemiBold"; ///< PostScript name
    std::optional<double> fontSize; ///< points; absent: by the page
    std::uint32_t colorHex = 0x6E2433; ///< 0xRRGGBB; the upper byte has no effect
    double opacity = 0.18; ///< 0 to 1
    double rotationDegrees = -45; ///< counter-clockwise
    Placement placement = Placement::diagonal;
    double tileSpacing = 48; ///< points between tiles
    Pages pages = Pages::all();

    /// All the values above.
    [[nodiscard]] static const WatermarkSpec &defaultSpec();

    bool operator==(const WatermarkSpec &) const = default;
};

} // namespace nolfa
