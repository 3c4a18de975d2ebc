#pragma once

#include "Compare/DocumentComparison.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace nolfa {

/// Under which heading each block of a document stands: the last one up to its own place.
class BlockHeadings {
public:
    explicit BlockHeadings(std::span<const Block> blocks);

    /// The heading of the block with that index; a heading stands under itself. Null before the first.
    [[nodiscard]] const std::string *at(std::size_t index) const;

private:
    std::vector<std::size_t> m_indices;
    std::vector<std::string> m_texts;
};

namespace SectionList {

/// Changes in sections: a new one begins wherever the page or the heading isn't that of the change before. The heading
/// is the right document's, and the left one's for what was deleted. Pure and thread-safe.
[[nodiscard]] std::vector<ComparisonSection> sectionize(
    std::vector<Change> changes, const BlockHeadings &left, const BlockHeadings &right);

} // namespace SectionList

} // namespace nolfa
