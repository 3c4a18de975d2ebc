// The convert tool on the real engine and real files, without a window.

#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include "Engine/ConversionError.h"
#include "Engine/NolfaEngine.h"
#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/OffscreenApplication.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Case = ConvertItem::State::Case;
using Files = std::vector<fs::path>;

namespace {

const fs::path samples = fs::path(NOLFA_SOURCE) / "samples";

class ConvertToolTests : public ::testing::Test {
protected:
    ConvertToolTests() { ensureOffscreenApplication(); }

    /// A copy of a sample in the folder of inputs.
    fs::path sample(const std::string &name, const std::string &copy = {}) const
    {
        fs::create_directories(in);
        fs::path file = in / (copy.empty() ? name : copy);
        fs::copy_file(samples / name, file);
        return file;
    }

    const ConvertItem &row(std::size_t index) { return model.items().at(index); }

    /// Starts what is pending and waits until nothing runs any more.
    [[nodiscard]] bool convertAll()
    {
        model.convertAll();
        return spinUntil([&] { return !model.isConverting(); }, 100s);
    }

    const TemporaryFolder folder;
    const fs::path in = folder / "in";
    const LanguageScope language{NolfaLanguage::en};
    const LocaleScope locale{NolfaFormat::locale()};
    std::shared_ptr<RecordingDesktop> desktop = std::make_shared<RecordingDesktop>();
    AppSettings settings{
        std::make_unique<QSettings>(QString::fromStdString((folder / "settings.ini").native()), QSettings::IniFormat)};
    ConvertViewModel model{&settings,
        {.service = std::make_shared<EngineConverting>(NolfaEngine::makeService(Bundle::main())),
            .clock = std::make_shared<ManualClock>(),
            .desktop = desktop}};
};

} // namespace

TEST_F(ConvertToolTests, theSamplesConvertToTheirDefaultTargetsBesideTheOriginals)
{
    const Files inputs{sample("report.docx"), sample("orchard.md"), sample("harvest.xlsx"), sample("meeting.pptx"),
        sample("orchard.pdf"), sample("notice.png")};
    fs::create_directories(in / "sources");
    fs::copy_file(samples / "sources/chart.png", in / "sources/chart.png");
    std::vector<std::string> before;
    for (const fs::path &input : inputs)
        before.push_back(contentOf(input));
    model.add(inputs);
    ASSERT_TRUE(convertAll());
    const std::vector<std::string> names{
        "report.md", "orchard 2.pdf", "harvest.md", "meeting.md", "orchard 2.md", "notice.md"};
    for (std::size_t index = 0; index < inputs.size(); ++index) {
        EXPECT_TRUE(row(index).is(Case::done)) << inputs[index] << ' ' << row(index).state.message();
        EXPECT_EQ(row(index).output, in / names[index]);
        EXPECT_GT(fs::file_size(in / names[index]), 0U);
        EXPECT_EQ(contentOf(inputs[index]), before[index]) << "an input is never written to";
    }
    EXPECT_EQ(model.progress(), (ConvertViewModel::Progress{6, 6}));
    EXPECT_TRUE(desktop->revealed.empty());
}

TEST_F(ConvertToolTests, outputsGoToTheChosenFolderAndAreRevealedOnce)
{
    fs::create_directories(folder / "out");
    settings.setCustomOutputDirectoryPath(QString::fromStdString((folder / "out").native()));
    settings.setOutputMode(OutputMode::custom);
    settings.setRevealAfterConvert(true);
    model.add(Files{sample("harvest.xlsx"), sample("meeting.pptx")});
    ASSERT_TRUE(convertAll());
    EXPECT_EQ(namesIn(folder / "out"), (std::vector<std::string>{"harvest.md", "meeting.md"}));
    ASSERT_EQ(desktop->revealed.size(), 1U);
    EXPECT_EQ(desktop->revealed.front().size(), 2U);
}

TEST_F(ConvertToolTests, targetsOnOfferAreThoseOfTheEngineAndEachConverts)
{
    model.add(Files{sample("report.docx")});
    const QStringList targets = model.itemModel()->targets("docx");
    EXPECT_EQ(targets.mid(0, 4), (QStringList{"markdown", "pdf", "pptx", "xlsx"}));
    for (const char *target : {"markdown", "pdf", "pptx"}) {
        model.setTarget(target, row(0).id);
        ASSERT_TRUE(convertAll());
        EXPECT_TRUE(row(0).is(Case::done)) << target << ' ' << row(0).state.message();
    }
    EXPECT_TRUE(fs::exists(in / "report.md") && fs::exists(in / "report.pdf") && fs::exists(in / "report.pptx"));
}

