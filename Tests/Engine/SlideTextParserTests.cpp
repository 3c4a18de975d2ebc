#include "Engine/SlideTextParser.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> paragraphsOf(const std::string &content)
{
    const TemporaryFolder folder;
    return SlideTextParser::parse(folder.write("slide1.xml", "<p:sld>" + content + "</p:sld>"), {});
}

} // namespace

TEST(SlideTextParser, runsOfAParagraphAreJoinedDirectly)
{
    EXPECT_THAT(paragraphsOf("<a:p><a:r><a:t>Bon</a:t></a:r><a:br/><a:r><a:t>jour</a:t></a:r></a:p><a:p><a:fld>"
                             "<a:t>3</a:t></a:fld></a:p>"),
        ElementsAre("Bonjour", "3"));
}

TEST(SlideTextParser, paragraphsAreTrimmedAndEmptyOnesLeaveNoTrace)
{
    EXPECT_THAT(
        paragraphsOf("<a:p/><a:p><a:t> \n a b\u00A0\u2028</a:t></a:p><a:p><a:t> </a:t></a:p>"), ElementsAre("a b"));
}

TEST(SlideTextParser, textOutsideRunsAndOtherPrefixesDontCount)
{
    EXPECT_THAT(paragraphsOf("stray<a:p>stray<a:t>in</a:t>stray</a:p><x:p><x:t>other</x:t></x:p>"), ElementsAre("in"));
}

TEST(SlideTextParser, aNestedParagraphFollowsTheEventsToTheLetter)
{
    EXPECT_THAT(paragraphsOf("<a:p><a:t>lost</a:t><a:p><a:t>inner</a:t></a:p><a:t>+</a:t></a:p>"),
        ElementsAre("inner", "inner+"));
}

TEST(SlideTextParser, damageKeepsWhatCameBefore)
{
    EXPECT_THAT(paragraphsOf("<a:p><a:t>one</a:t></a:p><a:p><a:t>two</a:p>"), ElementsAre("one"));
    EXPECT_THAT(SlideTextParser::parse("/nonexistent", {}), IsEmpty());
}
