#pragma once

#include "Compare/Block.h"

#include <array>
#include <memory>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace nolfa {

enum class RunKind : std::uint8_t { same, inserted, deleted };

namespace RunKinds {

inline constexpr std::array allCases{RunKind::same, RunKind::inserted, RunKind::deleted};

} // namespace RunKinds

/// "same", "inserted" or "deleted".
[[nodiscard]] std::string_view rawValue(RunKind kind);

/// A stretch of words of one kind inside a modified block.
struct DiffRun {
    RunKind kind;
    std::string text; ///< the words, parted by one blank
    std::size_t words;

    bool operator==(const DiffRun &) const = default;
};

/// One difference between two documents. A plain value that holds its blocks.
class Change {
public:
    struct Inserted {
        Block block; ///< of the right document
        bool operator==(const Inserted &) const = default;
    };
    struct Deleted {
        Block block; ///< of the left document
        bool operator==(const Deleted &) const = default;
    };
    struct Modified {
        Block old;
        Block current;
        std::vector<DiffRun> runs;
        bool operator==(const Modified &) const = default;
    };

    static Change inserted(Block block) { return Change(Inserted{std::move(block)}); }
    static Change deleted(Block block) { return Change(Deleted{std::move(block)}); }
    static Change modified(Block old, Block current, std::vector<DiffRun> runs)
    {
        return Change(std::make_shared<const Modified>(Modified{std::move(old), std::move(current), std::move(runs)}));
    }

    /// The payload when this is that case, or null.
    template <typename Alternative> [[nodiscard]] const Alternative *as() const noexcept
    {
        if constexpr (std::is_same_v<Alternative, Modified>) {
            const auto *modification = std::get_if<std::shared_ptr<const Modified>>(&m_value);
            return modification != nullptr ? modification->get() : nullptr;
        } else {
            return std::get_if<Alternative>(&m_value);
        }
    }

    /// "i7", "d3" or "m3-7": stable within one comparison.
    [[nodiscard]] std::string id() const;

    /// Of the left document; null for what was inserted.
    [[nodiscard]] const Block *oldBlock() const noexcept;
    /// Of the right document; null for what was deleted.
    [[nodiscard]] const Block *newBlock() const noexcept;

    /// The new block's page if it has one, else the old one's.
    [[nodiscard]] std::optional<std::int64_t> page() const noexcept;

    [[nodiscard]] std::size_t wordsAdded() const;
    [[nodiscard]] std::size_t wordsRemoved() const;

    /// The old text and the new one, parted by a blank.
    [[nodiscard]] std::string searchableText() const;

    bool operator==(const Change &other) const;

private:
    /// The largest payload is held apart, or all others would be as large.
    using Case = std::variant<Inserted, Deleted, std::shared_ptr<const Modified>>;

    explicit Change(Case value)
        : m_value(std::move(value))
    {
    }

    [[nodiscard]] std::size_t words(RunKind kind) const;

    Case m_value;
};

} // namespace nolfa
