#pragma once

#include "Compare/WordTokenizer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

namespace nolfa {

/// A step from the left sequence to the right one. Positions are in the sequences that were given.
struct DiffOperation {
    struct Equal {
        std::size_t left;
        std::size_t right;
        std::size_t length;
        bool operator==(const Equal &) const = default;
    };
    struct Delete {
        std::size_t left;
        std::size_t length;
        bool operator==(const Delete &) const = default;
    };
    struct Insert {
        std::size_t right;
        std::size_t length;
        bool operator==(const Insert &) const = default;
    };

    std::variant<Equal, Delete, Insert> value;

    bool operator==(const DiffOperation &) const = default;
};

/// The shortest edit script between two sequences, by the greedy search forward of E. W. Myers, "An O(ND) Difference
/// Algorithm and Its Variations" (Algorithmica 1, 1986): where a deletion and an insertion lead equally far, the
/// deletion is taken. Beyond a bound of differences the middle counts as replaced whole. Pure and thread-safe.
namespace MyersDiff {

/// In the order of the documents; covers each side exactly once. Operations of one kind never touch.
/// @param maxD  how many differences are searched for at most; absent: maxEditDistance() of what is left when equal
/// starts and ends are off. One is always allowed.
/// @throws CancellationError after a stop
/// @{
[[nodiscard]] std::vector<DiffOperation> operations(std::span<const std::string> left,
    std::span<const std::string> right, std::optional<std::int64_t> maxD = std::nullopt,
    const std::stop_token &stop = {});
[[nodiscard]] std::vector<DiffOperation> operations(std::span<const WordToken> left, std::span<const WordToken> right,
    std::optional<std::int64_t> maxD = std::nullopt, const std::stop_token &stop = {});
/// @}

/// The same for what has been numbered, equal elements equally: below 2^32 - 2.
[[nodiscard]] std::vector<DiffOperation> operations(std::span<const std::uint32_t> left,
    std::span<const std::uint32_t> right, std::optional<std::int64_t> maxD = std::nullopt,
    const std::stop_token &stop = {});

/// Four times the geometric mean of the two lengths, at most 20,000.
[[nodiscard]] std::int64_t maxEditDistance(std::int64_t n, std::int64_t m);

} // namespace MyersDiff

} // namespace nolfa
