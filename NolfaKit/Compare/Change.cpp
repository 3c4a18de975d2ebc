#include "Compare/Change.h"

#include "Compare/WordTokenizer.h"

namespace nolfa {

std::string_view rawValue(RunKind kind)
{
    constexpr std::array<std::string_view, RunKinds::allCases.size()> values{"same", "inserted", "deleted"};
    return values[static_cast<std::size_t>(kind)];
}

std::string Change::id() const
{
    if (const auto *insertion = as<Inserted>())
        return "i" + std::to_string(insertion->block.index);
    if (const auto *deletion = as<Deleted>())
        return "d" + std::to_string(deletion->block.index);
    return "m" + std::to_string(oldBlock()->index) + "-" + std::to_string(newBlock()->index);
}

const Block *Change::oldBlock() const noexcept
{
    if (const auto *deletion = as<Deleted>())
        return &deletion->block;
    const auto *modification = as<Modified>();
    return modification != nullptr ? &modification->old : nullptr;
}

const Block *Change::newBlock() const noexcept
{
    if (const auto *insertion = as<Inserted>())
        return &insertion->block;
    const auto *modification = as<Modified>();
    return modification != nullptr ? &modification->current : nullptr;
}

std::optional<std::int64_t> Change::page() const noexcept
{
    const Block *before = oldBlock();
    const Block *after = newBlock();
    if (after != nullptr && after->page)
        return after->page;
    return before != nullptr ? before->page : std::nullopt;
}

std::size_t Change::wordsAdded() const
{
    if (const auto *insertion = as<Inserted>())
        return WordTokenizer::count(insertion->block.text);
    return words(RunKind::inserted);
}

std::size_t Change::wordsRemoved() const
{
    if (const auto *deletion = as<Deleted>())
        return WordTokenizer::count(deletion->block.text);
    return words(RunKind::deleted);
}

std::string Change::searchableText() const
{
    const Block *before = oldBlock();
    const Block *after = newBlock();
    std::string text = before != nullptr ? before->text : std::string();
    if (before != nullptr && after != nullptr)
        text += ' ';
    return after != nullptr ? text + after->text : text;
}

bool Change::operator==(const Change &other) const
{
    const auto *own = as<Modified>();
    const auto *others = other.as<Modified>();
    return own != nullptr && others != nullptr ? *own == *others : m_value == other.m_value;
}

/// Of a modified block's runs.
std::size_t Change::words(RunKind kind) const
{
    std::size_t sum = 0;
    if (const auto *modification = as<Modified>()) {
        for (const DiffRun &run : modification->runs)
            sum += run.kind == kind ? run.words : 0;
    }
    return sum;
}

} // namespace nolfa
