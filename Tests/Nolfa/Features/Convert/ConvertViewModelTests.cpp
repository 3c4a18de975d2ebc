#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include "Engine/ConversionError.h"
#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/HeldService.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <QAbstractItemModelTester>
#include <QSettings>
#include <gtest/gtest.h>
#include <map>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Case = ConvertItem::State::Case;
using Files = std::vector<fs::path>;

namespace {

class ConvertViewModelTests : public ::testing::Test {
protected:
    ConvertViewModelTests() { ensureApplication(); }
    ~ConvertViewModelTests() override
    {
        // Nothing more comes once the queue is gone.
        m_model.reset();
    }

    AppSettings &settings()
    {
        if (!m_settings) {
            m_settings = std::make_unique<AppSettings>(std::make_unique<QSettings>(
                QString::fromStdString((m_folder / "settings.ini").native()), QSettings::IniFormat));
        }
        return *m_settings;
    }

    /// Made at the first call; with settings, if the test asked for these before.
    ConvertViewModel &model()
    {
        if (!m_model) {
            m_model = std::make_unique<ConvertViewModel>(m_settings.get(),
                ConvertViewModel::Surroundings{
                    .service = service, .clock = clock, .desktop = desktop, .maxConcurrent = conversionsAtOnce});
            if (isChecked)
                m_tester = std::make_unique<QAbstractItemModelTester>(
                    m_model->itemModel(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        }
        return *m_model;
    }

    void destroyModel()
    {
        m_tester.reset();
        m_model.reset();
    }

    void add(const Files &files) { model().add(files); }

    const ConvertItem &row(std::size_t index) { return model().items().at(index); }

    void press() { model().convertAll(); }

    [[nodiscard]] bool comesTo(std::size_t index, Case value)
    {
        return spinUntil([&] { return row(index).is(value); });
    }

    [[nodiscard]] bool runs(std::size_t calls)
    {
        return spinUntil([&] { return service->calls().size() == calls; });
    }

    /// Waits until everything that ended so far has been told.
    void settleDown()
    {
        const bool isQuiet = spinUntil([&] { return service->inside() == 0; });
        EXPECT_TRUE(isQuiet);
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(1ms);
        }
    }

    std::shared_ptr<HeldService> service = std::make_shared<HeldService>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<RecordingDesktop> desktop = std::make_shared<RecordingDesktop>();
    int conversionsAtOnce = 2;
    /// Whether every change is held against the rules of item models, which takes time for each row.
    bool isChecked = true;

private:
    const TemporaryFolder m_folder;
    const LanguageScope m_language{NolfaLanguage::en};
    const LocaleScope m_locale{NolfaFormat::locale()};
    std::unique_ptr<AppSettings> m_settings;
    std::unique_ptr<ConvertViewModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

/// Counts how often a signal comes.
template <typename Sender, typename Signal> std::shared_ptr<int> countOf(Sender *sender, Signal signal)
{
    auto count = std::make_shared<int>(0);
    QObject::connect(sender, signal, sender, [count] { ++*count; });
    return count;
}

} // namespace

// Gathering files

TEST_F(ConvertViewModelTests, startsEmpty)
{
    EXPECT_TRUE(model().items().empty());
    EXPECT_FALSE(model().notice());
    EXPECT_FALSE(model().revealWhenBatchEnds());
    EXPECT_FALSE(model().isConverting());
}

TEST_F(ConvertViewModelTests, aFileBecomesAnIdleRowAndNothingStarts)
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

TEST_F(ConvertViewModelTests, markdownDefaultsToPDFAndEverythingElseToMarkdown)
{
    add({"/a.md", "/a.pdf", "/a.docx", "/a.gdoc", "/a.jpeg", "/a.xlsx", "/a.key"});
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
    for (std::size_t index = 1; index < model().items().size(); ++index)
        EXPECT_EQ(row(index).target, DocumentFormat::markdown) << row(index).url;
}

TEST_F(ConvertViewModelTests, theSameFileTwiceInOneDropIsOneRowAndOneDuplicate)
{
    add({"/in/a.md", "/in/a.md"});
    EXPECT_EQ(model().items().size(), 1U);
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 0, .duplicates = 1}));
}

