#include "Engine/VisionTextRecognizer.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(VisionTextRecognizer, aCandidateBelowThreeTenthsLeavesNoFragment)
{
    const Rectangle box{0.1, 0.2, 0.3, 0.4};
    const std::vector<RecognizedFragment> fragments = VisionTextRecognizer::fragments({{"unsure", box, 0.29F},
        {" just ", box, 0.3F}, {"below", box, 0.29999998F}, {"sure", {0.5, 0.6, 0.1, 0.1}, 0.97F}});
    EXPECT_EQ(fragments, (std::vector<RecognizedFragment>{{" just ", box}, {"sure", {0.5, 0.6, 0.1, 0.1}}}));
}

TEST(VisionTextRecognizer, noCandidatesLeaveAnEmptyList)
{
    EXPECT_TRUE(VisionTextRecognizer::fragments({}).empty());
}
