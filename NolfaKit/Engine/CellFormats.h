#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// Which cells of a workbook are dates or times, and how those are written. Custom formats aren't read: such a cell
/// is general. An immutable value.
class CellFormats {
public:
    enum class Kind { general, date, time, dateTime };

    /// @param numberFormats  the number-format id of each cell format, by style number
    explicit CellFormats(std::vector<std::int64_t> numberFormats);

    /// Reads `styles.xml`; an absent part gives no formats.
    [[nodiscard]] static CellFormats fromStyles(
        const std::optional<std::filesystem::path> &part, const std::stop_token &stop);

    [[nodiscard]] Kind kind(std::optional<std::int64_t> style) const;

    /// Appends what a cell of that kind shows: a serial number as a date ("2023-03-15"), a time of day ("06:00:00") or
    /// both; anything that is no number unchanged.
    static void appendRendered(std::string &text, std::string_view value, Kind kind);
    [[nodiscard]] static std::string render(std::string_view value, Kind kind);

private:
    std::vector<std::int64_t> m_numberFormats;
};

} // namespace nolfa
