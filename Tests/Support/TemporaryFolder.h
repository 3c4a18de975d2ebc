#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa::testing {

/// An empty folder of a test's own, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

    /// Writes a file, with the folders above it, and returns its path.
    std::filesystem::path write(
        std::string_view name, std::string_view content) const; // NOLINT(modernize-use-nodiscard)

    /// The names in the folder, in order.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path m_path;
};

/// The names in a folder, in order.
[[nodiscard]] std::vector<std::string> namesIn(const std::filesystem::path &folder);

/// The content of a file; fails the test when there is none.
[[nodiscard]] std::string contentOf(const std::filesystem::path &file);

} // namespace nolfa::testing
