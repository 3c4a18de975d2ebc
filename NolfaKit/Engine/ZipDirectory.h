#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace nolfa {

/// The list of contents at the end of a zip archive (APPNOTE 4.3.12 and 4.3.16). Thread-safe.
namespace ZipDirectory {

/// What an archive claims of itself.
struct Totals {
    std::uint64_t entries = 0;
    std::uint64_t unpacked = 0; ///< bytes
    std::uint64_t packed = 0; ///< bytes

    bool operator==(const Totals &) const = default;
};

/// Whether a file has the record that ends an archive. Reads its last 64 KiB.
[[nodiscard]] bool hasEnd(const std::filesystem::path &archive);

/// The sums over the list, when there can be no two opinions about it: it is whole, ends where its end record begins,
/// and counts as the record says. Absent for anything else, sound archives of 4 GiB (ZIP64) and lists of more than
/// 16 MiB included; ask unzip then.
[[nodiscard]] std::optional<Totals> totals(const std::filesystem::path &archive);

} // namespace ZipDirectory

} // namespace nolfa
