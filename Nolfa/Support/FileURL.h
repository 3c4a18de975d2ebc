#pragma once

#include <QUrl>
#include <filesystem>
#include <optional>

namespace nolfa {

/// Between the addresses of the screens and the paths of the engine, byte for byte: the names of files need not be
/// UTF-8. Thread-safe.
namespace FileURL {

/// Absent for the address of anything but a file of this machine.
[[nodiscard]] std::optional<std::filesystem::path> toPath(const QUrl &url);

/// @param path  absolute
[[nodiscard]] QUrl fromPath(const std::filesystem::path &path);

} // namespace FileURL

} // namespace nolfa
