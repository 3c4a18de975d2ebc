#include "Platform/JSON.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(JSON, readsEveryKindOfValue)
{
    const std::optional<JSON> json = JSON::parse(R"({"a": [null, true, -1.5e3, "é\n"], "b": {}})");
    ASSERT_TRUE(json);
    const JSON expected(JSON::Object{{"a", JSON::Array{JSON(), true, -1500, "é\n"}}, {"b", JSON::Object()}});
    EXPECT_EQ(*json, expected);
}

TEST(JSON, theLastOfRepeatedKeysStands)
{
    const std::optional<JSON> json = JSON::parse(R"({"id": "first", "id": "last"})");
    ASSERT_TRUE(json);
    EXPECT_EQ(json->find("id")->string(), "last");
}

TEST(JSON, aByteOrderMarkIsAccepted)
{
    EXPECT_TRUE(JSON::parse("\xEF\xBB\xBF{}"));
}

TEST(JSON, refusesWhatIsNotStrict)
{
    for (const char *text : {"", "{", "{'a': 1}", "[1,]", "{} x", "// c\n{}", "NaN", "\"\xFF\""})
        EXPECT_FALSE(JSON::parse(text)) << text;
}

TEST(JSON, refusesTextsThatAreTooDeep)
{
    EXPECT_TRUE(JSON::parse(std::string(500, '[') + std::string(500, ']')));
    EXPECT_FALSE(JSON::parse(std::string(1'000'000, '[')));
}

TEST(JSON, membersOfWhatIsNoObjectAreAbsent)
{
    EXPECT_EQ(JSON(3).find("a"), nullptr);
    EXPECT_EQ(JSON(3).string(), std::nullopt);
}

TEST(JSON, writesWholeNumbersAsSuchAndRepairsText)
{
    const JSON json(JSON::Object{{"version", 1}, {"half", 0.5}, {"name", "a\xFF"}});
    EXPECT_EQ(json.text(), "{\n  \"version\": 1,\n  \"half\": 0.5,\n  \"name\": \"a\xEF\xBF\xBD\"\n}");
}