TEST_F(ConvertToolTests, whatFailsSaysSoInTheLanguageOfTheMomentAndTheOthersGoOn)
{
    const fs::path damaged = folder.write("in/damaged.xlsx", "no archive");
    const fs::path missing = in / "missing.pdf";
    model.add(Files{damaged, missing, sample("meeting.pptx")});
    settings.setLanguage(NolfaLanguage::en);
    ASSERT_TRUE(convertAll());
    ASSERT_TRUE(row(0).is(Case::failed) && row(1).is(Case::failed));
    EXPECT_TRUE(row(2).is(Case::done));
    EXPECT_EQ(row(1).state.message(), ConversionError::unreadableInput(missing).errorDescription());
    const std::string english = row(0).state.message();
    settings.setLanguage(NolfaLanguage::fr);
    EXPECT_EQ(row(1).state.message(), ConversionError::unreadableInput(missing).errorDescription());
    EXPECT_NE(row(0).state.message(), english);
    EXPECT_EQ(namesIn(in), (std::vector<std::string>{"damaged.xlsx", "meeting.md", "meeting.pptx"}));
}

TEST_F(ConvertToolTests, aFailedRowSucceedsOnceItsFileIsInOrder)
{
    const fs::path file = folder.write("in/harvest.xlsx", "no archive");
    model.add(Files{file});
    ASSERT_TRUE(convertAll());
    ASSERT_TRUE(row(0).is(Case::failed));
    fs::copy_file(samples / "harvest.xlsx", file, fs::copy_options::overwrite_existing);
    ASSERT_TRUE(convertAll());
    EXPECT_TRUE(row(0).is(Case::done)) << row(0).state.message();
}

TEST_F(ConvertToolTests, rowsOfOneNameMakeFilesOfDifferentNames)
{
    fs::create_directories(folder / "out");
    settings.setCustomOutputDirectoryPath(QString::fromStdString((folder / "out").native()));
    settings.setOutputMode(OutputMode::custom);
    Files inputs;
    for (const char *copy : {"a", "b", "c"}) {
        fs::create_directories(in / copy);
        inputs.push_back(sample("meeting.pptx", std::string(copy) + "/meeting.pptx"));
    }
    model.add(inputs);
    ASSERT_TRUE(convertAll());
    EXPECT_EQ(namesIn(folder / "out"), (std::vector<std::string>{"meeting 2.md", "meeting 3.md", "meeting.md"}));
}

TEST_F(ConvertToolTests, clearEndsTheProgramsBelowAndLeavesNothingHalfMade)
{
    const std::size_t children = footprint().children;
    Files inputs;
    for (int copy = 0; copy < 20; ++copy)
        inputs.push_back(sample("report.docx", "report " + std::to_string(copy) + ".docx"));
    model.add(inputs);
    for (const QUuid &id : {row(0).id, row(1).id})
        model.setTarget(DocumentFormat::pdf, id);
    model.convertAll();
    ASSERT_TRUE(spinUntil([&] { return footprint().children > children; }));
    model.clear();
    EXPECT_TRUE(spinUntil([&] { return footprint().children == children; }));
    EXPECT_TRUE(spinUntil([&] { return namesIn(in).size() == inputs.size(); }, 5s)) << namesIn(in).size();
    EXPECT_TRUE(model.items().empty());
}

TEST_F(ConvertToolTests, quittingWhileRowsRunEndsTheProgramsBelow)
{
    const std::size_t children = footprint().children;
    const fs::path input = sample("report.docx");
    {
        ConvertViewModel other(nullptr,
            {.service = std::make_shared<EngineConverting>(NolfaEngine::makeService(Bundle::main())),
                .clock = std::make_shared<ManualClock>(),
                .desktop = desktop});
        other.add(Files{input});
        other.convertAll();
        ASSERT_TRUE(spinUntil([&] { return footprint().children > children; }));
    }
    EXPECT_TRUE(waitUntil(5s, [&] { return footprint().children == children; }));
    EXPECT_EQ(namesIn(in), (std::vector<std::string>{"report.docx"}));
}

TEST_F(ConvertToolTests, aRowTakenOutWhileItRunsLeavesTheOthersAlone)
{
    model.add(Files{sample("report.docx"), sample("meeting.pptx"), sample("harvest.xlsx")});
    model.convertAll();
    model.remove(row(0).id);
    ASSERT_TRUE(spinUntil([&] { return !model.isConverting(); }));
    ASSERT_EQ(model.items().size(), 2U);
    EXPECT_TRUE(row(0).is(Case::done) && row(1).is(Case::done));
    EXPECT_TRUE(spinUntil([&] { return namesIn(in).size() == 5; }, 5s));
}
