#pragma once

#include <cstddef>

namespace nolfa {

/// What counts as a difference, and how much work one comparison may take.
struct ComparisonOptions {
    bool ignoreWhitespace = true; ///< runs of whitespace in a block count as one blank
    bool ignoreCase = false;
    bool ignoreFormattingMarkers = true; ///< "*", "_", "`" and "~" don't count
    /// How many words of rewritten blocks, both documents together, are compared one by one. A block that doesn't fit
    /// in what is left is shown as replaced whole.
    std::size_t maxTokens = 200'000;

    bool operator==(const ComparisonOptions &) const = default;
};

} // namespace nolfa
