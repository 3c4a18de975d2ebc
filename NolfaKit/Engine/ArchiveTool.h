#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>

namespace nolfa {

/// Packs and unpacks the zip containers of the office formats with the system's zip and unzip, which get 60 seconds
/// a run. What is unpacked isn't trusted: before a file is written, the names of the entries, their number and their
/// sizes are checked. Thread-safe: two archives share nothing.
namespace ArchiveTool {

/// What an archive may claim and still be opened.
struct Limits {
    std::size_t entries = 100'000;
    std::uint64_t totalSize = 2ULL << 30U; ///< bytes, unpacked
    /// How many times larger than packed an archive may become, once it becomes larger than ratioFloor.
    std::uint64_t ratio = 100;
    std::uint64_t ratioFloor = 64ULL << 20U;
};

/// An archive that may be unpacked, and what it claims of itself.
struct Checked {
    std::string argument; ///< its path, as unzip takes it
    std::uint64_t entries;
    std::uint64_t unpacked; ///< bytes
};

/// Writes an archive of all that lies in a directory, with names relative to it. An archive that stood there is gone.
/// @throws ConversionError: @c engineFailure, @c timedOut, @c cancelled
void zip(const std::filesystem::path &directory, const std::filesystem::path &archive, const std::stop_token &stop);

/// Looks at what an archive lists, before a file of it is written.
/// @throws ConversionError as zip()
[[nodiscard]] Checked check(
    const std::filesystem::path &archive, const std::stop_token &stop, const Limits &limits = {});

/// Unpacks what was checked into a directory, which is made if need be; what stands there is overwritten.
/// @param largestFile  bytes; an archive with a larger file is refused half-way. Absent: all that it claims together
/// @throws ConversionError as zip(); the file system's error if the directory can't be made
void unpack(const Checked &archive, const std::filesystem::path &destination, const std::stop_token &stop,
    std::optional<std::uint64_t> largestFile = std::nullopt);

/// Checks and unpacks into a directory, which is made if need be; what stands there is overwritten.
/// @throws ConversionError as zip(); the file system's error if the directory can't be made
void unzip(const std::filesystem::path &archive, const std::filesystem::path &destination, const std::stop_token &stop,
    const Limits &limits = {});

} // namespace ArchiveTool

} // namespace nolfa
