#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The shared strings of a workbook, one after the other in one piece of memory. An immutable value once read.
class SharedStrings {
public:
    SharedStrings() = default;
    explicit SharedStrings(const std::vector<std::string> &strings);

    /// Reads `sharedStrings.xml`: all texts of an item, rich-text and phonetic runs alike, with nothing between them.
    /// An absent part gives none.
    [[nodiscard]] static SharedStrings read(
        const std::optional<std::filesystem::path> &part, const std::stop_token &stop);

    [[nodiscard]] std::size_t size() const noexcept { return m_ends.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const;

    /// @throws ConversionError when the strings together become too large
    void append(std::string_view string);

private:
    std::string m_text;
    std::vector<std::size_t> m_ends;
};

} // namespace nolfa
