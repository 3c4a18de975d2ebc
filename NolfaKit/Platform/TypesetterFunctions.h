#pragma once

#include "Platform/Typesetter.h"

namespace nolfa {

/// What Pango, Cairo and fontconfig do for Typesetter. They lie in a library of their own, which is loaded at the
/// first use, for the same reason as QtFunctions.
struct TypesetterFunctions {
    bool (*hasFont)(std::string_view postScriptName);
    std::optional<std::string> (*substitute)(std::string_view family);
    std::vector<FontFamily> (*families)();
    /// @param text  UTF-8 throughout
    TypesetLine (*line)(std::string_view text, std::string_view postScriptName, const Colour &colour);

    /// @param folder  of the bundle's fonts; counts at the first call only
    void (*useFolder)(const std::filesystem::path &folder);
};

} // namespace nolfa
