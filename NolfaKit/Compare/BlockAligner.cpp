#include "Compare/BlockAligner.h"

#include "Compare/BlockPair.h"
#include "Compare/KeyTable.h"
#include "Compare/MyersDiff.h"
#include "Platform/CancellationError.h"

#include <algorithm>
#include <deque>

namespace nolfa::BlockAligner {

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

/// A range of block positions.
struct Range {
    std::size_t begin;
    std::size_t end;
    [[nodiscard]] std::size_t size() const { return end - begin; }
};

/// One alignment.
class State {
public:
    State(std::vector<Block> left, std::vector<Block> right, const ComparisonOptions &options,
        const std::stop_token &stop)
        : m_left(std::move(left))
        , m_right(std::move(right))
        , m_options(options)
        , m_stop(stop)
        , m_pair(options)
    {
    }

    Result run()
    {
        std::size_t leftStart = 0;
        std::size_t rightStart = 0;
        for (const Anchor &anchor : anchors(m_left, m_right)) {
            diffGap({leftStart, anchor.left}, {rightStart, anchor.right});
            takeAnchor(anchor);
            leftStart = anchor.left + 1;
            rightStart = anchor.right + 1;
        }
        diffGap({leftStart, m_left.size()}, {rightStart, m_right.size()});
        return {std::move(m_changes), m_unchanged};
    }

private:
    /// An anchor ignores more than the options may: what differs by them is a modification, however much it shares.
    void takeAnchor(const Anchor &anchor)
    {
        Block &before = m_left[anchor.left];
        Block &after = m_right[anchor.right];
        if (before.text == after.text
            || before.comparisonKey(m_options, m_stop) == after.comparisonKey(m_options, m_stop)) {
            ++m_unchanged;
            return;
        }
        readPair(before, after);
        addModified(before, after);
    }

    void diffGap(Range left, Range right)
    {
        throwIfStopped(m_stop);
        if (left.size() == 0 && right.size() == 0)
            return;
        std::vector<std::size_t> removed;
        std::vector<std::size_t> inserted;
        for (const DiffOperation &operation : operations(left, right)) {
            if (const auto *equal = std::get_if<DiffOperation::Equal>(&operation.value)) {
                flush(removed, inserted);
                m_unchanged += equal->length;
            } else if (const auto *insertion = std::get_if<DiffOperation::Insert>(&operation.value)) {
                append(inserted, right.begin + insertion->right, insertion->length);
            } else if (const auto *deletion = std::get_if<DiffOperation::Delete>(&operation.value)) {
                // A deletion is never paired with an insertion that comes before it.
                if (!inserted.empty())
                    flush(removed, inserted);
                append(removed, left.begin + deletion->left, deletion->length);
            }
        }
        flush(removed, inserted);
    }

    /// Over the keys of the blocks.
    std::vector<DiffOperation> operations(Range left, Range right)
    {
        m_keys.clear();
        std::deque<std::string> keys;
        const auto numbersOf = [&](const std::vector<Block> &blocks, Range range) {
            std::vector<std::uint32_t> numbers;
            // Where one side has no blocks there is nothing to compare.
            const bool isCompared = left.size() > 0 && right.size() > 0;
            numbers.reserve(range.size());
            for (std::size_t i = range.begin; i < range.end; ++i)
                numbers.push_back(
                    isCompared ? m_keys.number(keys.emplace_back(blocks[i].comparisonKey(m_options, m_stop))) : 0);
            return numbers;
        };
        const std::vector<std::uint32_t> leftNumbers = numbersOf(m_left, left);
        const std::vector<std::uint32_t> rightNumbers = numbersOf(m_right, right);
        return MyersDiff::operations(std::span<const std::uint32_t>(leftNumbers), rightNumbers, std::nullopt, m_stop);
    }

    static void append(std::vector<std::size_t> &positions, std::size_t first, std::size_t length)
    {
        for (std::size_t i = 0; i < length; ++i)
            positions.push_back(first + i);
    }

