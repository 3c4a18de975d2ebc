#pragma once

#include "Platform/Typesetter.h"

#include <fontconfig/fontconfig.h>
#include <memory>

namespace nolfa {

/// The fonts that can be stamped, as fontconfig knows them. Thread-safe.
namespace FontLibrary {

/// One state of the machine's fonts. Read-only, and kept by whoever uses it.
using Fonts = std::shared_ptr<FcConfig>;
using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

/// The fonts as they are now.
/// @throws PlatformError
[[nodiscard]] Fonts current();

/// A font of exactly this PostScript name; null when there is none. The bundle's come first.
[[nodiscard]] Pattern find(const Fonts &fonts, std::string_view postScriptName);

[[nodiscard]] bool hasFont(std::string_view postScriptName);
[[nodiscard]] std::optional<std::string> substitute(std::string_view family);
[[nodiscard]] std::vector<FontFamily> families();
void useFolder(const std::filesystem::path &folder);

} // namespace FontLibrary

} // namespace nolfa
