#include "Engine/ConversionError.h"
#include "Nolfa/Support/ConvertViewModelTest.h"
#include "Support/Processes.h"

#include <map>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

using ConvertRowTests = ConvertViewModelTest;

// Removing and clearing

TEST_F(ConvertRowTests, removingARunningRowStopsItAndItsLaterEndChangesNothing)
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

TEST_F(ConvertRowTests, removingARowReachesTheConversionBelow)
{
    add({"/1.md"});
    press();
    ASSERT_TRUE(runs(1));
    model().remove(row(0).id);
    EXPECT_TRUE(spinUntil([&] { return service->inside() == 0; }));
    EXPECT_TRUE(model().items().empty());
}

TEST_F(ConvertRowTests, removingARowThatWaitsMeansItNeverStarts)
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

TEST_F(ConvertRowTests, removingAnUnknownRowDoesNothing)
{
    add({"/1.md"});
    model().remove(QUuid::createUuid());
    model().setTarget(DocumentFormat::docx, QUuid::createUuid());
    EXPECT_EQ(model().items().size(), 1U);
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
}

TEST_F(ConvertRowTests, clearDuringABatchLeavesNothingBehind)
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

TEST_F(ConvertRowTests, clearStartsNoneOfTheRowsThatWait)
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

TEST_F(ConvertRowTests, theModelMayGoWhileRowsRunAndWait)
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

TEST_F(ConvertRowTests, aFailedRowKeepsItsTargetAndANewTargetTakesTheMessageAway)
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

TEST_F(ConvertRowTests, aTargetThatMeansNothingChangesNothing)
{
    add({"/1.md"});
    model().setTarget("PDF", row(0).id);
    model().setTarget("", row(0).id);
    EXPECT_EQ(row(0).target, DocumentFormat::pdf);
}

TEST_F(ConvertRowTests, aNewTargetOfADoneRowMakesItPendingAgain)
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

TEST_F(ConvertRowTests, aNewTargetOfARunningRowLeavesItRunningAndItsEndCounts)
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

TEST_F(ConvertRowTests, aRowRestartedWhileItsFirstRunWaitsEndsOnlyOnceByTheSecond)
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

TEST_F(ConvertRowTests, aRowRestartedWhileItRunsIsNotEndedByTheFirstRun)
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

TEST_F(ConvertRowTests, aCancelledRowIsPendingAgainAndShowsNoError)
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

TEST_F(ConvertRowTests, oneFailureLeavesTheOthersAlone)
{
    add({"/1.md", "/2.md"});
    press();
    service->fail("1.md", ConversionError::unreadableInput("/1.md"));
    service->succeed("2.md", "/2.pdf");
    EXPECT_TRUE(comesTo(0, Case::failed) && comesTo(1, Case::done));
}

TEST_F(ConvertRowTests, aFailureIsToldInTheLanguageOfTheMoment)
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

TEST_F(ConvertRowTests, progressCountsTheWholeList)
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

TEST_F(ConvertRowTests, convertingAndProgressAreToldWhenTheyChange)
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

TEST_F(ConvertRowTests, aRowShowsItsFileItsRouteAndWhatTheRouteIsWorth)
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

TEST_F(ConvertRowTests, anOutputIsShownAsAnAddress)
{
    add({"/in/a.md"});
    press();
    service->succeed("a.md", "/out/a b\xE9#.pdf");
    ASSERT_TRUE(comesTo(0, Case::done));
    const QVariant output = model().itemModel()->index(0).data(ConvertItemModel::OutputRole);
    EXPECT_EQ(output.toUrl().toEncoded(), "file:///out/a%20b%E9%23.pdf");
}

// Ten thousand files

TEST_F(ConvertRowTests, tenThousandFilesCostNoThreadAndAllEnd)
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
