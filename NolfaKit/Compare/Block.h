#pragma once

#include "Compare/ComparisonOptions.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>

namespace nolfa {

/// What a block is. A heading carries its level, a list item its depth.
class BlockKind {
public:
    enum class Case : std::uint8_t { heading, listItem, paragraph, tableRow, code, quote };

    /// @param level  1 to 6
    static BlockKind heading(std::int64_t level) { return {Case::heading, level}; }
    /// @param depth  from 0
    static BlockKind listItem(std::int64_t depth) { return {Case::listItem, depth}; }
    static BlockKind paragraph() { return {Case::paragraph, 0}; }
    static BlockKind tableRow() { return {Case::tableRow, 0}; }
    static BlockKind code() { return {Case::code, 0}; }
    static BlockKind quote() { return {Case::quote, 0}; }

    [[nodiscard]] Case value() const noexcept { return m_case; }
    /// Of a heading.
    [[nodiscard]] std::int64_t level() const noexcept { return m_payload; }
    /// Of a list item.
    [[nodiscard]] std::int64_t depth() const noexcept { return m_payload; }

    bool operator==(const BlockKind &) const = default;

private:
    BlockKind(Case which, std::int64_t payload)
        : m_case(which)
        , m_payload(payload)
    {
    }

    Case m_case;
    std::int64_t m_payload;
};

/// One piece of a document: a heading, a paragraph, an item, a row. A plain value.
struct Block {
    /// Folds the text.
    Block(BlockKind kind, std::string text, std::size_t index, std::optional<std::int64_t> page = std::nullopt,
        const std::stop_token &stop = {});

    BlockKind kind;
    std::string text; ///< Markdown, without what marks the block's kind; code keeps its fences
    std::size_t index; ///< position in the document, from 0; its identity there
    std::optional<std::int64_t> page; ///< of the source, where the block begins; absent where pages aren't known
    std::string normalizedHash; ///< the text with case, emphasis and spacing folded away; not a digest

    /// What must agree for two blocks to count as the same.
    [[nodiscard]] std::string comparisonKey(const ComparisonOptions &options, const std::stop_token &stop = {}) const;

    /// The block as Markdown, with its mark.
    [[nodiscard]] std::string markdownLine() const;

    bool operator==(const Block &) const = default;
};

} // namespace nolfa
