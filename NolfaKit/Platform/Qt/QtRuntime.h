#pragma once

#include <filesystem>

namespace nolfa::QtRuntime {

/// Sees to it that the process has what fonts and pictures of Qt need. A window's own application serves; a process
/// without one gets an application without a screen, on a thread of its own, which stays until the process ends.
/// Thread-safe, and costs nothing the second time.
/// @throws PlatformError
void ensure();

/// Sees to it that Qt's main thread is one that stays. Enough for pictures, and cheaper than ensure(), which may
/// follow. Thread-safe.
void ensureMainThread();

/// Makes the fonts in a folder known, once for each folder. Thread-safe.
void addFonts(const std::filesystem::path &folder);

} // namespace nolfa::QtRuntime
