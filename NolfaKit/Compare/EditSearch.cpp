#include "Compare/EditSearch.h"

#include "Platform/CancellationError.h"

#include <algorithm>

namespace nolfa {

namespace {

/// How far a diagonal is reached that isn't part of a pass: less than any other.
constexpr std::int32_t nowhere = -1;

constexpr std::int32_t bitsPerWord = 64;

} // namespace

EditSearch::EditSearch(
    std::span<const std::uint32_t> left, std::span<const std::uint32_t> right, const std::stop_token &stop)
    : m_left(left)
    , m_right(right)
    , m_stop(stop)
{
}

void EditSearch::prepare(std::int64_t limit)
{
    // A diagonal outside on each side is read, never written to.
    m_middle = limit + 2;
    m_reach.assign(static_cast<std::size_t>(2 * m_middle + 1), nowhere);
    m_low = m_high = 0;
    m_passes.clear();
    m_bits.clear();
}

std::optional<std::vector<EditSearch::Step>> EditSearch::steps(std::int64_t limit)
{
    prepare(limit);
    const auto corner = static_cast<std::int64_t>(m_left.size()) - static_cast<std::int64_t>(m_right.size());
    for (std::int64_t d = 0; d <= limit; ++d) {
        throwIfStopped(m_stop);
        // What can't come back to the corner any more.
        std::int64_t low = std::max<std::int64_t>(m_low, corner - (limit - d));
        const std::int64_t high = std::min<std::int64_t>(m_high, corner + (limit - d));
        low += (low - d) & 1;
        if (low > high)
            return std::nullopt;
        if (runPass(static_cast<std::int32_t>(low), static_cast<std::int32_t>(high)))
            return wayBack();
    }
    return std::nullopt;
}

/// @return whether the end of both sequences was reached
bool EditSearch::runPass(std::int32_t low, std::int32_t high)
{
    const auto n = static_cast<std::int32_t>(m_left.size());
    const auto m = static_cast<std::int32_t>(m_right.size());
    const std::uint32_t *left = m_left.data();
    const std::uint32_t *right = m_right.data();
    m_passes.push_back({low, m_bits.size()});
    m_low = low - 1;
    m_high = high + 1;
    std::uint64_t word = 0;
    std::int32_t bit = 0;
    std::int32_t *reached = &reach(low);
    std::int32_t before = reached[-1];
    for (std::int32_t k = low; k <= high; k += 2, reached += 2) {
        const std::int32_t after = reached[1];
        const bool isInsertion = before < after;
        std::int32_t x = isInsertion ? after : before + 1;
        before = after;
        word |= static_cast<std::uint64_t>(isInsertion) << static_cast<unsigned>(bit);
        if (++bit == bitsPerWord) {
            m_bits.push_back(word);
            word = 0;
            bit = 0;
        }
        std::int32_t y = x - k;
        if (x < n && y < m && left[x] == right[y]) {
            x = passOverEqual(x, k);
            y = x - k;
        }
        *reached = x;
        if (y >= m) {
            m_low = k + 1;
            if (x >= n) {
                m_bits.push_back(word);
                return true;
            }
        }
        if (x >= n) {
            m_high = k - 1;
            break;
        }
    }
    m_bits.push_back(word);
    return false;
}

/// From a place on a diagonal to where the two sequences differ next.
std::int32_t EditSearch::passOverEqual(std::int32_t x, std::int32_t diagonal) const
{
    const std::int32_t start = x;
    const auto end = static_cast<std::int32_t>(
        std::min(m_left.size(), static_cast<std::size_t>(static_cast<std::int64_t>(m_right.size()) + diagonal)));
    const std::uint32_t *left = m_left.data();
    const std::uint32_t *right = m_right.data() - diagonal;
    while (x < end && left[x] == right[x])
        ++x;
    constexpr std::int32_t much = 1 << 16;
    if (x - start > much)
        throwIfStopped(m_stop);
    return x;
}

bool EditSearch::isInsertion(const Pass &pass, std::int32_t diagonal) const
{
    const auto place = static_cast<std::size_t>((diagonal - pass.low) / 2);
    return (m_bits[pass.firstWord + place / bitsPerWord] >> place % bitsPerWord & 1U) != 0;
}

std::vector<EditSearch::Step> EditSearch::wayBack() const
{
    std::vector<Step> way(m_passes.size() - 1);
    auto diagonal = static_cast<std::int32_t>(m_left.size()) - static_cast<std::int32_t>(m_right.size());
    for (std::size_t d = way.size(); d > 0; --d) {
        const bool insertion = isInsertion(m_passes[d], diagonal);
        way[d - 1] = insertion ? Step::insertion : Step::deletion;
        diagonal += insertion ? 1 : -1;
    }
    return way;
}

} // namespace nolfa
