#include "Platform/UUID.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

TEST(UUID, isRandomAndInUpperCase)
{
    static const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> seen;
    for (int count = 0; count < 1000; ++count) {
        const std::string uuid = nolfa::newUUID();
        EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000U);
}