TEST_F(ConvertViewModelTests, aFileOfAnEarlierDropIsADuplicateUntilItIsRemoved)
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

TEST_F(ConvertViewModelTests, pathsAreComparedAsTheyStand)
{
    add({"/in/a.md", "/in//a.md", "/in/./a.md", "/IN/a.md"});
    EXPECT_EQ(model().items().size(), 4U);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertViewModelTests, unknownFormatsMakeNoRowAndAreCounted)
{
    add({"/in/a.txt", "/in/b", "/in/c.tiff"});
    EXPECT_TRUE(model().items().empty());
    EXPECT_EQ(model().notice(), (DropNotice{.skipped = 3, .duplicates = 0}));
}

TEST_F(ConvertViewModelTests, addressesOfScreensAreTakenByteForByteAndOthersSkipped)
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

TEST_F(ConvertViewModelTests, anEmptyDropRemovesTheNotice)
{
    add({"/in/a.txt"});
    ASSERT_TRUE(model().notice());
    add({});
    EXPECT_FALSE(model().notice());
    EXPECT_EQ(clock->pending(), 0);
}

TEST_F(ConvertViewModelTests, theNoticeGoesAfterFourSeconds)
{
    add({"/in/a.txt"});
    clock->advance(3'999ms);
    EXPECT_TRUE(model().notice());
    clock->advance(1ms);
    EXPECT_FALSE(model().notice());
}

TEST_F(ConvertViewModelTests, aSecondDropReplacesTheCountsAndRestartsTheTime)
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

TEST_F(ConvertViewModelTests, aDropThatOnlyAddsRowsRemovesTheNotice)
{
    add({"/in/a.txt"});
    add({"/in/a.md"});
    EXPECT_FALSE(model().notice());
    EXPECT_EQ(clock->pending(), 0);
}

TEST_F(ConvertViewModelTests, theNoticeIsToldWhenItComesChangesAndGoes)
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

TEST_F(ConvertViewModelTests, theModelMayGoWhileANoticeIsOnShow)
{
    add({"/in/a.txt"});
    destroyModel();
    EXPECT_EQ(clock->pending(), 0);
    clock->advance(4s);
}

// Batches

TEST_F(ConvertViewModelTests, aRowRunsAndIsDoneWithItsOutput)
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

TEST_F(ConvertViewModelTests, rowsThatWaitForASlotShowAsRunningButDoNotRun)
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

TEST_F(ConvertViewModelTests, halfTheProcessorsConvertButNeverFewerThanTwo)
{
    const std::map<int, int> expected{{-1, 2}, {1, 2}, {2, 2}, {3, 2}, {4, 2}, {5, 2}, {6, 3}, {8, 4}, {64, 32}};
    for (const auto &[processors, conversions] : expected)
        EXPECT_EQ(ConvertViewModel::maxConcurrent(processors), conversions) << processors;
}

TEST_F(ConvertViewModelTests, aSecondPressRetriesWhatFailedAndDoesNotRedoWhatIsDone)
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

TEST_F(ConvertViewModelTests, convertAllWithOnlyDoneRowsChangesNothing)
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

TEST_F(ConvertViewModelTests, convertAllWithNothingPendingLeavesABatchInFlightAlone)
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

TEST_F(ConvertViewModelTests, aPressWhileRowsRunReplacesTheBatchAndTheEarlierRowsAreNotRevealed)
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

TEST_F(ConvertViewModelTests, aPressForgetsTheOutputsOfABatchThatIsStillUnderWay)
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

TEST_F(ConvertViewModelTests, threeRowsOfWhichOneFailsRevealTwoOutputsOnceInSettlingOrder)
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

TEST_F(ConvertViewModelTests, removingTheLastOpenRowOfABatchRevealsNothing)
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

TEST_F(ConvertViewModelTests, removingAnOpenRowBeforeTheLastLeavesTheRevealToTheOthers)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md"});
    press();
    model().remove(row(0).id);
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(desktop->revealed, (std::vector<Files>{{"/2.pdf"}}));
}

