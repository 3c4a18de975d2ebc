#include "Compare/MyersDiff.h"

#include "Compare/PlainComparison.h"
#include "Platform/CancellationError.h"

#include <gmock/gmock.h>
#include <numeric>
#include <ostream>
#include <thread>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace nolfa {

void PrintTo(const DiffOperation &operation, std::ostream *out)
{
    if (const auto *equal = std::get_if<DiffOperation::Equal>(&operation.value))
        *out << "equal(" << equal->left << ", " << equal->right << ", " << equal->length << ")";
    else if (const auto *deletion = std::get_if<DiffOperation::Delete>(&operation.value))
        *out << "delete(" << deletion->left << ", " << deletion->length << ")";
    else if (const auto *insertion = std::get_if<DiffOperation::Insert>(&operation.value))
        *out << "insert(" << insertion->right << ", " << insertion->length << ")";
}

} // namespace nolfa

namespace {

using Sequence = std::vector<std::string>;

DiffOperation equal(std::size_t left, std::size_t right, std::size_t length)
{
    return {DiffOperation::Equal{left, right, length}};
}

DiffOperation remove(std::size_t left, std::size_t length)
{
    return {DiffOperation::Delete{left, length}};
}

DiffOperation insert(std::size_t right, std::size_t length)
{
    return {DiffOperation::Insert{right, length}};
}

std::vector<DiffOperation> diff(
    const Sequence &left, const Sequence &right, std::optional<std::int64_t> maxD = std::nullopt)
{
    return MyersDiff::operations(std::span(left), std::span(right), maxD);
}

Sequence randomSequence(std::mt19937 &random, std::size_t longest, unsigned alphabet)
{
    Sequence sequence(random() % (longest + 1));
    for (std::string &element : sequence)
        element = std::string(1, static_cast<char>('a' + random() % alphabet));
    return sequence;
}

/// A copy with a number of random edits.
Sequence edited(std::mt19937 &random, Sequence sequence, std::size_t edits, unsigned alphabet)
{
    for (; edits > 0; --edits) {
        const std::size_t place = random() % (sequence.size() + 1);
        const auto at = sequence.begin() + static_cast<std::ptrdiff_t>(place);
        if (place < sequence.size() && random() % 2 == 0)
            sequence.erase(at);
        else
            sequence.insert(at, std::string(1, static_cast<char>('a' + random() % alphabet)));
    }
    return sequence;
}

/// Carries a script out, and fails the test where it doesn't fit.
Sequence applied(const std::vector<DiffOperation> &script, const Sequence &left, const Sequence &right)
{
    Sequence result;
    std::size_t x = 0;
    std::size_t y = 0;
    for (const DiffOperation &operation : script) {
        if (const auto *e = std::get_if<DiffOperation::Equal>(&operation.value)) {
            EXPECT_EQ(e->left, x);
            EXPECT_EQ(e->right, y);
            EXPECT_GT(e->length, 0U);
            for (std::size_t i = 0; i < e->length; ++i)
                result.push_back(left.at(x + i));
            x += e->length;
            y += e->length;
        } else if (const auto *d = std::get_if<DiffOperation::Delete>(&operation.value)) {
            EXPECT_EQ(d->left, x);
            EXPECT_GT(d->length, 0U);
            x += d->length;
        } else if (const auto *i = std::get_if<DiffOperation::Insert>(&operation.value)) {
            EXPECT_EQ(i->right, y);
            EXPECT_GT(i->length, 0U);
            for (std::size_t j = 0; j < i->length; ++j)
                result.push_back(right.at(y + j));
            y += i->length;
        }
    }
    EXPECT_EQ(x, left.size());
    EXPECT_EQ(y, right.size());
    return result;
}

} // namespace

TEST(MyersDiff, emptySequencesNeedNoOperations)
{
    EXPECT_THAT(diff({}, {}), IsEmpty());
}

TEST(MyersDiff, equalSequencesAreOneOperation)
{
    EXPECT_THAT(diff({"a", "b", "a"}, {"a", "b", "a"}), ElementsAre(equal(0, 0, 3)));
}

TEST(MyersDiff, againstNothingEverythingComesOrGoes)
{
    EXPECT_THAT(diff({}, {"a", "b"}), ElementsAre(insert(0, 2)));
    EXPECT_THAT(diff({"a", "b"}, {}), ElementsAre(remove(0, 2)));
}

TEST(MyersDiff, aReplacementIsADeletionAndThenAnInsertion)
{
    EXPECT_THAT(diff({"a", "b", "c"}, {"a", "x", "c"}),
        ElementsAre(equal(0, 0, 1), remove(1, 1), insert(1, 1), equal(2, 2, 1)));
    EXPECT_THAT(diff({"a"}, {"b"}), ElementsAre(remove(0, 1), insert(0, 1)));
}

TEST(MyersDiff, theBoundFollowsTheGeometricMean)
{
    EXPECT_EQ(MyersDiff::maxEditDistance(0, 5), 0);
    EXPECT_EQ(MyersDiff::maxEditDistance(1, 1), 4);
    EXPECT_EQ(MyersDiff::maxEditDistance(3, 3), 12);
    EXPECT_EQ(MyersDiff::maxEditDistance(2, 4), 8) << "rounded down";
    EXPECT_EQ(MyersDiff::maxEditDistance(5000, 5000), 20000);
    EXPECT_EQ(MyersDiff::maxEditDistance(100000, 100000), 20000);
    EXPECT_EQ(MyersDiff::maxEditDistance(3'000'000'000, 3'000'000'000), 20000);
}

