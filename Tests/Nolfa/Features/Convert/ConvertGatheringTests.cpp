#include "Nolfa/Support/ConvertViewModelTest.h"

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

using ConvertGatheringTests = ConvertViewModelTest;

// Gathering files

TEST_F(ConvertGatheringTests, startsEmpty)
{
    EXPECT_TRUE(model().items().empty());
    EXPECT_FALSE(model().notice());
    EXPECT_FALSE(model().revealWhenBatchEnds());
    EXPECT_FALSE(model().isConverting());
}

TEST_F(ConvertGatheringTests, aFileBecomesAnIdleRowAndNothingStarts)
{
    add({"/in/b.docx", "/in/a.md"});
    ASSERT_EQ(model().items().size(), 2U);
    EXPECT_EQ(row(0).url, "/in/b.docx") << "rows stand in the order in which they came";
    EXPECT_EQ(row(0).source, DocumentFormat::docx);
    EXPECT_TRUE(row(0).is(Case::idle));
    EXPECT_FALSE(row(0).output);
    EXPECT_NE(row(0).id, row(1).id);
    EXPECT_TRUE(service->calls().empty());
}

TEST_F(ConvertGatheringTests, markdownDefaultsToPDFAndEverythingElseToMarkdown)
{
    add({"/a.md", "/a.pdf", "/a.docx", "/a.gdoc", "/a.jpeg", "/a.xlsx", "/a.key"});
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
    for (std::size_t index = 1; index < model().items().size(); ++index)
        EXPECT_EQ(row(index).target, DocumentFormat::markdown) << row(index).url;
}

TEST_F(ConvertGatheringTests, theSameFileTwiceInOneDropIsOneRowAndOneDuplicate)
{
    add({"/in/a.md", "/in/a.md"});
    EXPECT_EQ(model().items().size(), 1U);
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 0, .duplicates = 1}));
}

TEST_F(ConvertGatheringTests, aFileOfAnEarlierDropIsADuplicateUntilItIsRemoved)
{
    add({"/in/a.md"});
    add({"/in/a.md", "/in/b.md"});
    EXPECT_EQ(model().items().size(), 2U);
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 0, .duplicates = 1}));
    model().remove(row(0).id);
    add({"/in/a.md"});
    EXPECT_EQ(model().items().size(), 2U);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertGatheringTests, pathsAreComparedAsTheyStand)
{
    add({"/in/a.md", "/in//a.md", "/in/./a.md", "/IN/a.md"});
    EXPECT_EQ(model().items().size(), 4U);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertGatheringTests, unknownFormatsMakeNoRowAndAreCounted)
{
    add({"/in/a.txt", "/in/b", "/in/c.tiff"});
    EXPECT_TRUE(model().items().empty());
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 3, .duplicates = 0}));
}

TEST_F(ConvertGatheringTests, addressesOfScreensAreTakenByteForByteAndOthersSkipped)
{
    model().add(QList<QUrl>{QUrl("file:///in/a%20b%23.md"), QUrl::fromEncoded("file:///in/caf%E9.md"),
        QUrl("https://example.org/a.md"), QUrl("file://elsewhere/a.md"), QUrl(), QUrl("file:///in/%00.md"),
        QUrl("file:///in/été.md")});
    ASSERT_EQ(model().items().size(), 3U);
    EXPECT_EQ(row(0).url, "/in/a b#.md");
    EXPECT_EQ(row(1).url, "/in/caf\xE9.md") << "a name that isn't UTF-8";
    EXPECT_EQ(row(2).url, "/in/été.md");
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 4, .duplicates = 0}));
}

// The notice

TEST_F(ConvertGatheringTests, anEmptyDropRemovesTheNotice)
{
    add({"/in/a.txt"});
    ASSERT_TRUE(model().notice());
    add({});
    EXPECT_FALSE(model().notice());
    EXPECT_EQ(clock->pending(), 0);
}

TEST_F(ConvertGatheringTests, theNoticeGoesAfterFourSeconds)
{
    add({"/in/a.txt"});
    clock->advance(3'999ms);
    EXPECT_TRUE(model().notice());
    clock->advance(1ms);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertGatheringTests, aSecondDropReplacesTheCountsAndRestartsTheTime)
{
    add({"/in/a.txt", "/in/b.txt"});
    clock->advance(3s);
    add({"/in/c.txt"});
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 1, .duplicates = 0}));
    clock->advance(3s);
    EXPECT_TRUE(model().notice()) << "the first drop's time is over, the second's isn't";
    clock->advance(1s);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertGatheringTests, aDropThatOnlyAddsRowsRemovesTheNotice)
{
    add({"/in/a.txt"});
    add({"/in/a.md"});
    EXPECT_FALSE(model().notice());
    EXPECT_EQ(clock->pending(), 0);
}

TEST_F(ConvertGatheringTests, theNoticeIsToldWhenItComesChangesAndGoes)
{
    const auto told = countOf(&model(), &ConvertViewModel::noticeChanged);
    add({"/in/a.txt"});
    EXPECT_EQ(*told, 1);
    EXPECT_EQ(model().property("skipped"), 1);
    EXPECT_EQ(model().property("duplicates"), 0);
    clock->advance(4s);
    EXPECT_EQ(*told, 2);
    EXPECT_EQ(model().property("hasNotice"), false);
}

TEST_F(ConvertGatheringTests, theModelMayGoWhileANoticeIsOnShow)
{
    add({"/in/a.txt"});
    destroyModel();
    EXPECT_EQ(clock->pending(), 0);
    clock->advance(4s);
}
