#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace nolfa {

/// Small deeds and questions about files. All are thread-safe, and only what says so throws for what the disc says.
namespace File {

/// The whole of a regular file. Absent when it can't be opened or read.
/// @throws CancellationError after a stop
[[nodiscard]] std::optional<std::string> contents(const std::filesystem::path &file, const std::stop_token &stop = {});

/// Bytes of a regular file from an offset on: fewer than asked for past its end, none when it can't be read.
[[nodiscard]] std::string range(const std::filesystem::path &file, std::uint64_t offset, std::size_t size);

/// Makes the file hold just these bytes.
/// @throws std::filesystem::filesystem_error when it can't be written whole
void write(const std::filesystem::path &file, std::string_view bytes);

/// A regular file that this process may read.
[[nodiscard]] bool isReadable(const std::filesystem::path &file);

/// A regular file that this process may execute.
[[nodiscard]] bool isExecutable(const std::filesystem::path &file);

/// Anything of that name in the folder, a dangling link included.
[[nodiscard]] bool isNameTaken(const std::filesystem::path &path);

/// Whether a folder lies in memory (tmpfs) and not on a disc.
[[nodiscard]] bool isInMemory(const std::filesystem::path &folder);

/// Makes a folder that only its owner may enter, its parents included.
/// @throws std::filesystem::filesystem_error
void makePrivateFolder(const std::filesystem::path &folder);

/// Removes a folder and all that lies in it, whatever permissions the content was given. Swallows failures.
void removeFolder(const std::filesystem::path &folder) noexcept;

} // namespace File

} // namespace nolfa
