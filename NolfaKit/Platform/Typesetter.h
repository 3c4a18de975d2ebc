#pragma once

#include "Platform/TypesetLine.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// A colour of the screen, each part from 0 to 1.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const Colour &) const = default;
};

/// The faces of one family, the one to begin with first.
struct FontFamily {
    std::string name;
    std::vector<std::string> members; ///< PostScript names
};

/// Fonts of the machine and of the application's bundle, and lines of text set in them. Only outline fonts count:
/// neither bitmaps nor coloured pictures can be stamped in a colour. Thread-safe; what is installed while the process
/// runs is noticed.
namespace Typesetter {

/// Whether there is a font of exactly this PostScript name.
[[nodiscard]] bool hasFont(std::string_view postScriptName);

/// The PostScript name of the font that this machine has in the place of a family. Absent on a machine without fonts.
[[nodiscard]] std::optional<std::string> substitute(std::string_view family);

/// The machine's families, without those of the bundle, in no order.
[[nodiscard]] std::vector<FontFamily> families();

/// Sets one line. Characters that the font lacks come from other fonts of the machine, and what would end the line
/// shows as a blank.
/// @param text            UTF-8; bytes that are none show as replacement characters
/// @param postScriptName  of a font that is there
/// @throws PlatformError when there is no such font, or the line can't be drawn
[[nodiscard]] TypesetLine line(std::string_view text, std::string_view postScriptName, const Colour &colour);

} // namespace Typesetter

} // namespace nolfa