TEST(MyersDiff, oneDifferenceIsAlwaysAllowed)
{
    for (const std::int64_t bound : {std::int64_t{0}, std::int64_t{-7}, std::int64_t{1}}) {
        EXPECT_THAT(
            diff({"a", "b", "c"}, {"a", "c"}, bound), ElementsAre(equal(0, 0, 1), remove(1, 1), equal(2, 1, 1)));
        EXPECT_THAT(diff({"b", "a"}, {"a", "x"}, bound), ElementsAre(remove(0, 2), insert(0, 2)));
    }
}

TEST(MyersDiff, beyondTheBoundTheMiddleIsReplacedWhole)
{
    // "c" is common to both middles, and isn't found.
    EXPECT_THAT(diff({"p", "a", "c", "b", "s"}, {"p", "x", "c", "y", "s"}, 3),
        ElementsAre(equal(0, 0, 1), remove(1, 3), insert(1, 3), equal(4, 4, 1)));
    EXPECT_THAT(diff({"p", "a", "c", "b", "s"}, {"p", "x", "c", "y", "s"}, 4),
        ElementsAre(
            equal(0, 0, 1), remove(1, 1), insert(1, 1), equal(2, 2, 1), remove(3, 1), insert(3, 1), equal(4, 4, 1)));
}

TEST(MyersDiff, startAndEndNeverShareAnElement)
{
    EXPECT_THAT(diff({"a", "a"}, {"a", "a", "a"}), ElementsAre(equal(0, 0, 2), insert(2, 1)));
    EXPECT_THAT(diff({"a", "a", "a"}, {"a", "a"}), ElementsAre(equal(0, 0, 2), remove(2, 1)));
}

TEST(MyersDiff, tokensAreComparedByTheirKeys)
{
    const std::vector<WordToken> left{{"*a*", "a"}, {"B", "b"}};
    const std::vector<WordToken> right{{"a", "a"}, {"b", "b"}};
    EXPECT_THAT(MyersDiff::operations(std::span(left), std::span(right)), ElementsAre(equal(0, 0, 2)));
}

TEST(MyersDiff, isThePlainAlgorithmToTheLastOperation)
{
    std::mt19937 random(7);
    for (int round = 0; round < 30'000; ++round) {
        const unsigned alphabet = 1 + random() % 8;
        const Sequence left = randomSequence(random, round % 100 == 0 ? 120 : 14, alphabet);
        const Sequence right = random() % 2 == 0 ? randomSequence(random, round % 100 == 0 ? 120 : 14, alphabet)
                                                 : edited(random, left, random() % 6, alphabet);
        const std::optional<std::int64_t> maxD
            = random() % 2 == 0 ? std::nullopt : std::optional<std::int64_t>(random() % 20);
        const std::vector<DiffOperation> script = diff(left, right, maxD);
        ASSERT_EQ(script, nolfa::testing::plainOperations(left, right, maxD))
            << ::testing::PrintToString(left) << ::testing::PrintToString(right);
        ASSERT_EQ(applied(script, left, right), right);
    }
}

TEST(MyersDiff, isThePlainAlgorithmWhereMostElementsStandOnOneSideOnly)
{
    std::mt19937 random(8);
    for (int round = 0; round < 300; ++round) {
        Sequence left = randomSequence(random, 150, 20);
        Sequence right = randomSequence(random, 150, 20);
        for (std::string &element : left)
            element += random() % 8 == 0 ? "" : "left";
        for (std::string &element : right)
            element += random() % 8 == 0 ? "" : "right";
        const std::optional<std::int64_t> maxD
            = random() % 2 == 0 ? std::nullopt : std::optional<std::int64_t>(random() % 300);
        ASSERT_EQ(diff(left, right, maxD), nolfa::testing::plainOperations(left, right, maxD));
    }
}

TEST(MyersDiff, scriptsOfLongSequencesFit)
{
    std::mt19937 random(9);
    for (const std::size_t edits : {3U, 100U, 3000U}) {
        Sequence left(6000);
        for (std::string &element : left)
            element = std::string(1, static_cast<char>('a' + random() % 20));
        const Sequence right = edited(random, left, edits, 20);
        EXPECT_EQ(applied(diff(left, right), left, right), right);
    }
}

TEST(MyersDiff, passingTheCeilingLeavesStartAndEnd)
{
    // 30,000 elements that stand on one side only, each followed by a common one: no script has 20,000 differences.
    std::vector<std::uint32_t> left{1};
    std::vector<std::uint32_t> right{1};
    for (std::uint32_t i = 0; i < 30'000; ++i) {
        left.insert(left.end(), {10 + 2 * i, 2});
        right.insert(right.end(), {11 + 2 * i, 2});
    }
    EXPECT_THAT(MyersDiff::operations(std::span<const std::uint32_t>(left), right),
        ElementsAre(equal(0, 0, 1), remove(1, 59'999), insert(1, 59'999), equal(60'000, 60'000, 1)));
}

TEST(MyersDiff, aStopEndsASearchUnderWay)
{
    // Nearly all the differences that are searched for at most, and no short cut.
    std::vector<std::uint32_t> left(100'000);
    std::iota(left.begin(), left.end(), 0U);
    std::vector<std::uint32_t> right(left.rbegin(), left.rend());
    auto best = std::chrono::steady_clock::duration::max();
    for (int round = 0; round < 3; ++round) {
        std::stop_source source;
        std::chrono::steady_clock::time_point asked;
        std::jthread stopper([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            asked = std::chrono::steady_clock::now();
            source.request_stop();
        });
        EXPECT_THROW(static_cast<void>(MyersDiff::operations(
                         std::span<const std::uint32_t>(left), right, std::nullopt, source.get_token())),
            CancellationError);
        const auto returned = std::chrono::steady_clock::now();
        stopper.join();
        best = std::min(best, returned - asked);
    }
    EXPECT_LT(best, std::chrono::milliseconds(100));
}