    /// Pairs what was taken out with what was put in, by position.
    void flush(std::vector<std::size_t> &removed, std::vector<std::size_t> &inserted)
    {
        const std::size_t pairs = std::min(removed.size(), inserted.size());
        for (std::size_t i = 0; i < pairs; ++i)
            addPair(m_left[removed[i]], m_right[inserted[i]]);
        for (std::size_t i = pairs; i < removed.size(); ++i)
            m_changes.push_back(Change::deleted(std::move(m_left[removed[i]])));
        for (std::size_t i = pairs; i < inserted.size(); ++i)
            m_changes.push_back(Change::inserted(std::move(m_right[inserted[i]])));
        removed.clear();
        inserted.clear();
    }

    void addPair(Block &before, Block &after)
    {
        throwIfStopped(m_stop);
        readPair(before, after);
        if (m_pair.jaccard() >= pairingThreshold) {
            addModified(before, after);
        } else {
            m_changes.push_back(Change::deleted(std::move(before)));
            m_changes.push_back(Change::inserted(std::move(after)));
        }
    }

    void readPair(const Block &before, const Block &after)
    {
        m_pair.read(before.text, after.text, m_options.maxTokens - m_tokensSpent, m_stop);
    }

    /// Of the pair that was read last.
    void addModified(Block &before, Block &after)
    {
        std::vector<DiffRun> runs;
        if (m_pair.words() > m_options.maxTokens - m_tokensSpent) {
            runs = m_pair.wholeRuns();
        } else {
            m_tokensSpent += m_pair.words();
            runs = m_pair.runs(m_stop);
        }
        m_changes.push_back(Change::modified(std::move(before), std::move(after), std::move(runs)));
    }

    std::vector<Block> m_left; ///< each is moved into its change, if it has one
    std::vector<Block> m_right;
    const ComparisonOptions &m_options;
    const std::stop_token &m_stop;
    std::vector<Change> m_changes;
    std::size_t m_unchanged = 0;
    std::size_t m_tokensSpent = 0; ///< words compared so far
    BlockPair m_pair;
    KeyTable m_keys;
};

/// Where each text stands, if it stands there once.
struct Occurrence {
    std::size_t count = 0;
    std::size_t position = none;
};

} // namespace

Result align(
    std::vector<Block> left, std::vector<Block> right, const ComparisonOptions &options, const std::stop_token &stop)
{
    return State(std::move(left), std::move(right), options, stop).run();
}

std::vector<Anchor> anchors(std::span<const Block> left, std::span<const Block> right)
{
    KeyTable hashes;
    std::vector<std::array<Occurrence, 2>> occurrences;
    const auto note = [&](std::span<const Block> blocks, std::size_t side) {
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            if (blocks[i].normalizedHash.empty())
                continue;
            const std::uint32_t number = hashes.number(blocks[i].normalizedHash);
            if (number == occurrences.size())
                occurrences.emplace_back();
            Occurrence &occurrence = occurrences[number][side];
            ++occurrence.count;
            occurrence.position = i;
        }
    };
    note(left, 0);
    note(right, 1);
    std::vector<Anchor> all;
    // Numbers were given in the order of the left blocks.
    for (const auto &[before, after] : occurrences) {
        if (before.count == 1 && after.count == 1)
            all.push_back({before.position, after.position});
    }
    return longestIncreasing(all);
}

std::vector<Anchor> longestIncreasing(std::span<const Anchor> anchors)
{
    std::vector<std::size_t> previous(anchors.size(), none);
    std::vector<std::size_t> tails;
    for (std::size_t i = 0; i < anchors.size(); ++i) {
        const auto place = std::ranges::lower_bound(
            tails, anchors[i].right, {}, [&anchors](std::size_t tail) { return anchors[tail].right; });
        if (place != tails.begin())
            previous[i] = *(place - 1);
        if (place == tails.end())
            tails.push_back(i);
        else
            *place = i;
    }
    std::vector<Anchor> longest;
    for (std::size_t i = tails.empty() ? none : tails.back(); i != none; i = previous[i])
        longest.push_back(anchors[i]);
    std::ranges::reverse(longest);
    return longest;
}

} // namespace nolfa::BlockAligner
