#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// Holds the name of an output that is being made, so that two conversions of this process that run at the same
/// time never choose the same one. Given back on destruction, when the file stands or the work failed.
class OutputClaim {
public:
    /// @param url  a path that names nothing, and that nobody holds
    OutputClaim(OutputClaim &&other) noexcept;
    OutputClaim &operator=(OutputClaim &&) = delete;
    OutputClaim(const OutputClaim &) = delete;
    OutputClaim &operator=(const OutputClaim &) = delete;
    ~OutputClaim();

    [[nodiscard]] const std::filesystem::path &url() const noexcept { return m_url; }

private:
    friend struct OutputClaims;
    explicit OutputClaim(std::filesystem::path url);

    std::filesystem::path m_url;
};

/// Names for new files that collide with nothing. Thread-safe.
namespace OutputNaming {

/// "base.ext" in the directory, or else the first free of "base 2.ext", "base 3.ext" and so on. Nothing is created.
/// A name that an unfinished conversion holds counts as taken.
[[nodiscard]] std::filesystem::path unique(
    const std::filesystem::path &directory, const std::string &base, std::string_view ext);

/// The same, held until the claim goes.
[[nodiscard]] OutputClaim claim(const std::filesystem::path &directory, const std::string &base, std::string_view ext);

/// A free name made of a file's stem and a suffix as it stands.
/// @param directory  absent: the file's own
[[nodiscard]] std::filesystem::path sibling(const std::filesystem::path &file, std::string_view suffix,
    std::string_view ext, const std::optional<std::filesystem::path> &directory);

} // namespace OutputNaming

} // namespace nolfa
