#pragma once

#include "Engine/Scratch.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

namespace nolfa {

/// The folder into which an office package was unpacked. What lies there isn't trusted: a part is a regular file
/// inside the folder, never a link, and never reached through one that leads out. Not thread-safe.
class UnpackedPackage {
public:
    explicit UnpackedPackage(const std::filesystem::path &root);

    /// Unpacks an archive into a Scratch that lives as long as the package: in memory when the archive is small and
    /// the machine has room, else, and always when the environment names a place, among the temporary files.
    /// @throws ConversionError, and the file system's error, as ArchiveTool::unzip() and Scratch()
    [[nodiscard]] static UnpackedPackage unpack(const std::filesystem::path &archive, const std::stop_token &stop);

    [[nodiscard]] const std::filesystem::path &root() const { return m_root; }

    /// The part at a path, if there is one. The path may hold ".." steps.
    [[nodiscard]] std::optional<std::filesystem::path> part(const std::filesystem::path &path) const;

    /// The parts right inside a folder whose extension is exactly @p ext, sorted by name, code point by code point.
    /// A folder that can't be listed has none.
    [[nodiscard]] std::vector<std::filesystem::path> parts(
        const std::filesystem::path &folder, std::string_view ext) const;

private:
    explicit UnpackedPackage(std::unique_ptr<const Scratch> scratch);

    /// The folder's canonical path, or empty when it is none of ours.
    [[nodiscard]] const std::filesystem::path &canonicalFolder(const std::filesystem::path &folder) const;

    std::unique_ptr<const Scratch> m_scratch; ///< absent when the folder is somebody else's
    std::filesystem::path m_root; ///< canonical
    /// Folders that were asked for before: a deck has three parts a slide, all in a few of them.
    mutable std::map<std::filesystem::path, std::filesystem::path> m_folders;
};

} // namespace nolfa
