#include "Compare/BlockAligner.h"

#include "Compare/MarkdownBlockParser.h"
#include "Compare/PlainComparison.h"
#include "Compare/WordTokenizer.h"
#include "Platform/CancellationError.h"

#include <gmock/gmock.h>
#include <ostream>
#include <set>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace nolfa {

void PrintTo(const Change &change, std::ostream *out)
{
    *out << change.id();
    if (const auto *modification = change.as<Change::Modified>()) {
        for (const DiffRun &run : modification->runs)
            *out << " [" << rawValue(run.kind) << ' ' << run.words << " \"" << run.text << "\"]";
    }
}

} // namespace nolfa

namespace {

std::vector<Block> blocks(const std::vector<std::string> &texts)
{
    std::vector<Block> all;
    for (const std::string &text : texts)
        all.emplace_back(BlockKind::paragraph(), text, all.size());
    return all;
}

BlockAligner::Result align(
    const std::vector<std::string> &left, const std::vector<std::string> &right, const ComparisonOptions &options = {})
{
    return BlockAligner::align(blocks(left), blocks(right), options);
}

std::vector<std::string> ids(const BlockAligner::Result &result)
{
    std::vector<std::string> all;
    for (const Change &change : result.changes)
        all.push_back(change.id());
    return all;
}

const std::vector<DiffRun> &runs(const BlockAligner::Result &result)
{
    return result.changes.at(0).as<Change::Modified>()->runs;
}

/// Words from a small vocabulary, so that blocks resemble each other.
std::string randomBlock(std::mt19937 &random)
{
    constexpr std::array<const char *, 14> words{
        "one", "two", "three", "Two", "*one*", "four,", "**", "é", "É", "five-six", "a,b", "seven", "eight", "nine"};
    std::string text;
    for (std::size_t i = random() % 7; i > 0; --i)
        text += std::string(words[random() % words.size()]) + (random() % 5 == 0 ? "  " : " ");
    return text;
}

std::vector<std::string> randomDocument(std::mt19937 &random, std::size_t longest)
{
    std::vector<std::string> texts(random() % (longest + 1));
    for (std::string &text : texts)
        text = randomBlock(random);
    return texts;
}

/// Some blocks rewritten, moved, dropped or new.
std::vector<std::string> revised(std::mt19937 &random, std::vector<std::string> texts)
{
    for (std::size_t edits = random() % 6; edits > 0 && !texts.empty(); --edits) {
        const auto place = texts.begin() + static_cast<std::ptrdiff_t>(random() % texts.size());
        switch (random() % 4) {
        case 0:
            *place += "nine";
            break;
        case 1:
            texts.erase(place);
            break;
        case 2:
            texts.insert(place, randomBlock(random));
            break;
        default:
            std::swap(*place, texts.front());
        }
    }
    return texts;
}

/// The words of a block as its runs tell them, those of one kind left out.
std::vector<std::string> wordsWithout(RunKind left, const std::vector<DiffRun> &runs)
{
    std::vector<std::string> words;
    for (const DiffRun &run : runs) {
        if (run.kind == left)
            continue;
        const std::vector<std::string> own = WordTokenizer::raw(run.text);
        words.insert(words.end(), own.begin(), own.end());
    }
    return words;
}

std::vector<std::string> keysOf(const std::vector<std::string> &words, const ComparisonOptions &options)
{
    std::vector<std::string> keys;
    for (const std::string &word : words)
        keys.push_back(WordTokenizer::key(word, options));
    return keys;
}

} // namespace

TEST(BlockAligner, emptyListsHaveNoChanges)
{
    EXPECT_EQ(align({}, {}), BlockAligner::Result{});
}

TEST(BlockAligner, againstNothingEveryBlockComesOrGoesInOrder)
{
    EXPECT_THAT(ids(align({}, {"a", "b"})), ElementsAre("i0", "i1"));
    EXPECT_THAT(ids(align({"a", "b"}, {})), ElementsAre("d0", "d1"));
}

TEST(BlockAligner, equalListsAreUnchanged)
{
    EXPECT_EQ(align({"a", "b", "a"}, {"a", "b", "a"}), (BlockAligner::Result{{}, 3}));
}

TEST(BlockAligner, anchorsStandOnceOnEachSide)
{
    using BlockAligner::Anchor;
    EXPECT_THAT(BlockAligner::anchors(blocks({"x", "a", "x", "B", "c"}), blocks({"A", "x", "b", "c", "c"})),
        ElementsAre(Anchor{1, 0}, Anchor{3, 2}));
    EXPECT_THAT(
        BlockAligner::anchors(blocks({"*a*", "b"}), blocks({"A", "_b_"})), ElementsAre(Anchor{0, 0}, Anchor{1, 1}));
}

