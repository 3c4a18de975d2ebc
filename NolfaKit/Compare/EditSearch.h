#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace nolfa {

/// The greedy search of MyersDiff over numbered elements: which way leads through the grid of both sequences.
///
/// A pass d finds how far each diagonal k = x - y is reached with d differences. The plain algorithm keeps every pass
/// whole to find its way back. Here one bit is kept for each place of a pass, whether it was entered by an insertion or
/// by a deletion: the bits give the diagonals of the way from its end to its start, and following these forward again
/// gives the places. Diagonals that left the grid, or that are too far from its corner for the differences that remain,
/// are dropped: no place on the way depends on theirs.
class EditSearch {
public:
    enum class Step : std::uint8_t { deletion, insertion };

    EditSearch(std::span<const std::uint32_t> left, std::span<const std::uint32_t> right, const std::stop_token &stop);

    /// The differences in order, the shortest such list; between two of them all equal elements are passed over.
    /// @param limit  how many there may be, at most the sum of both lengths
    /// @return absent when there are more
    /// @throws CancellationError after a stop
    [[nodiscard]] std::optional<std::vector<Step>> steps(std::int64_t limit);

private:
    /// What a pass leaves behind.
    struct Pass {
        std::int32_t low; ///< its first diagonal; the others follow in steps of two
        std::size_t firstWord; ///< where its bits begin: set for an insertion
    };

    void prepare(std::int64_t limit);
    bool runPass(std::int32_t low, std::int32_t high);
    [[nodiscard]] std::int32_t passOverEqual(std::int32_t x, std::int32_t diagonal) const;
    [[nodiscard]] bool isInsertion(const Pass &pass, std::int32_t diagonal) const;
    [[nodiscard]] std::vector<Step> wayBack() const;
    [[nodiscard]] std::int32_t &reach(std::int32_t diagonal)
    {
        return m_reach[static_cast<std::size_t>(m_middle + diagonal)];
    }

    std::span<const std::uint32_t> m_left;
    std::span<const std::uint32_t> m_right;
    const std::stop_token &m_stop;
    std::vector<std::int32_t> m_reach; ///< x of each diagonal
    std::int64_t m_middle = 0; ///< where the diagonal 0 is in it
    std::int32_t m_low = 0; ///< the diagonals of the next pass
    std::int32_t m_high = 0;
    std::vector<Pass> m_passes;
    std::vector<std::uint64_t> m_bits;
};

} // namespace nolfa
