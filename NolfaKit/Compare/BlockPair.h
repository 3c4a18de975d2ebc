#pragma once

#include "Compare/Change.h"
#include "Compare/KeyTable.h"

#include <array>
#include <cstdint>
#include <memory_resource>
#include <stop_token>
#include <string_view>
#include <vector>

namespace nolfa {

/// The words of two blocks that may be versions of each other: how much they share, and what changed. One object
/// serves many pairs, one after the other. Not thread-safe.
class BlockPair {
public:
    explicit BlockPair(const ComparisonOptions &options)
        : m_options(options)
    {
    }

    /// Cuts both texts into words, which are kept if there are no more than @p most of them together.
    /// @param before, after  must stay until the next call
    /// @throws CancellationError after a stop
    void read(std::string_view before, std::string_view after, std::size_t most, const std::stop_token &stop);

    /// How many words both have together.
    [[nodiscard]] std::size_t words() const { return m_sides[0].count + m_sides[1].count; }

    /// The part of their distinct words that the two share, 0 to 1; 1 when neither has any.
    [[nodiscard]] double jaccard() const;

    /// What became of each word. Only when the words were kept.
    /// @throws CancellationError after a stop
    [[nodiscard]] std::vector<DiffRun> runs(const std::stop_token &stop) const;

    /// Each text as a whole, if it has words.
    [[nodiscard]] std::vector<DiffRun> wholeRuns() const;

private:
    struct Side {
        std::string_view text;
        std::size_t count = 0;
        std::vector<std::string_view> words;
        std::vector<std::uint32_t> numbers; ///< of their keys
    };

    void readSide(std::size_t which, std::string_view text, std::size_t most, const std::stop_token &stop);
    [[nodiscard]] std::uint32_t keyNumber(std::string_view word);

    ComparisonOptions m_options;
    std::array<Side, 2> m_sides; ///< before and after
    KeyTable m_keys;
    std::vector<std::uint8_t> m_seen; ///< on which sides a key was met, by its number
    std::size_t m_shared = 0; ///< keys of both sides
    std::pmr::monotonic_buffer_resource m_folded; ///< the keys that aren't part of a text
};

} // namespace nolfa
