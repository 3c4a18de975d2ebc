#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace nolfa::testing {

/// CRC-32 as zip and PNG use it.
[[nodiscard]] std::uint32_t crc32(std::string_view bytes);

/// A zip archive made entry by entry, crafted ones included: any name, links, sizes that lie. Entries are stored.
class ZipBuilder {
public:
    ZipBuilder &add(std::string_view name, std::string_view content);
    ZipBuilder &addLink(std::string_view name, std::string_view target);
    /// An entry that is deflated already, with whatever it claims of itself.
    ZipBuilder &addDeflated(
        std::string_view name, std::string_view deflated, std::uint32_t crc, std::uint32_t claimedSize);
    /// Entries from now on say that they are encrypted.
    ZipBuilder &encrypted();

    [[nodiscard]] std::string bytes() const;
    std::filesystem::path write(const std::filesystem::path &file) const; // NOLINT(modernize-use-nodiscard)

private:
    ZipBuilder &add(std::string_view name, std::string_view content, std::uint32_t mode, std::size_t size);

    std::string m_files;
    std::string m_directory;
    std::size_t m_count = 0;
    std::uint32_t m_flags = 0;
    std::uint32_t m_method = 0;
    std::uint32_t m_crc = 0;
};

} // namespace nolfa::testing
