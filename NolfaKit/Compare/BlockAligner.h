#pragma once

#include "Compare/Change.h"

#include <cstddef>
#include <span>
#include <stop_token>
#include <vector>

namespace nolfa {

/// Decides which blocks of two documents are the same, which came, went or were rewritten, and what changed inside
/// those. Blocks that stand exactly once in both documents are pinned to each other as long as they keep their order;
/// between them MyersDiff runs over the blocks; what it takes out and puts in at one place is paired by position, and
/// a pair that shares enough words counts as rewritten. Text that moved is thus deleted here and inserted there.
/// Pure; may run on any thread.
namespace BlockAligner {

/// Which part of their words, distinct ones counted once, two blocks must share to count as one rewritten.
inline constexpr double pairingThreshold = 0.4;

struct Result {
    std::vector<Change> changes; ///< in the order of the documents
    std::size_t unchangedBlocks = 0;

    bool operator==(const Result &) const = default;
};

/// Two blocks that are pinned to each other, by position.
struct Anchor {
    std::size_t left;
    std::size_t right;

    bool operator==(const Anchor &) const = default;
};

/// Takes the blocks over, so that those that changed need no copy.
/// @throws CancellationError after a stop
[[nodiscard]] Result align(std::vector<Block> left, std::vector<Block> right, const ComparisonOptions &options,
    const std::stop_token &stop = {});

/// The blocks that occur once on each side, by their loose hash: as many as keep their order, which is increasing on
/// both sides. Blocks with an empty hash are left out.
[[nodiscard]] std::vector<Anchor> anchors(std::span<const Block> left, std::span<const Block> right);

/// The longest run of anchors, not necessarily neighbours, that increases strictly on the right. By patience sorting:
/// each anchor is put on the first pile whose top isn't below it, and remembers the top of the pile before.
[[nodiscard]] std::vector<Anchor> longestIncreasing(std::span<const Anchor> anchors);

} // namespace BlockAligner

} // namespace nolfa
