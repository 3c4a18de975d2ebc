#include "Compare/SectionList.h"

#include "Compare/KeyTable.h"

#include <algorithm>

namespace nolfa {

namespace {

/// What makes two changes belong to one section. Headings go by number, equal texts equally.
struct SectionKey {
    std::optional<std::int64_t> page;
    std::optional<std::uint32_t> heading;

    bool operator==(const SectionKey &) const = default;
};

std::optional<std::int64_t> pageOf(const Block *block)
{
    return block != nullptr ? block->page : std::nullopt;
}

} // namespace

BlockHeadings::BlockHeadings(std::span<const Block> blocks)
{
    for (const Block &block : blocks) {
        if (block.kind.value() != BlockKind::Case::heading)
            continue;
        m_indices.push_back(block.index);
        m_texts.push_back(block.text);
    }
}

const std::string *BlockHeadings::at(std::size_t index) const
{
    const auto next = std::ranges::upper_bound(m_indices, index);
    return next == m_indices.begin() ? nullptr : &m_texts[static_cast<std::size_t>(next - m_indices.begin()) - 1];
}

std::vector<ComparisonSection> SectionList::sectionize(
    std::vector<Change> changes, const BlockHeadings &left, const BlockHeadings &right)
{
    std::vector<ComparisonSection> sections;
    std::optional<SectionKey> key;
    KeyTable numbers;
    for (Change &change : changes) {
        const Block *before = change.oldBlock();
        const Block *after = change.newBlock();
        const std::string *heading = after != nullptr ? right.at(after->index) : left.at(before->index);
        const SectionKey own{
            change.page(), heading != nullptr ? std::optional(numbers.number(*heading)) : std::nullopt};
        if (key != own) {
            key = own;
            sections.push_back({.id = sections.size(),
                .heading = heading != nullptr ? std::optional(*heading) : std::nullopt,
                .leftPage = pageOf(before),
                .rightPage = pageOf(after)});
        }
        ComparisonSection &section = sections.back();
        // Each is the first page known on its side.
        if (!section.leftPage)
            section.leftPage = pageOf(before);
        if (!section.rightPage)
            section.rightPage = pageOf(after);
        section.changes.push_back(std::move(change));
    }
    return sections;
}

} // namespace nolfa
