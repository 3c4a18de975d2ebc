#include "Engine/RowPacker.h"

#include <algorithm>
#include <cstdlib>

namespace nolfa {

namespace {

/// The filters of PNG (section 9 of the standard) that are worth trying, by their numbers.
enum Filter : std::uint8_t { none = 0, sub = 1, up = 2, paeth = 4 };
constexpr std::array<Filter, 4> filters{none, sub, up, paeth};

int paethPrediction(int left, int above, int aboveLeft)
{
    const int toLeft = std::abs(above - aboveLeft);
    const int toAbove = std::abs(left - aboveLeft);
    const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft)
        return left;
    return toAbove <= toAboveLeft ? above : aboveLeft;
}

template <Filter filter>
std::uint64_t apply(std::span<const std::uint8_t> row, std::span<const std::uint8_t> above, std::size_t step,
    std::vector<std::uint8_t> &result)
{
    std::uint64_t cost = 0;
    result.front() = filter;
    for (std::size_t index = 0; index < row.size(); ++index) {
        const int left = index >= step ? row[index - step] : 0;
        int predicted = 0;
        if constexpr (filter == sub)
            predicted = left;
        if constexpr (filter == up)
            predicted = above[index];
        if constexpr (filter == paeth)
            predicted = paethPrediction(left, above[index], index >= step ? above[index - step] : 0);
        const auto difference = static_cast<std::uint8_t>(row[index] - predicted);
        result[index + 1] = difference;
        cost += static_cast<std::uint64_t>(std::abs(static_cast<std::int8_t>(difference)));
    }
    return cost;
}

} // namespace

RowPacker::RowPacker(std::size_t bytesPerRow, std::size_t step)
    : m_step(step)
    , m_above(bytesPerRow)
{
    m_candidates.fill(Row(bytesPerRow + 1));
}

void RowPacker::append(std::span<const std::uint8_t> row)
{
    // The usual guess: the filter that leaves the smallest differences packs best.
    const std::array costs{apply<none>(row, m_above, m_step, m_candidates[0]),
        apply<sub>(row, m_above, m_step, m_candidates[1]), apply<up>(row, m_above, m_step, m_candidates[2]),
        apply<paeth>(row, m_above, m_step, m_candidates[3])};
    static_assert(costs.size() == filters.size());
    const auto *const best = std::ranges::min_element(costs);
    m_deflater.append(m_candidates[static_cast<std::size_t>(best - costs.data())], m_packed);
    std::ranges::copy(row, m_above.begin());
}

std::string RowPacker::finish()
{
    m_deflater.finish(m_packed);
    return std::move(m_packed);
}

} // namespace nolfa