TEST(BlockAligner, blocksThatFoldToNothingAreNeverAnchors)
{
    EXPECT_THAT(BlockAligner::anchors(blocks({"***"}), blocks({"***"})), IsEmpty());
    EXPECT_EQ(align({"***"}, {"***"}).unchangedBlocks, 1U);
}

TEST(BlockAligner, theLongestRunOfAnchorsIsKept)
{
    using BlockAligner::Anchor;
    EXPECT_THAT(BlockAligner::longestIncreasing(std::vector<Anchor>{}), IsEmpty());
    EXPECT_THAT(BlockAligner::longestIncreasing(std::vector<Anchor>{{0, 5}, {1, 1}, {2, 6}, {3, 2}, {4, 3}, {5, 0}}),
        ElementsAre(Anchor{1, 1}, Anchor{3, 2}, Anchor{4, 3}));
    EXPECT_THAT(BlockAligner::longestIncreasing(std::vector<Anchor>{{0, 1}, {1, 0}}), ElementsAre(Anchor{1, 0}))
        << "of two equally long runs the one that ends lower";
}

TEST(BlockAligner, ofTwoSwappedParagraphsOneStays)
{
    const BlockAligner::Result result
        = align({"The first one here", "And another text"}, {"And another text", "The first one here"});
    EXPECT_EQ(result.unchangedBlocks, 1U);
    EXPECT_THAT(ids(result), ElementsAre("d0", "i1"));
}

TEST(BlockAligner, anAnchorThatDiffersByTheOptionsIsModifiedHoweverLittleItShares)
{
    const BlockAligner::Result result = align({"HELLO"}, {"hello"});
    EXPECT_THAT(ids(result), ElementsAre("m0-0"));
    EXPECT_THAT(
        runs(result), ElementsAre(DiffRun{RunKind::deleted, "HELLO", 1}, DiffRun{RunKind::inserted, "hello", 1}));
    EXPECT_EQ(align({"HELLO"}, {"hello"}, {.ignoreCase = true}), (BlockAligner::Result{{}, 1}));
}

TEST(BlockAligner, inAGapTheSamePairMustPassTheThreshold)
{
    // Twice on each side: no anchors.
    EXPECT_THAT(ids(align({"HELLO", "HELLO"}, {"hello", "hello"})), ElementsAre("d0", "i0", "d1", "i1"));
}

TEST(BlockAligner, fortyPercentSharedWordsAreARewrite)
{
    EXPECT_THAT(ids(align({"a b c"}, {"a b d e"})), ElementsAre("m0-0")) << "2 of 5";
    EXPECT_THAT(ids(align({"a b c"}, {"a b d e f"})), ElementsAre("d0", "i0")) << "2 of 6";
    EXPECT_THAT(ids(align({"a a b c"}, {"a b b b d e"})), ElementsAre("m0-0")) << "repeats count once";
}

TEST(BlockAligner, whatIsLeftOfAGroupComesBehindThePairs)
{
    EXPECT_THAT(ids(align({"a b c", "d e f", "g h i"}, {"a b x", "d e y"})), ElementsAre("m0-0", "m1-1", "d2"));
    EXPECT_THAT(ids(align({"a b c"}, {"a b x", "d e y"})), ElementsAre("m0-0", "i1"));
}

TEST(BlockAligner, aDeletionIsNotPairedWithAnInsertionBeforeIt)
{
    // By the script: insert, equal twice, delete. The common blocks stand twice, so that they are no anchors.
    EXPECT_THAT(ids(align({"s", "s", "a b c"}, {"a b x", "s", "s"})), ElementsAre("i0", "d2"));
}

TEST(BlockAligner, aBlockWordsOfWhichChangedShowsTheOldTextWhereBothAreTheSame)
{
    const BlockAligner::Result result
        = align({"The *Quick* fox, jumps"}, {"the quick fox jumps high"}, {.ignoreCase = true});
    EXPECT_THAT(runs(result),
        ElementsAre(DiffRun{RunKind::same, "The *Quick*", 2}, DiffRun{RunKind::deleted, "fox,", 1},
            DiffRun{RunKind::inserted, "fox", 1}, DiffRun{RunKind::same, "jumps", 1},
            DiffRun{RunKind::inserted, "high", 1}));
}

