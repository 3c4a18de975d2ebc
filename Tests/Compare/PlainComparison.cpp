#include "Compare/PlainComparison.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace nolfa::testing {

namespace {

UChar32 firstOf(const std::string &character)
{
    return icu::UnicodeString::fromUTF8(character).char32At(0);
}

bool isWhitespace(const std::string &character)
{
    return u_isUWhiteSpace(firstOf(character)) != 0;
}

bool isWordCharacter(const std::string &character)
{
    const UChar32 first = firstOf(character);
    return u_isUAlphabetic(first) != 0 || u_getIntPropertyValue(first, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isTrimmed(UChar32 c)
{
    const auto category = static_cast<unsigned>(u_charType(c));
    const bool isSeparator
        = category == U_SPACE_SEPARATOR || category == U_LINE_SEPARATOR || category == U_PARAGRAPH_SEPARATOR;
    return isSeparator || c == '\t' || (c >= 0x0A && c <= 0x0D) || c == 0x85;
}

std::string trimmed(const std::string &text)
{
    icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    while (!wide.isEmpty() && isTrimmed(wide.char32At(0)))
        wide.remove(0, wide.moveIndex32(0, 1));
    while (!wide.isEmpty() && isTrimmed(wide.char32At(wide.moveIndex32(wide.length(), -1))))
        wide.truncate(wide.moveIndex32(wide.length(), -1));
    std::string result;
    wide.toUTF8String(result);
    return result;
}

using Operations = std::vector<DiffOperation>;
using Sequence = std::vector<std::string>;
using Equal = DiffOperation::Equal;
using Delete = DiffOperation::Delete;
using Insert = DiffOperation::Insert;

Operations coalesce(const Operations &operations)
{
    Operations result;
    for (const DiffOperation &next : operations) {
        if (!result.empty()) {
            auto &last = result.back().value;
            auto *e = std::get_if<Equal>(&last);
            const auto *nextEqual = std::get_if<Equal>(&next.value);
            if (e != nullptr && nextEqual != nullptr && e->left + e->length == nextEqual->left
                && e->right + e->length == nextEqual->right) {
                e->length += nextEqual->length;
                continue;
            }
            auto *d = std::get_if<Delete>(&last);
            const auto *nextDelete = std::get_if<Delete>(&next.value);
            if (d != nullptr && nextDelete != nullptr && d->left + d->length == nextDelete->left) {
                d->length += nextDelete->length;
                continue;
            }
            auto *i = std::get_if<Insert>(&last);
            const auto *nextInsert = std::get_if<Insert>(&next.value);
            if (i != nullptr && nextInsert != nullptr && i->right + i->length == nextInsert->right) {
                i->length += nextInsert->length;
                continue;
            }
        }
        result.push_back(next);
    }
    return result;
}

std::optional<Operations> shortestEdit(const Sequence &left, const Sequence &right, std::int64_t cap)
{
    const auto n = static_cast<std::int64_t>(left.size());
    const auto m = static_cast<std::int64_t>(right.size());
    const std::int64_t max = n + m;
    const std::int64_t limit = std::min(std::max<std::int64_t>(cap, 1), max);
    std::vector<std::int64_t> v(static_cast<std::size_t>(2 * max + 1));
    const auto at = [max](std::vector<std::int64_t> &values, std::int64_t k) -> std::int64_t & {
        return values[static_cast<std::size_t>(k + max)];
    };
    std::vector<std::vector<std::int64_t>> trace;
    bool isFound = false;
    for (std::int64_t d = 0; d <= limit && !isFound; ++d) {
        trace.push_back(v);
        for (std::int64_t k = -d; k <= d; k += 2) {
            std::int64_t x = 0;
            if (k == -d)
                x = at(v, k + 1);
            else if (k == d)
                x = at(v, k - 1) + 1;
            else if (at(v, k - 1) >= at(v, k + 1))
                x = at(v, k - 1) + 1;
            else
                x = at(v, k + 1);
            std::int64_t y = x - k;
            while (x < n && y < m && left[static_cast<std::size_t>(x)] == right[static_cast<std::size_t>(y)]) {
                ++x;
                ++y;
            }
            at(v, k) = x;
            if (x >= n && y >= m) {
                isFound = true;
                break;
            }
        }
    }
    if (!isFound)
        return std::nullopt;
    Operations records;
    std::int64_t x = n;
    std::int64_t y = m;
    for (auto d = static_cast<std::int64_t>(trace.size()) - 1; d >= 0; --d) {
        std::vector<std::int64_t> &pass = trace[static_cast<std::size_t>(d)];
        const std::int64_t k = x - y;
        std::int64_t previousK = k - 1;
        if (k == -d || (k != d && at(pass, k - 1) < at(pass, k + 1)))
            previousK = k + 1;
        const std::int64_t previousX = at(pass, previousK);
        const std::int64_t previousY = previousX - previousK;
        while (x > previousX && y > previousY) {
            --x;
            --y;
            records.push_back({Equal{static_cast<std::size_t>(x), static_cast<std::size_t>(y), 1}});
        }
        if (d == 0)
            break;
        if (x == previousX)
            records.push_back({Insert{static_cast<std::size_t>(previousY), 1}});
        else
            records.push_back({Delete{static_cast<std::size_t>(previousX), 1}});
        x = previousX;
        y = previousY;
    }
    std::ranges::reverse(records);
    return coalesce(records);
}

Operations middle(const Sequence &left, const Sequence &right, std::size_t offset, std::optional<std::int64_t> maxD)
{
    if (left.empty() && right.empty())
        return {};
    if (left.empty())
        return {{Insert{offset, right.size()}}};
    if (right.empty())
        return {{Delete{offset, left.size()}}};
    const std::int64_t cap = maxD
        ? *maxD
        : MyersDiff::maxEditDistance(static_cast<std::int64_t>(left.size()), static_cast<std::int64_t>(right.size()));
    std::optional<Operations> operations = shortestEdit(left, right, cap);
    if (!operations)
        return {{Delete{offset, left.size()}}, {Insert{offset, right.size()}}};
    for (DiffOperation &operation : *operations) {
        if (auto *equal = std::get_if<Equal>(&operation.value)) {
            equal->left += offset;
            equal->right += offset;
        } else if (auto *deletion = std::get_if<Delete>(&operation.value)) {
            deletion->left += offset;
        } else if (auto *insertion = std::get_if<Insert>(&operation.value)) {
            insertion->right += offset;
        }
    }
    return *operations;
}

/// One alignment, as plainly as can be.
struct PlainState {
    const std::vector<Block> &left;
    const std::vector<Block> &right;
    const ComparisonOptions &options;
    BlockAligner::Result result{};
    std::size_t tokensSpent = 0;

    [[nodiscard]] std::string key(const Block &block) const
    {
        return plainFold(block.text, options.ignoreWhitespace, options.ignoreCase, options.ignoreFormattingMarkers);
    }

    [[nodiscard]] double jaccard(const Block &before, const Block &after) const
    {
        const std::vector<std::string> oldKeys = plainKeys(before.text, options);
        const std::vector<std::string> newKeys = plainKeys(after.text, options);
        const std::set<std::string> a(oldKeys.begin(), oldKeys.end());
        const std::set<std::string> b(newKeys.begin(), newKeys.end());
        if (a.empty() && b.empty())
            return 1;
        std::set<std::string> all = a;
        all.insert(b.begin(), b.end());
        std::size_t shared = 0;
        for (const std::string &word : a)
            shared += b.count(word);
        return static_cast<double>(shared) / static_cast<double>(all.size());
    }

    static std::string joined(const std::vector<std::string> &words, std::size_t start, std::size_t length)
    {
        std::string text;
        for (std::size_t i = start; i < start + length; ++i)
            text += (i > start ? " " : "") + words[i];
        return text;
    }

    std::vector<DiffRun> wordRuns(const Block &before, const Block &after)
    {
        const std::vector<std::string> oldWords = plainWords(before.text);
        const std::vector<std::string> newWords = plainWords(after.text);
        std::vector<DiffRun> runs;
        if (tokensSpent + oldWords.size() + newWords.size() > options.maxTokens) {
            if (!oldWords.empty())
                runs.push_back({RunKind::deleted, before.text, oldWords.size()});
            if (!newWords.empty())
                runs.push_back({RunKind::inserted, after.text, newWords.size()});
            return runs;
        }
        tokensSpent += oldWords.size() + newWords.size();
        for (const DiffOperation &operation :
            plainOperations(plainKeys(before.text, options), plainKeys(after.text, options))) {
            if (const auto *e = std::get_if<Equal>(&operation.value))
                runs.push_back({RunKind::same, joined(oldWords, e->left, e->length), e->length});
            else if (const auto *d = std::get_if<Delete>(&operation.value))
                runs.push_back({RunKind::deleted, joined(oldWords, d->left, d->length), d->length});
            else if (const auto *i = std::get_if<Insert>(&operation.value))
                runs.push_back({RunKind::inserted, joined(newWords, i->right, i->length), i->length});
        }
        return runs;
    }

    void flush(std::vector<std::size_t> &removed, std::vector<std::size_t> &inserted)
    {
        const std::size_t pairs = std::min(removed.size(), inserted.size());
        for (std::size_t i = 0; i < pairs; ++i) {
            const Block &before = left[removed[i]];
            const Block &after = right[inserted[i]];
            if (jaccard(before, after) >= 0.4) {
                result.changes.push_back(Change::modified(before, after, wordRuns(before, after)));
            } else {
                result.changes.push_back(Change::deleted(before));
                result.changes.push_back(Change::inserted(after));
            }
        }
        for (std::size_t i = pairs; i < removed.size(); ++i)
            result.changes.push_back(Change::deleted(left[removed[i]]));
        for (std::size_t i = pairs; i < inserted.size(); ++i)
            result.changes.push_back(Change::inserted(right[inserted[i]]));
        removed.clear();
        inserted.clear();
    }

    void diffGap(std::size_t leftBegin, std::size_t leftEnd, std::size_t rightBegin, std::size_t rightEnd)
    {
        Sequence leftKeys;
        Sequence rightKeys;
        for (std::size_t i = leftBegin; i < leftEnd; ++i)
            leftKeys.push_back(key(left[i]));
        for (std::size_t i = rightBegin; i < rightEnd; ++i)
            rightKeys.push_back(key(right[i]));
        std::vector<std::size_t> removed;
        std::vector<std::size_t> inserted;
        for (const DiffOperation &operation : plainOperations(leftKeys, rightKeys)) {
            if (const auto *e = std::get_if<Equal>(&operation.value)) {
                flush(removed, inserted);
                result.unchangedBlocks += e->length;
            } else if (const auto *i = std::get_if<Insert>(&operation.value)) {
                for (std::size_t j = 0; j < i->length; ++j)
                    inserted.push_back(rightBegin + i->right + j);
            } else if (const auto *d = std::get_if<Delete>(&operation.value)) {
                if (!inserted.empty())
                    flush(removed, inserted);
                for (std::size_t j = 0; j < d->length; ++j)
                    removed.push_back(leftBegin + d->left + j);
            }
        }
        flush(removed, inserted);
    }

    /// The longest increasing subsequence by patience sorting.
    [[nodiscard]] std::vector<BlockAligner::Anchor> anchors() const
    {
        std::map<std::string, std::vector<std::size_t>> leftPlaces;
        std::map<std::string, std::vector<std::size_t>> rightPlaces;
        for (std::size_t i = 0; i < left.size(); ++i)
            leftPlaces[plainFold(left[i].text, true, true, true)].push_back(i);
        for (std::size_t i = 0; i < right.size(); ++i)
            rightPlaces[plainFold(right[i].text, true, true, true)].push_back(i);
        std::vector<BlockAligner::Anchor> all;
        for (std::size_t i = 0; i < left.size(); ++i) {
            const std::string hash = plainFold(left[i].text, true, true, true);
            if (!hash.empty() && leftPlaces[hash].size() == 1 && rightPlaces[hash].size() == 1)
                all.push_back({i, rightPlaces[hash].front()});
        }
        std::vector<int> previous(all.size(), -1);
        std::vector<int> tails;
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::size_t low = 0;
            std::size_t high = tails.size();
            while (low < high) {
                const std::size_t mid = (low + high) / 2;
                if (all[static_cast<std::size_t>(tails[mid])].right < all[i].right)
                    low = mid + 1;
                else
                    high = mid;
            }
            if (low > 0)
                previous[i] = tails[low - 1];
            if (low == tails.size())
                tails.push_back(static_cast<int>(i));
            else
                tails[low] = static_cast<int>(i);
        }
        std::vector<BlockAligner::Anchor> kept;
        for (int i = tails.empty() ? -1 : tails.back(); i >= 0; i = previous[static_cast<std::size_t>(i)])
            kept.push_back(all[static_cast<std::size_t>(i)]);
        std::ranges::reverse(kept);
        return kept;
    }

    void align()
    {
        std::size_t leftStart = 0;
        std::size_t rightStart = 0;
        for (const BlockAligner::Anchor &anchor : anchors()) {
            diffGap(leftStart, anchor.left, rightStart, anchor.right);
            const Block &before = left[anchor.left];
            const Block &after = right[anchor.right];
            if (key(before) == key(after))
                ++result.unchangedBlocks;
            else
                result.changes.push_back(Change::modified(before, after, wordRuns(before, after)));
            leftStart = anchor.left + 1;
            rightStart = anchor.right + 1;
        }
        diffGap(leftStart, left.size(), rightStart, right.size());
    }
};

} // namespace

std::vector<std::string> plainCharacters(const std::string &text)
{
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> rules(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    rules->setText(wide);
    std::vector<std::string> all;
    for (int start = rules->first(), end = rules->next(); end != icu::BreakIterator::DONE;
         start = end, end = rules->next())
        wide.tempSubStringBetween(start, end).toUTF8String(all.emplace_back());
    return all;
}

std::string plainFold(const std::string &text, bool ignoreWhitespace, bool ignoreCase, bool ignoreFormattingMarkers)
{
    std::string folded = text;
    if (ignoreFormattingMarkers) {
        folded.clear();
        for (const std::string &character : plainCharacters(text)) {
            if (character != "*" && character != "_" && character != "`" && character != "~")
                folded += character;
        }
    }
    if (ignoreCase) {
        icu::UnicodeString wide = icu::UnicodeString::fromUTF8(folded);
        wide.toLower(icu::Locale::getRoot());
        folded.clear();
        wide.toUTF8String(folded);
    }
    if (ignoreWhitespace) {
        std::vector<std::string> pieces{""};
        for (const std::string &character : plainCharacters(folded)) {
            if (isWhitespace(character))
                pieces.emplace_back();
            else
                pieces.back() += character;
        }
        folded.clear();
        for (const std::string &piece : pieces)
            folded += piece.empty() ? "" : (folded.empty() ? "" : " ") + piece;
    }
    return trimmed(folded);
}

std::vector<std::string> plainWords(const std::string &text)
{
    static const std::set<std::string> connectors{"\u0027", "\u2019", "\u002D", "\u2010", "\u2011"};
    const std::vector<std::string> all = plainCharacters(text);
    std::vector<std::string> words;
    std::string current;
    bool inWord = false;
    bool trailing = false;
    bool afterWordChar = false;
    const auto emit = [&] {
        if (!current.empty())
            words.push_back(current);
        current.clear();
    };
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::string &c = all[i];
        if (isWhitespace(c)) {
            emit();
            inWord = trailing = afterWordChar = false;
        } else if (isWordCharacter(c)) {
            if (trailing)
                emit();
            current += c;
            inWord = afterWordChar = true;
            trailing = false;
        } else if (connectors.contains(c) && afterWordChar && i + 1 < all.size() && isWordCharacter(all[i + 1])
            && !isWhitespace(all[i + 1])) {
            current += c;
            afterWordChar = false;
        } else {
            current += c;
            afterWordChar = false;
            trailing = trailing || inWord;
        }
    }
    emit();
    return words;
}

std::vector<std::string> plainKeys(const std::string &text, const ComparisonOptions &options)
{
    std::vector<std::string> keys;
    for (const std::string &word : plainWords(text)) {
        const std::string key = plainFold(word, true, options.ignoreCase, options.ignoreFormattingMarkers);
        keys.push_back(key.empty() ? word : key);
    }
    return keys;
}

std::vector<DiffOperation> plainOperations(
    const std::vector<std::string> &left, const std::vector<std::string> &right, std::optional<std::int64_t> maxD)
{
    const std::size_t n = left.size();
    const std::size_t m = right.size();
    const std::size_t limit = std::min(n, m);
    std::size_t prefix = 0;
    while (prefix < limit && left[prefix] == right[prefix])
        ++prefix;
    std::size_t suffix = 0;
    while (suffix < limit - prefix && left[n - 1 - suffix] == right[m - 1 - suffix])
        ++suffix;
    const auto slice = [&](const Sequence &sequence) {
        return Sequence(sequence.begin() + static_cast<std::ptrdiff_t>(prefix),
            sequence.end() - static_cast<std::ptrdiff_t>(suffix));
    };
    Operations operations;
    if (prefix >= 1)
        operations.push_back({Equal{0, 0, prefix}});
    const Operations between = middle(slice(left), slice(right), prefix, maxD);
    operations.insert(operations.end(), between.begin(), between.end());
    if (suffix >= 1)
        operations.push_back({Equal{n - suffix, m - suffix, suffix}});
    return coalesce(operations);
}

BlockAligner::Result plainAlign(
    const std::vector<Block> &left, const std::vector<Block> &right, const ComparisonOptions &options)
{
    PlainState state{left, right, options};
    state.align();
    return state.result;
}

std::string withoutWhitespace(const std::string &text)
{
    std::string rest;
    for (const std::string &character : plainCharacters(text))
        rest += isWhitespace(character) ? "" : character;
    return rest;
}

std::string randomText(std::mt19937 &random, std::size_t length)
{
    constexpr std::array<char32_t, 44> codePoints{'a', 'b', 'A', 'B', '1', ' ', ' ', ' ', '\t', '\n', '\r', '*', '_',
        '`', '~', '\'', '-', '.', ',', '(', '\0', 0xE9, 0xC9, 0x2019, 0x2010, 0x2011, 0x2014, 0xA0, 0x2028, 0x301,
        0x3A3, 0x130, 0x4E00, 0x1F468, 0x200D, 0x1F1E6, 0x1F1FA, 0xFE0F, 0x600, 0x915, 0x94D, 0xAC00, 0xBD, 0x200B};
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        Unicode::append(text, codePoints[random() % codePoints.size()]);
    return text;
}

ComparisonOptions randomOptions(std::mt19937 &random)
{
    return {.ignoreWhitespace = random() % 2 == 0,
        .ignoreCase = random() % 2 == 0,
        .ignoreFormattingMarkers = random() % 2 == 0,
        .maxTokens = random() % 2 == 0 ? 200'000 : random() % 60};
}

} // namespace nolfa::testing
