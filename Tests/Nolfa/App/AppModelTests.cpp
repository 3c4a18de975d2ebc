#include "Nolfa/App/AppModel.h"

#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/HeldService.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using Tool = AppModel::Tool;

namespace {

class AppModelTests : public ::testing::Test {
protected:
    AppModelTests() { ensureApplication(); }

    [[nodiscard]] std::unique_ptr<QSettings> file() const
    {
        return std::make_unique<QSettings>(
            QString::fromStdString((m_folder / "settings.ini").native()), QSettings::IniFormat);
    }

    [[nodiscard]] std::unique_ptr<AppModel> start() const
    {
        return std::make_unique<AppModel>(file(),
            ConvertViewModel::Surroundings{.service = std::make_shared<HeldService>(),
                .clock = std::make_shared<ManualClock>(),
                .desktop = std::make_shared<RecordingDesktop>()});
    }

private:
    const TemporaryFolder m_folder;
    const LanguageScope m_language{NolfaLanguage::en};
    const LocaleScope m_locale{NolfaFormat::locale()};
    const SystemLocaleScope m_system{"en_GB.UTF-8"};
};

} // namespace

TEST_F(AppModelTests, everyStartOpensOnConvert)
{
    start()->setTool(Tool::watermark);
    const std::unique_ptr<AppModel> again = start();
    EXPECT_EQ(again->tool(), Tool::convert);
    EXPECT_FALSE(again->showExpectations());
    EXPECT_TRUE(again->convert()->items().empty());
}

TEST_F(AppModelTests, theLanguageIsInForceBeforeAnyTextIsShown)
{
    file()->setValue("nolfa.language", "fr");
    const std::unique_ptr<AppModel> model = start();
    EXPECT_EQ(AppModel::title(Tool::compare), "Comparaison");
}

TEST_F(AppModelTests, toolsHaveTitlesKeysAndRoomInTheirOrder)
{
    const std::unique_ptr<AppModel> model = start();
    NolfaL10n::setCurrent(NolfaLanguage::en);
    QStringList seen;
    for (const Tool tool : AppModel::allTools)
        seen << AppModel::rawValue(tool) << AppModel::title(tool) << AppModel::shortcut(tool);
    EXPECT_EQ(seen,
        (QStringList{
            "convert", "Convert", "Ctrl+1", "compare", "Compare", "Ctrl+2", "watermark", "Watermark", "Ctrl+3"}));
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    EXPECT_EQ(AppModel::title(Tool::convert), "Conversion");
    EXPECT_EQ(AppModel::title(Tool::watermark), "Filigrane");
    EXPECT_EQ(AppModel::leastContentSize(Tool::convert), QSize(720, 420));
    EXPECT_EQ(AppModel::leastContentSize(Tool::compare), QSize(900, 560));
    EXPECT_EQ(AppModel::leastContentSize(Tool::watermark), QSize(820, 540));
}

TEST_F(AppModelTests, choosingTheToolOnShowDoesNothing)
{
    const std::unique_ptr<AppModel> model = start();
    int told = 0;
    QObject::connect(model.get(), &AppModel::toolChanged, [&] { ++told; });
    model->setTool(Tool::convert);
    EXPECT_EQ(told, 0);
    model->setTool(Tool::compare);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(model->property("leastContentSize").toSize(), QSize(900, 560));
}

TEST_F(AppModelTests, theSheetOpensAndCloses)
{
    const std::unique_ptr<AppModel> model = start();
    int told = 0;
    QObject::connect(model.get(), &AppModel::showExpectationsChanged, [&] { ++told; });
    model->setShowExpectations(true);
    model->setShowExpectations(true);
    EXPECT_TRUE(model->showExpectations());
    model->setProperty("showExpectations", false);
    EXPECT_EQ(told, 2);
}

TEST_F(AppModelTests, openingFromAnotherToolSwitchesOnceFilesAreChosenAndNotBefore)
{
    const std::unique_ptr<AppModel> model = start();
    model->setTool(Tool::compare);
    int asked = 0;
    QObject::connect(model.get(), &AppModel::openPanelRequested, [&] { ++asked; });
    model->chooseFiles();
    EXPECT_EQ(asked, 1);
    // The user cancels: no answer comes.
    EXPECT_EQ(model->tool(), Tool::compare);
    EXPECT_TRUE(model->convert()->items().empty());
    model->chooseFiles();
    model->filesChosen({QUrl("file:///in/a.md")});
    EXPECT_EQ(model->tool(), Tool::convert);
    EXPECT_EQ(model->convert()->items().size(), 1U);
}

TEST_F(AppModelTests, thePanelOffersWhatCanBeOpened)
{
    const std::unique_ptr<AppModel> model = start();
    model->settings()->setLanguage(NolfaLanguage::en);
    EXPECT_EQ(model->property("openPanelMessage"), "Choose the documents you want to convert.");
    EXPECT_EQ(model->property("openPanelPrompt"), "Add");
    const QStringList filters = model->property("openPanelNameFilters").toStringList();
    ASSERT_EQ(filters.size(), 1);
    EXPECT_TRUE(
        filters.front().startsWith("Documents (*.md *.MD *.markdown *.MARKDOWN *.mdown *.MDOWN *.docx *.DOCX "));
    EXPECT_TRUE(filters.front().endsWith("*.jpeg *.JPEG)"));
    model->settings()->setLanguage(NolfaLanguage::fr);
    EXPECT_EQ(model->property("openPanelMessage"), "Choisissez les documents à convertir.");
    EXPECT_EQ(model->property("openPanelPrompt"), "Ajouter");
}

TEST_F(AppModelTests, aChangeOfLanguageChangesTheTextsAtOnceAndKeepsTheFiles)
{
    const std::unique_ptr<AppModel> model = start();
    model->settings()->setLanguage(NolfaLanguage::en);
    model->convert()->add({std::filesystem::path("/in/a.gdoc")});
    std::vector<QVariant> titles;
    QObject::connect(model.get(), &AppModel::textsChanged,
        [&] { titles.push_back(model->property("tools").toList().at(2).toMap().value("title")); });
    model->settings()->setLanguage(NolfaLanguage::fr);
    EXPECT_EQ(titles, (std::vector<QVariant>{"Filigrane"}));
    ASSERT_EQ(model->convert()->items().size(), 1U);
    EXPECT_TRUE(model->convert()
                    ->itemModel()
                    ->index(0)
                    .data(ConvertItemModel::NoteRole)
                    .toString()
                    .startsWith("Récupéré depuis Google Drive"));
}

TEST_F(AppModelTests, screensFindTheModelsAndTheTool)
{
    const std::unique_ptr<AppModel> model = start();
    EXPECT_EQ(model->property("convert").value<ConvertViewModel *>(), model->convert());
    EXPECT_EQ(model->property("settings").value<AppSettings *>(), model->settings());
    EXPECT_EQ(model->convert()->property("items").value<ConvertItemModel *>(), model->convert()->itemModel());
    model->setProperty("tool", QVariant::fromValue(Tool::watermark));
    EXPECT_EQ(model->tool(), Tool::watermark);
}