TEST_F(ConvertViewModelTests, aBatchInWhichEveryRowFailedRevealsNothing)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md"});
    press();
    service->fail("1.md", ConversionError::timedOut("typst"));
    ASSERT_TRUE(comesTo(0, Case::failed));
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertViewModelTests, whetherToRevealIsDecidedWhenTheBatchStarts)
{
    settings();
    add({"/1.md"});
    press();
    settings().setRevealAfterConvert(true);
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertViewModelTests, aRowsOutputIsRevealedAndOpenedOnceThereIsOne)
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

TEST_F(ConvertViewModelTests, theOutputFolderIsThatOfTheMomentWhenTheRowStarts)
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

// Removing and clearing

TEST_F(ConvertViewModelTests, removingARunningRowStopsItAndItsLaterEndChangesNothing)
{
    service->ignoreStops();
    add({"/1.md", "/2.md"});
    press();
    ASSERT_TRUE(runs(2));
    model().remove(row(0).id);
    ASSERT_EQ(model().items().size(), 1U);
    EXPECT_EQ(model().taskCount(), 1U);
    EXPECT_EQ(model().runCount(), 1U);
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(spinUntil([&] { return service->inside() == 1; }));
    service->succeed("2.md", "/2.pdf");
    settleDown();
    ASSERT_EQ(model().items().size(), 1U);
    EXPECT_EQ(row(0).url, "/2.md");
    EXPECT_EQ(row(0).output, "/2.pdf");
}

TEST_F(ConvertViewModelTests, removingARowReachesTheConversionBelow)
{
    add({"/1.md"});
    press();
    ASSERT_TRUE(runs(1));
    model().remove(row(0).id);
    EXPECT_TRUE(spinUntil([&] { return service->inside() == 0; }));
    EXPECT_TRUE(model().items().empty());
}

TEST_F(ConvertViewModelTests, removingARowThatWaitsMeansItNeverStarts)
{
    conversionsAtOnce = 1;
    add({"/1.md", "/2.md", "/3.md"});
    press();
    model().remove(row(1).id);
    service->succeed("1.md", "/1.pdf");
    service->succeed("3.md", "/3.pdf");
    ASSERT_TRUE(comesTo(1, Case::done));
    EXPECT_EQ(service->calls().size(), 2U);
    EXPECT_EQ(service->calls()[1].input, "/3.md");
}

TEST_F(ConvertViewModelTests, removingAnUnknownRowDoesNothing)
{
    add({"/1.md"});
    model().remove(QUuid::createUuid());
    model().setTarget(DocumentFormat::docx, QUuid::createUuid());
    EXPECT_EQ(model().items().size(), 1U);
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
}

