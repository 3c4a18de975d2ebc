#include "Platform/UUID.h"

#include <gmock/gmock.h>
#include <set>

TEST(UUID, isRandomAndInUpperCase)
{
    std::set<std::string> seen;
    for (int count = 0; count < 1000; ++count) {
        const std::string uuid = nolfa::newUUID();
        EXPECT_THAT(
            uuid, ::testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000U);
}