TEST(BlockAligner, beyondTheBudgetABlockIsReplacedWhole)
{
    const std::vector<std::string> left{"a  b c", "d e f", "g h i"};
    const std::vector<std::string> right{"a  b x", "d e y z", "g h"};
    const BlockAligner::Result result = align(left, right, {.maxTokens = 12});
    ASSERT_THAT(ids(result), ElementsAre("m0-0", "m1-1", "m2-2"));
    EXPECT_THAT(result.changes[0].as<Change::Modified>()->runs.size(), 3U);
    EXPECT_THAT(result.changes[1].as<Change::Modified>()->runs,
        ElementsAre(DiffRun{RunKind::deleted, "d e f", 3}, DiffRun{RunKind::inserted, "d e y z", 4}));
    EXPECT_THAT(result.changes[2].as<Change::Modified>()->runs,
        ElementsAre(DiffRun{RunKind::same, "g h", 2}, DiffRun{RunKind::deleted, "i", 1}))
        << "a smaller pair still fits";
    const BlockAligner::Result none = align(left, right, {.maxTokens = 0});
    EXPECT_THAT(
        runs(none), ElementsAre(DiffRun{RunKind::deleted, "a  b c", 3}, DiffRun{RunKind::inserted, "a  b x", 3}))
        << "the text as it stands";
}

TEST(BlockAligner, anAnchorWithTheSameWordsIsOneRun)
{
    const BlockAligner::Result result = align({"a  b"}, {"a b"}, {.ignoreWhitespace = false});
    EXPECT_THAT(ids(result), ElementsAre("m0-0"));
    EXPECT_THAT(runs(result), ElementsAre(DiffRun{RunKind::same, "a b", 2}));
    EXPECT_EQ(result.changes[0].wordsAdded(), 0U);
}

TEST(BlockAligner, isThePlainAlgorithmOnAnyDocuments)
{
    std::mt19937 random(11);
    for (int round = 0; round < 8'000; ++round) {
        const std::vector<std::string> left = randomDocument(random, 14);
        const std::vector<std::string> right = random() % 3 == 0 ? randomDocument(random, 14) : revised(random, left);
        const ComparisonOptions options = nolfa::testing::randomOptions(random);
        const BlockAligner::Result result = align(left, right, options);
        ASSERT_EQ(result, nolfa::testing::plainAlign(blocks(left), blocks(right), options))
            << ::testing::PrintToString(left) << ::testing::PrintToString(right);
    }
}

TEST(BlockAligner, coversBothSidesOnce)
{
    std::mt19937 random(12);
    for (int round = 0; round < 3'000; ++round) {
        const std::vector<std::string> left = randomDocument(random, 20);
        const std::vector<std::string> right = revised(random, left);
        const BlockAligner::Result result = align(left, right, nolfa::testing::randomOptions(random));
        std::multiset<std::size_t> old;
        std::multiset<std::size_t> revisedOnes;
        for (const Change &change : result.changes) {
            if (change.oldBlock() != nullptr)
                old.insert(change.oldBlock()->index);
            if (change.newBlock() != nullptr)
                revisedOnes.insert(change.newBlock()->index);
        }
        EXPECT_EQ(std::set<std::size_t>(old.begin(), old.end()).size(), old.size());
        EXPECT_EQ(std::set<std::size_t>(revisedOnes.begin(), revisedOnes.end()).size(), revisedOnes.size());
        EXPECT_EQ(old.size() + result.unchangedBlocks, left.size());
        EXPECT_EQ(revisedOnes.size() + result.unchangedBlocks, right.size());
    }
}

TEST(BlockAligner, theRunsOfAModifiedBlockSpellOutBothTexts)
{
    std::mt19937 random(13);
    std::size_t modified = 0;
    for (int round = 0; round < 3'000; ++round) {
        const std::vector<std::string> left = randomDocument(random, 12);
        const ComparisonOptions options = nolfa::testing::randomOptions(random);
        const BlockAligner::Result result = align(left, revised(random, left), options);
        for (const Change &change : result.changes) {
            const auto *modification = change.as<Change::Modified>();
            if (modification == nullptr)
                continue;
            ++modified;
            EXPECT_EQ(wordsWithout(RunKind::inserted, modification->runs), WordTokenizer::raw(modification->old.text));
            EXPECT_EQ(keysOf(wordsWithout(RunKind::deleted, modification->runs), options),
                keysOf(WordTokenizer::raw(modification->current.text), options));
        }
    }
    EXPECT_GT(modified, 500U);
}

TEST(BlockAligner, aStopEndsIt)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(static_cast<void>(BlockAligner::align(blocks({"a"}), blocks({"b"}), {}, source.get_token())),
        CancellationError);
}