TEST_F(ConvertViewModelTests, clearDuringABatchLeavesNothingBehind)
{
    settings().setRevealAfterConvert(true);
    add({"/1.md", "/2.md", "/3.md", "/4.txt"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    ASSERT_TRUE(runs(3));
    ASSERT_TRUE(model().notice());
    model().clear();
    EXPECT_TRUE(model().items().empty());
    EXPECT_TRUE(model().batch().empty());
    EXPECT_TRUE(model().batchOutputs().empty());
    EXPECT_EQ(model().taskCount(), 0U);
    EXPECT_EQ(model().runCount(), 0U);
    EXPECT_FALSE(model().revealWhenBatchEnds());
    EXPECT_FALSE(model().notice());
    EXPECT_FALSE(model().isConverting());
    settleDown();
    EXPECT_TRUE(model().items().empty());
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertViewModelTests, clearStartsNoneOfTheRowsThatWait)
{
    conversionsAtOnce = 1;
    Files files;
    for (int index = 0; index < 100; ++index)
        files.push_back("/" + std::to_string(index) + ".md");
    add(files);
    press();
    ASSERT_TRUE(runs(1));
    model().clear();
    settleDown();
    EXPECT_EQ(service->calls().size(), 1U);
}

TEST_F(ConvertViewModelTests, theModelMayGoWhileRowsRunAndWait)
{
    add({"/1.md", "/2.md", "/3.md"});
    press();
    ASSERT_TRUE(runs(2));
    destroyModel();
    EXPECT_EQ(service->inside(), 0) << "nothing runs on behind its back";
    QCoreApplication::processEvents();
    EXPECT_EQ(service->calls().size(), 2U);
}

// Targets

TEST_F(ConvertViewModelTests, aFailedRowKeepsItsTargetAndANewTargetTakesTheMessageAway)
{
    add({"/1.md"});
    model().setTarget("docx", row(0).id);
    press();
    service->fail("1.md", ConversionError::timedOut("pandoc"));
    ASSERT_TRUE(comesTo(0, Case::failed));
    EXPECT_EQ(row(0).target, DocumentFormat::docx);
    EXPECT_FALSE(row(0).state.message().empty());
    model().setTarget("pptx", row(0).id);
    EXPECT_TRUE(row(0).is(Case::idle));
    EXPECT_TRUE(row(0).state.message().empty());
    EXPECT_EQ(row(0).target, DocumentFormat::pptx);
}

TEST_F(ConvertViewModelTests, aTargetThatMeansNothingChangesNothing)
{
    add({"/1.md"});
    model().setTarget("PDF", row(0).id);
    model().setTarget("", row(0).id);
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
}

TEST_F(ConvertViewModelTests, aNewTargetOfADoneRowMakesItPendingAgain)
{
    add({"/1.md"});
    press();
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    model().setTarget(DocumentFormat::docx, row(0).id);
    EXPECT_TRUE(row(0).is(Case::idle));
    EXPECT_FALSE(row(0).output);
    press();
    service->succeed("1.md", "/1.docx");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(row(0).output, "/1.docx");
    EXPECT_EQ(service->calls()[1].target, DocumentFormat::docx);
}

TEST_F(ConvertViewModelTests, aNewTargetOfARunningRowLeavesItRunningAndItsEndCounts)
{
    add({"/1.md"});
    press();
    ASSERT_TRUE(runs(1));
    model().setTarget(DocumentFormat::docx, row(0).id);
    EXPECT_TRUE(row(0).is(Case::idle));
    EXPECT_EQ(model().taskCount(), 1U);
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(row(0).output, "/1.pdf") << "made for the earlier target";
    EXPECT_EQ(row(0).target, DocumentFormat::docx);
}

TEST_F(ConvertViewModelTests, aRowRestartedWhileItsFirstRunWaitsEndsOnlyOnceByTheSecond)
{
    conversionsAtOnce = 1;
    add({"/1.md", "/2.md"});
    press();
    ASSERT_TRUE(runs(1));
    const auto changes = countOf(model().itemModel(), &QAbstractItemModel::dataChanged);
    model().setTarget(DocumentFormat::docx, row(1).id);
    press();
    EXPECT_EQ(model().taskCount(), 2U);
    const int before = *changes;
    service->succeed("1.md", "/1.pdf");
    service->succeed("2.md", "/2.docx");
    ASSERT_TRUE(comesTo(1, Case::done));
    settleDown();
    EXPECT_EQ(*changes, before + 2) << "one end a row";
    ASSERT_EQ(service->calls().size(), 2U);
    EXPECT_EQ(service->calls()[1].target, DocumentFormat::docx);
}

TEST_F(ConvertViewModelTests, aRowRestartedWhileItRunsIsNotEndedByTheFirstRun)
{
    service->ignoreStops();
    add({"/1.md"});
    press();
    ASSERT_TRUE(runs(1));
    model().setTarget(DocumentFormat::docx, row(0).id);
    press();
    ASSERT_TRUE(runs(2));
    service->succeed("1.md", "/first");
    ASSERT_TRUE(spinUntil([&] { return service->inside() == 1; }));
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_TRUE(row(0).is(Case::running));
    service->succeed("1.md", "/second");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(row(0).output, "/second");
}

// How a row ends

TEST_F(ConvertViewModelTests, aCancelledRowIsPendingAgainAndShowsNoError)
{
    add({"/1.md", "/2.md"});
    press();
    service->fail("1.md", ConversionError::cancelled());
    service->fail("2.md", CancellationError());
    ASSERT_TRUE(comesTo(0, Case::idle) && comesTo(1, Case::idle));
    EXPECT_TRUE(row(0).state.message().empty());
    EXPECT_TRUE(model().batch().empty());
    press();
    EXPECT_EQ(model().batch().size(), 2U);
}

TEST_F(ConvertViewModelTests, oneFailureLeavesTheOthersAlone)
{
    add({"/1.md", "/2.md"});
    press();
    service->fail("1.md", ConversionError::unreadableInput("/1.md"));
    service->succeed("2.md", "/2.pdf");
    EXPECT_TRUE(comesTo(0, Case::failed) && comesTo(1, Case::done));
}

TEST_F(ConvertViewModelTests, aFailureIsToldInTheLanguageOfTheMoment)
{
    settings().setLanguage(NolfaLanguage::en);
    add({"/1.md", "/2.md", "/3.md"});
    press();
    service->fail("1.md", ConversionError::timedOut("pandoc"));
    service->fail("2.md", fs::filesystem_error("open", "/out", std::make_error_code(std::errc::no_space_on_device)));
    service->fail("3.md", std::runtime_error("Broken."));
    ASSERT_TRUE(comesTo(0, Case::failed) && comesTo(1, Case::failed) && comesTo(2, Case::failed));
    EXPECT_EQ(row(0).state.message(), ConversionError::timedOut("pandoc").errorDescription());
    EXPECT_TRUE(row(1).state.message().starts_with("The disk is full."));
    EXPECT_EQ(row(2).state.message(), "The conversion failed. Broken.");

    QList<int> roles;
    int last = -1;
    QObject::connect(model().itemModel(), &QAbstractItemModel::dataChanged, model().itemModel(),
        [&](const QModelIndex &, const QModelIndex &bottom, const QList<int> &changed) {
            roles = changed;
            last = bottom.row();
        });
    settings().setLanguage(NolfaLanguage::fr);
    EXPECT_EQ(last, 2);
    EXPECT_TRUE(roles.contains(ConvertItemModel::MessageRole));
    EXPECT_TRUE(row(1).state.message().starts_with("Le disque est plein."));
    EXPECT_EQ(model().itemModel()->index(2).data(ConvertItemModel::MessageRole).toString().toStdString(),
        "La conversion a échoué. Broken.");
}

// What the footer counts

TEST_F(ConvertViewModelTests, progressCountsTheWholeList)
{
    using Progress = ConvertViewModel::Progress;
    EXPECT_EQ(model().progress(), (Progress{1, 0}));
    add({"/1.md", "/2.md", "/3.md", "/4.md", "/5.md"});
    EXPECT_EQ(model().progress(), (Progress{1, 5}));
    press();
    service->succeed("1.md", "/1.pdf");
    service->fail("2.md", ConversionError::timedOut("typst"));
    ASSERT_TRUE(comesTo(0, Case::done) && comesTo(1, Case::failed));
    EXPECT_EQ(model().progress(), (Progress{3, 5}));
    for (const char *name : {"3.md", "4.md", "5.md"})
        service->succeed(name, "/out.pdf");
    ASSERT_TRUE(comesTo(2, Case::done) && comesTo(3, Case::done) && comesTo(4, Case::done));
    EXPECT_EQ(model().progress(), (Progress{5, 5}));
    press();
    EXPECT_EQ(model().progress(), (Progress{5, 5})) << "the row that failed runs again";
}

TEST_F(ConvertViewModelTests, convertingAndProgressAreToldWhenTheyChange)
{
    const auto converting = countOf(&model(), &ConvertViewModel::isConvertingChanged);
    const auto progress = countOf(&model(), &ConvertViewModel::progressChanged);
    add({"/1.md", "/2.md"});
    EXPECT_EQ(*progress, 1);
    press();
    EXPECT_EQ(*converting, 1);
    EXPECT_TRUE(model().isConverting());
    service->succeed("1.md", "/1.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    EXPECT_EQ(*progress, 2);
    EXPECT_EQ(model().property("current"), 2);
    service->succeed("2.md", "/2.pdf");
    ASSERT_TRUE(comesTo(1, Case::done));
    EXPECT_EQ(*converting, 2);
    EXPECT_FALSE(model().isConverting());
}

// What a screen reads of a row

TEST_F(ConvertViewModelTests, aRowShowsItsFileItsRouteAndWhatTheRouteIsWorth)
{
    add({"/in/été.gdoc"});
    const QModelIndex index = model().itemModel()->index(0);
    const std::map<int, QVariant> expected{{ConvertItemModel::NameRole, QString("été.gdoc")},
        {ConvertItemModel::PathRole, QString("/in/été.gdoc")}, {ConvertItemModel::SourceRole, "gdoc"},
        {ConvertItemModel::SourceNameRole, "Google Doc"}, {ConvertItemModel::TargetRole, "markdown"},
        {ConvertItemModel::TargetNameRole, "Markdown"}, {ConvertItemModel::StateRole, "idle"},
        {ConvertItemModel::MessageRole, ""}, {ConvertItemModel::OutputRole, QVariant()},
        {ConvertItemModel::TierRole, "good"}, {ConvertItemModel::TierLabelRole, "GOOD"},
        {ConvertItemModel::IsMacOnlyRole, false}, {ConvertItemModel::RequiresNetworkRole, true}};
    for (const auto &[role, value] : expected)
        EXPECT_EQ(index.data(role), value) << role << ' ' << index.data(role).toString().toStdString();
    EXPECT_EQ(model().itemModel()->targets("gdoc"), QStringList{"markdown"});
    EXPECT_EQ(model().itemModel()->targets("nonsense"), QStringList());
    EXPECT_EQ(index.data(ConvertItemModel::ItemIdRole).toUuid(), row(0).id);
    EXPECT_TRUE(index.data(ConvertItemModel::NoteRole).toString().startsWith("Fetched from Google Drive"));
    model().setTarget(DocumentFormat::gsheet, row(0).id);
    EXPECT_EQ(index.data(ConvertItemModel::TierRole), "") << "no capability";
    EXPECT_EQ(index.data(ConvertItemModel::IsMacOnlyRole), false);
}

TEST_F(ConvertViewModelTests, anOutputIsShownAsAnAddress)
{
    add({"/in/a.md"});
    press();
    service->succeed("a.md", "/out/a b\xE9#.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    const QVariant output = model().itemModel()->index(0).data(ConvertItemModel::OutputRole);
    EXPECT_EQ(output.toUrl().toEncoded(), "file:///out/a%20b%E9%23.pdf");
}

// Ten thousand files

TEST_F(ConvertViewModelTests, tenThousandFilesCostNoThreadAndAllEnd)
{
    constexpr std::size_t count = 10'000;
    isChecked = false;
    // A sanitizer's own thread comes with the first of ours.
    std::thread([] {}).join();
    Files files;
    for (std::size_t index = 0; index < count; ++index) {
        files.push_back("/in/" + std::to_string(index) + ".md");
        if (index % 2 == 0)
            service->succeed(files.back().filename(), "/out.pdf");
        else
            service->fail(files.back().filename(), ConversionError::timedOut("typst"));
    }
    model();
    const std::size_t threads = footprint().threads;
    add(files);
    press();
    EXPECT_LE(footprint().threads, threads + static_cast<std::size_t>(conversionsAtOnce));
    ASSERT_TRUE(spinUntil([&] { return !model().isConverting(); }, 60s));
    EXPECT_EQ(model().progress(), (ConvertViewModel::Progress{count, count}));
    EXPECT_TRUE(row(0).is(Case::done));
    EXPECT_TRUE(row(count - 1).is(Case::failed));
    EXPECT_LE(service->most(), conversionsAtOnce);
}
