#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>

namespace nolfa {

/// What reading one office package may cost. Far beyond any honest file; a crafted one ends here with a sentence
/// instead of taking all memory or all day.
namespace ReadingLimits {

/// Bytes of text that one reader keeps in memory.
inline constexpr std::size_t keptText = 192ULL << 20U;
/// Bytes of one value: a cell, a paragraph.
inline constexpr std::size_t keptValue = 32ULL << 20U;
/// Bytes of attributes that one collection of elements keeps.
inline constexpr std::size_t keptAttributes = 32ULL << 20U;
/// Bytes of XML that are read once more, because a list names a part several times.
inline constexpr std::uint64_t readAgain = 16ULL << 20U;
/// Cells of one sheet's table, the empty ones of its gaps included.
inline constexpr std::uint64_t tableCells = 64ULL << 20U;
/// Columns of one table; a spreadsheet has 16,384.
inline constexpr std::uint64_t tableColumns = 1U << 20U;
/// Cell formats of a workbook.
inline constexpr std::size_t cellFormats = 1U << 20U;

/// @throws ConversionError::engineFailure with the sentence about the size
[[noreturn]] void fail();

/// @throws as fail(), when @p size is larger than @p most
inline void require(std::uint64_t size, std::uint64_t most)
{
    if (size > most)
        fail();
}

} // namespace ReadingLimits

/// Counts what a list makes a conversion read again. What it reads once is bounded by what was unpacked.
class ReadingBudget {
public:
    /// @throws as ReadingLimits::fail(), when a part that was spent on before is no longer covered
    void spend(const std::filesystem::path &part);

private:
    std::set<std::filesystem::path> m_seen;
    std::uint64_t m_left = ReadingLimits::readAgain;
};

} // namespace nolfa
