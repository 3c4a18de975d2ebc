#include "Engine/ConversionError.h"
#include "Nolfa/Support/ConvertViewModelTest.h"

#include <map>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

using ConvertBatchTests = ConvertViewModelTest;

// Batches

TEST_F(ConvertBatchTests, aRowRunsAndIsDoneWithItsOutput)
{
    add({"/in/a.docx"});
    press();
    EXPECT_TRUE(row(0).is(Case::running));
    ASSERT_TRUE(runs(1));
    EXPECT_EQ(service->calls().front(), (HeldService::Call{"/in/a.docx", DocumentFormat::markdown, std::nullopt}));
    service->succeed("a.docx", "/in/a.md");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(row(0).output, "/in/a.md");
    EXPECT_TRUE(model().batch().empty());
    EXPECT_EQ(model().taskCount(), 0U);
}

TEST_F(ConvertBatchTests, rowsThatWaitForASlotShowAsRunningButDoNotRun)
{
    add({"/1.md", "/2.md", "/3.md", "/4.md"});
    press();
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_TRUE(row(index).is(Case::running));
    ASSERT_TRUE(runs(2));
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(runs(3));
    for (const char *name : {"2.md", "3.md", "4.md"})
        service->succeed(name, "/out.pdf");
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_TRUE(comesTo(index, Case::done));
    EXPECT_EQ(service->most(), 2);
}

TEST_F(ConvertBatchTests, halfTheProcessorsConvertButNeverFewerThanTwo)
{
    const std::map<int, int> expected{{-1, 2}, {1, 2}, {2, 2}, {3, 2}, {4, 2}, {5, 2}, {6, 3}, {8, 4}, {64, 32}};
    for (const auto &[processors, conversions] : expected)
        EXPECT_EQ(ConvertViewModel::maxConcurrent(processors), conversions) << processors;
}

TEST_F(ConvertBatchTests, aSecondPressRetriesWhatFailedAndDoesNotRedoWhatIsDone)
{
    add({"/1.md", "/2.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    service->fail("2.md", ConversionError::timedOut("typst"));
    ASSERT_TRUE(comesTo(0, Case::done) && comesTo(1, Case::failed));
    add({"/3.md"});
    press();
    EXPECT_TRUE(row(0).is(Case::done));
    EXPECT_TRUE(row(1).is(Case::running));
    EXPECT_TRUE(row(2).is(Case::running));
    EXPECT_EQ(model().batch().size(), 2U);
    service->succeed("2.md", "/2.pdf");
    service->succeed("3.md", "/3.pdf");
    EXPECT_TRUE(comesTo(1, Case::done) && comesTo(2, Case::done));
    EXPECT_EQ(service->calls().size(), 4U);
}

TEST_F(ConvertBatchTests, convertAllWithOnlyDoneRowsChangesNothing)
{
    add({"/1.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    const auto changes = countOf(model().itemModel(), &QAbstractItemModel::dataChanged);
    press();
    EXPECT_EQ(*changes, 0);
    EXPECT_FALSE(model().isConverting());
    EXPECT_EQ(service->calls().size(), 1U);
}

TEST_F(ConvertBatchTests, convertAllWithNothingPendingLeavesABatchInFlightAlone)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    settings().setRevealAfterConvert(false);
    press();
    EXPECT_EQ(model().batch().size(), 1U);
    EXPECT_EQ(model().batchOutputs(), Files{"/1.pdf"});
    EXPECT_TRUE(model().revealWhenBatchEnds());
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(1, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/1.pdf", "/2.pdf"}}));
}

TEST_F(ConvertBatchTests, aPressWhileRowsRunReplacesTheBatchAndTheEarlierRowsAreNotRevealed)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md"});
    press();
    add({"/2.md"});
    press();
    EXPECT_EQ(model().batch(), (std::unordered_set<QUuid, UuidHash>{row(1).id}));
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_TRUE(model().batchOutputs().empty());
    EXPECT_EQ(model().batch().size(), 1U);
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(1, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/2.pdf"}}));
    EXPECT_EQ(service->calls().size(), 2U) << "the running row wasn't started again";
}

TEST_F(ConvertBatchTests, aPressForgetsTheOutputsOfABatchThatIsStillUnderWay)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    ASSERT_EQ(model().batchOutputs(), Files{"/1.pdf"});
    add({"/3.md"});
    press();
    EXPECT_TRUE(model().batchOutputs().empty());
    service->succeed("3.md", "/3.pdf");
    ASSERT_TRUE(comesTo(2, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/3.pdf"}}));
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(1, Case::done));
    EXPECT_EQ(desktop->revealed.size(), 1U) << "a row of no batch is followed by nothing";
}

// Showing what was made

TEST_F(ConvertBatchTests, threeRowsOfWhichOneFailsRevealTwoOutputsOnceInSettlingOrder)
{
    conversionsAtOnce = 3;
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md", "/3.md"});
    press();
    service->succeed("3.md", "/3.pdf");
    ASSERT_TRUE(comesTo(2, Case::done));
    service->fail("2.md", ConversionError::timedOut("typst"));
    ASSERT_TRUE(comesTo(1, Case::failed));
    EXPECT_TRUE(desktop->revealed.empty());
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/3.pdf", "/1.pdf"}}));
    EXPECT_FALSE(model().revealWhenBatchEnds());
    EXPECT_TRUE(model().batchOutputs().empty());
}

TEST_F(ConvertBatchTests, removingTheLastOpenRowOfABatchRevealsNothing)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    model().remove(row(1).id);
    EXPECT_TRUE(model().batch().empty());
    EXPECT_TRUE(model().batchOutputs().empty());
    EXPECT_FALSE(model().revealWhenBatchEnds());
    settleDown();
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertBatchTests, removingAnOpenRowBeforeTheLastLeavesTheRevealToTheOthers)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md"});
    press();
    model().remove(row(0).id);
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/2.pdf"}}));
}

TEST_F(ConvertBatchTests, aBatchInWhichEveryRowFailedRevealsNothing)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md"});
    press();
    service->fail("1.md", ConversionError::timedOut("typst"));
    ASSERT_TRUE(comesTo(0, Case::failed));
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertBatchTests, whetherToRevealIsDecidedWhenTheBatchStarts)
{
    settings();
    add({"/1.md"});
    press();
    settings().setRevealAfterConvert(true);
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertBatchTests, aRowsOutputIsRevealedAndOpenedOnceThereIsOne)
{
    add({"/1.md"});
    const QUuid id = row(0).id;
    model().reveal(id);
    model().open(id);
    model().reveal(QUuid());
    model().open(QUuid());
    EXPECT_TRUE(desktop->revealed.empty() && desktop->opened.empty());
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    model().reveal(id);
    model().open(id);
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/1.pdf"}}));
    EXPECT_EQ(desktop->opened, Files{"/1.pdf"});
}

// The output folder

TEST_F(ConvertBatchTests, theOutputFolderIsThatOfTheMomentWhenTheRowStarts)
{
    settings().setOutputMode(OutputMode::custom);
    settings().setCustomOutputDirectoryPath("/first");
    conversionsAtOnce = 1;
    add({"/1.md"});
    press();
    settings().setCustomOutputDirectoryPath("/second");
    add({"/2.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(service->calls()[0].folder, "/first");
    EXPECT_EQ(service->calls()[1].folder, "/second");
    service->succeed("2.md", "/2.pdf");
    EXPECT_TRUE(comesTo(1, Case::done));
}
