#include "Engine/SharedStrings.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> stringsOf(std::string_view document)
{
    const TemporaryFolder folder;
    const SharedStrings strings = SharedStrings::read(folder.write("s.xml", document), {});
    std::vector<std::string> all;
    for (std::size_t index = 0; index < strings.size(); ++index)
        all.emplace_back(strings[index]);
    return all;
}

} // namespace

TEST(SharedStrings, allTextsOfAnItemAreJoined)
{
    EXPECT_THAT(stringsOf("<sst><si><t>one</t></si><si><r><t>rich </t></r><r><t>text</t></r><rPh><t>ph</t></rPh></si>"
                          "<si/><si><t/></si><si>stray<t>a&amp;b</t>stray</si></sst>"),
        ElementsAre("one", "rich textph", "", "", "a&b"));
}

TEST(SharedStrings, damageKeepsWhatCameBefore)
{
    EXPECT_THAT(stringsOf("<sst><si><t>one</t></si><si><t>two</si>"), ElementsAre("one"));
    EXPECT_THAT(stringsOf("not xml"), IsEmpty());
    EXPECT_EQ(SharedStrings::read(std::nullopt, {}).size(), 0U);
    EXPECT_EQ(SharedStrings::read("/nonexistent", {}).size(), 0U);
}
