#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The fonts to offer for a watermark, and the safe way from a name to a font. Thread-safe.
namespace WatermarkFont {

/// A font that is there.
struct Font {
    std::string postScriptName;
    double size = 0; ///< points

    bool operator==(const Font &) const = default;
};

/// The typefaces of the application's own design system.
inline constexpr std::array<std::string_view, 3> brand{
    "Newsreader24pt-SemiBold", "HankenGrotesk-SemiBold", "IBMPlexMono-Medium"};

/// The fonts of the operating system, the PostScript name of one for each family, in ascending order. Found anew at
/// each call. Families whose name begins with a full stop are left out, and what can't be embedded as outlines.
[[nodiscard]] std::vector<std::string> system();

/// The font of exactly that name; for a name that isn't there, Helvetica, or what this machine has in its place.
/// @throws PlatformError on a machine without any font
[[nodiscard]] Font resolve(std::string_view name, double size);

} // namespace WatermarkFont

} // namespace nolfa
