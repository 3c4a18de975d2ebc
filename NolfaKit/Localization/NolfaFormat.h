#pragma once

#include "Platform/Locale.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// What follows from the user's language and region. The locale and the paper are one each for the process;
/// thread-safe.
namespace NolfaFormat {

enum class Paper { usLetter, a4 };

inline constexpr std::array allPapers{Paper::usLetter, Paper::a4};

/// In points.
struct PaperSize {
    int width;
    int height;

    bool operator==(const PaperSize &) const = default;
};

/// "usLetter" or "a4".
[[nodiscard]] std::string_view rawValue(Paper paper);
[[nodiscard]] std::optional<Paper> paperFromRawValue(std::string_view text);
[[nodiscard]] PaperSize sizePoints(Paper paper);

/// Starts as the system's.
[[nodiscard]] Locale locale();
void setLocale(Locale locale);

/// The stored choice, or else what the region of the locale uses.
[[nodiscard]] Paper paper();
void setPaper(Paper paper);
/// Lets the region decide again.
void resetPaper();

/// @param bytes  a file's size
[[nodiscard]] std::string fileSize(std::int64_t bytes);

/// Year, full month and day.
[[nodiscard]] std::string longDate(std::chrono::system_clock::time_point date);

} // namespace NolfaFormat

} // namespace nolfa
