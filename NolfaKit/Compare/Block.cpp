#include "Compare/Block.h"

#include "Compare/TextFold.h"

#include <algorithm>

namespace nolfa {

Block::Block(BlockKind kind_, std::string text_, std::size_t index_, std::optional<std::int64_t> page_,
    const std::stop_token &stop)
    : kind(kind_)
    , text(std::move(text_))
    , index(index_)
    , page(page_)
    , normalizedHash(TextFold::loose(text, stop))
{
}

std::string Block::comparisonKey(const ComparisonOptions &options, const std::stop_token &stop) const
{
    return TextFold::fold(text, options.ignoreWhitespace, options.ignoreCase, options.ignoreFormattingMarkers, stop);
}

std::string Block::markdownLine() const
{
    switch (kind.value()) {
    case BlockKind::Case::heading:
        return std::string(static_cast<std::size_t>(std::clamp<std::int64_t>(kind.level(), 1, 6)), '#') + ' ' + text;
    case BlockKind::Case::listItem:
        return std::string(2 * static_cast<std::size_t>(std::max<std::int64_t>(kind.depth(), 0)), ' ') + "- " + text;
    case BlockKind::Case::quote:
        return "> " + text;
    case BlockKind::Case::paragraph:
    case BlockKind::Case::tableRow:
    case BlockKind::Case::code:
        break;
    }
    return text;
}

} // namespace nolfa
