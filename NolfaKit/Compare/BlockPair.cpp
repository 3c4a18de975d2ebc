#include "Compare/BlockPair.h"

#include "Compare/MyersDiff.h"
#include "Compare/TextFold.h"
#include "Compare/WordCutter.h"
#include "Compare/WordTokenizer.h"
#include "Platform/CancellationError.h"

#include <algorithm>

namespace nolfa {

namespace {

/// Whether the word is its own key: ASCII without anything that the options ignore.
bool isItsOwnKey(std::string_view word, const ComparisonOptions &options)
{
    return std::ranges::all_of(word, [&options](char c) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        const bool isMarker = c == '*' || c == '_' || c == '`' || c == '~';
        return static_cast<unsigned char>(c) < 0x80 && !(isCapital && options.ignoreCase)
            && !(isMarker && options.ignoreFormattingMarkers);
    });
}

std::string joined(const std::vector<std::string_view> &words, std::size_t start, std::size_t length)
{
    std::string text;
    std::size_t size = length - 1;
    for (std::size_t i = start; i < start + length; ++i)
        size += words[i].size();
    text.reserve(size);
    for (std::size_t i = start; i < start + length; ++i) {
        if (i > start)
            text += ' ';
        text += words[i];
    }
    return text;
}

} // namespace

void BlockPair::read(std::string_view before, std::string_view after, std::size_t most, const std::stop_token &stop)
{
    m_keys.clear();
    m_seen.clear();
    m_shared = 0;
    m_folded.release();
    readSide(0, before, most, stop);
    readSide(1, after, most, stop);
}

void BlockPair::readSide(std::size_t which, std::string_view text, std::size_t most, const std::stop_token &stop)
{
    constexpr std::size_t wordsBetweenChecks = 4096;
    Side &side = m_sides[which];
    side.text = text;
    side.count = 0;
    side.words.clear();
    side.numbers.clear();
    const auto mark = static_cast<std::uint8_t>(1U << which);
    WordCutter cutter(text);
    for (std::string_view word = cutter.next(); !word.empty(); word = cutter.next()) {
        if (++side.count % wordsBetweenChecks == 0)
            throwIfStopped(stop);
        const std::uint32_t number = keyNumber(word);
        if (number == m_seen.size())
            m_seen.push_back(0);
        m_shared += (m_seen[number] | mark) == 3 && m_seen[number] != 3 ? 1 : 0;
        m_seen[number] |= mark;
        if (side.count <= most) {
            side.words.push_back(word);
            side.numbers.push_back(number);
        }
    }
}

/// As WordTokenizer::key(), without a copy where the word is its own key.
std::uint32_t BlockPair::keyNumber(std::string_view word)
{
    if (isItsOwnKey(word, m_options))
        return m_keys.number(word);
    const std::string key = WordTokenizer::key(word, m_options);
    auto *copy = static_cast<char *>(m_folded.allocate(key.size(), 1));
    std::ranges::copy(key, copy);
    return m_keys.number({copy, key.size()});
}

double BlockPair::jaccard() const
{
    if (m_keys.size() == 0)
        return 1;
    return static_cast<double>(m_shared) / static_cast<double>(m_keys.size());
}

std::vector<DiffRun> BlockPair::runs(const std::stop_token &stop) const
{
    const auto &[before, after] = m_sides;
    std::vector<DiffRun> runs;
    for (const DiffOperation &operation :
        MyersDiff::operations(std::span<const std::uint32_t>(before.numbers), after.numbers, std::nullopt, stop)) {
        if (const auto *equal = std::get_if<DiffOperation::Equal>(&operation.value))
            runs.push_back({RunKind::same, joined(before.words, equal->left, equal->length), equal->length});
        else if (const auto *deletion = std::get_if<DiffOperation::Delete>(&operation.value))
            runs.push_back(
                {RunKind::deleted, joined(before.words, deletion->left, deletion->length), deletion->length});
        else if (const auto *insertion = std::get_if<DiffOperation::Insert>(&operation.value))
            runs.push_back(
                {RunKind::inserted, joined(after.words, insertion->right, insertion->length), insertion->length});
    }
    return runs;
}

std::vector<DiffRun> BlockPair::wholeRuns() const
{
    const auto &[before, after] = m_sides;
    std::vector<DiffRun> runs;
    if (before.count > 0)
        runs.push_back({RunKind::deleted, std::string(before.text), before.count});
    if (after.count > 0)
        runs.push_back({RunKind::inserted, std::string(after.text), after.count});
    return runs;
}

} // namespace nolfa
