#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The folder of what the application brings along: tools, fonts, reference documents, and Info.json with the
/// bundle's values. The same in the build tree and when installed. An immutable value.
class Bundle {
public:
    explicit Bundle(std::filesystem::path root);

    /// `share/nolfa` beside the running executable's `bin`.
    [[nodiscard]] static Bundle main();

    [[nodiscard]] const std::filesystem::path &root() const { return m_root; }

    /// A file by name and extension (may be empty), in a subfolder or at the top. Absent when nothing is there.
    [[nodiscard]] std::optional<std::filesystem::path> resource(
        std::string_view name, std::string_view extension = {}, std::string_view subfolder = {}) const;

    /// Every file of an extension in a subfolder or at the top, by name. Empty when there is none.
    [[nodiscard]] std::vector<std::filesystem::path> resources(
        std::string_view extension, std::string_view subfolder = {}) const;

    /// A text of Info.json. Read anew at each call; absent when it isn't there.
    [[nodiscard]] std::optional<std::string> value(std::string_view key) const;

private:
    std::filesystem::path m_root;
};

} // namespace nolfa
