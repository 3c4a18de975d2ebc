#include "Compare/BlockPair.h"

#include <gmock/gmock.h>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr std::size_t plenty = 1000;

} // namespace

TEST(BlockPair, textsWithoutWordsShareEverythingAndHaveNoRuns)
{
    BlockPair pair({});
    pair.read(" ", "\t", plenty, {});
    EXPECT_EQ(pair.jaccard(), 1.0);
    EXPECT_THAT(pair.runs({}), IsEmpty());
    EXPECT_THAT(pair.wholeRuns(), IsEmpty());
}

TEST(BlockPair, aSideWithoutWordsHasNoRunOfItsOwn)
{
    BlockPair pair({});
    pair.read(" ", "a  b", plenty, {});
    EXPECT_EQ(pair.jaccard(), 0.0);
    EXPECT_THAT(pair.runs({}), ElementsAre(DiffRun{RunKind::inserted, "a b", 2}));
    EXPECT_THAT(pair.wholeRuns(), ElementsAre(DiffRun{RunKind::inserted, "a  b", 2}));
    pair.read("a  b", "", plenty, {});
    EXPECT_THAT(pair.wholeRuns(), ElementsAre(DiffRun{RunKind::deleted, "a  b", 2}));
}

TEST(BlockPair, countsDistinctKeysOnce)
{
    BlockPair pair({});
    pair.read("a a a b c", "a b b d *d*", plenty, {});
    EXPECT_EQ(pair.jaccard(), 0.5);
    EXPECT_EQ(pair.words(), 10U);
}

TEST(BlockPair, servesManyPairs)
{
    BlockPair pair({.ignoreCase = true});
    std::string many;
    for (int i = 0; i < 5000; ++i)
        many += "É" + std::to_string(i) + ' ';
    for (int round = 0; round < 3; ++round) {
        pair.read(many, many, plenty * plenty, {});
        EXPECT_EQ(pair.jaccard(), 1.0);
        ASSERT_THAT(pair.runs({}), ::testing::SizeIs(1));
        pair.read("É", "é", plenty, {});
        EXPECT_THAT(pair.runs({}), ElementsAre(DiffRun{RunKind::same, "É", 1}));
    }
}

TEST(BlockPair, countsOnBeyondWhatItKeeps)
{
    BlockPair pair({});
    pair.read("a b c d", "a x c d", 2, {});
    EXPECT_EQ(pair.words(), 8U);
    EXPECT_EQ(pair.jaccard(), 0.6);
}
