#include "Engine/ElementCollector.h"

#include "Support/Expect.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace nolfa::ElementCollector;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST(ElementCollector, gathersAttributesInDocumentOrderAtAnyDepth)
{
    const TemporaryFolder folder;
    const auto part = folder.write("a.xml", "<x><s id='1' r:id='2'/><y><s id='3'><s/></s></y><p:s id='4'/></x>");
    EXPECT_THAT(collect("s", part, {}),
        ElementsAre(ElementsAre(Pair("id", "1"), Pair("r:id", "2")), ElementsAre(Pair("id", "3")), IsEmpty()));
    EXPECT_THAT(collect("p:s", part, {}), ElementsAre(ElementsAre(Pair("id", "4"))));
}

TEST(ElementCollector, absentAndMalformedPartsGiveWhatTheyCan)
{
    const TemporaryFolder folder;
    EXPECT_THAT(collect("s", std::nullopt, {}), IsEmpty());
    EXPECT_THAT(collect("s", folder / "missing", {}), IsEmpty());
    EXPECT_THAT(collect("s", folder.write("a.xml", "<x><s id='1'/><s id=2/></x>"), {}),
        ElementsAre(ElementsAre(Pair("id", "1"))));
}

TEST(ElementCollector, relationshipsNeedBothAttributesAndTheLastOfAnIdStands)
{
    const TemporaryFolder folder;
    const auto part = folder.write("a.rels",
        "<Relationships><Relationship Id='a' Target='1'/><Relationship Id='b'/><Relationship Target='2'/>"
        "<Relationship Id='a' Target='3'/><Relationship Id='' Target=''/></Relationships>");
    EXPECT_THAT(relationshipTargets(part, {}), ElementsAre(Pair("", ""), Pair("a", "3")));
}

TEST(ElementCollector, refusesMoreThanAnyDocumentHolds)
{
    const TemporaryFolder folder;
    std::string text = "<x>";
    for (int count = 0; count < 600'000; ++count)
        text += "<s/>";
    const auto part = folder.write("a.xml", text + "</x>");
    (void)expectCase<ConversionError::EngineFailure>([&] { (void)collect("s", part, {}); });
    EXPECT_THAT(collect("t", part, {}), IsEmpty());
}
