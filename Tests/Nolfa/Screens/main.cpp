// Draws the states of the screens into files: nolfa-screens FOLDER en|fr [SUFFIX]

#include "DesignSystem/Fonts.h"
#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/ScreenStage.h"
#include "Platform/Bundle.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <chrono>
#include <cstdio>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

/// One window with the whole application in it, at a time.
class Studio {
public:
    Studio(QString folder, QString language, QString suffix)
        : m_folder(std::move(folder))
        , m_language(std::move(language))
        , m_suffix(std::move(suffix))
    {
    }

    [[nodiscard]] bool isFrench() const { return m_language == "fr"; }
    [[nodiscard]] QString text(const char *english, const char *french) const { return isFrench() ? french : english; }

    ScreenStage &begin(int width, int height)
    {
        m_view.reset();
        m_stage.restart();
        m_stage.app()->property("settings").value<AppSettings *>()->setProperty("language", m_language);
        m_view = std::make_unique<QQuickView>();
        m_view->engine()->addImportPath("qrc:/qt/qml");
        m_view->setResizeMode(QQuickView::SizeRootObjectToView);
        m_view->setInitialProperties({{"app", QVariant::fromValue(m_stage.app())}});
        m_view->setSource(QUrl("qrc:/qt/qml/Nolfa/App/RootView.qml"));
        m_view->resize(width, height);
        m_view->show();
        settle();
        return m_stage;
    }

    [[nodiscard]] QObject *find(const QString &name) const { return find(m_view->rootObject(), name); }
    [[nodiscard]] QObject *find(QQuickItem *in, const QString &name) const
    {
        if (in->objectName() == name)
            return in;
        for (QQuickItem *child : in->childItems()) {
            if (QObject *found = find(child, name))
                return found;
        }
        return nullptr;
    }
    [[nodiscard]] QQuickItem *item(const QString &name) const { return qobject_cast<QQuickItem *>(find(name)); }

    void hover(const QString &name)
    {
        const QQuickItem *const target = item(name);
        const QPointF place = target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
        QMouseEvent event(QEvent::MouseMove, place, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.get(), &event);
    }

    /// Long enough for every transition to end.
    static void settle(std::chrono::milliseconds span = std::chrono::milliseconds(450))
    {
        const auto end = std::chrono::steady_clock::now() + span;
        (void)spinUntil([end] { return std::chrono::steady_clock::now() > end; });
    }

    void take(const QString &name)
    {
        settle();
        const QString file = m_folder + '/' + name + '-' + m_language + m_suffix + ".png";
        if (!m_view->grabWindow().save(file)) {
            std::fprintf(stderr, "nolfa-screens: can't write %s\n", qPrintable(file));
            std::exit(1);
        }
    }

private:
    const QString m_folder;
    const QString m_language;
    const QString m_suffix;
    ScreenStage m_stage;
    std::unique_ptr<QQuickView> m_view;
};

void drawEmpty(Studio &studio)
{
    studio.begin(820, 560);
    studio.take("convert-empty");
    studio.begin(720, 420);
    studio.take("convert-empty-small");
    ScreenStage &stage = studio.begin(820, 560);
    stage.add({"a.exe", "b.exe"});
    studio.take("convert-empty-notice");
    stage.dragEnter(studio.item("convertView"), 400, 300, stage.urls({"a.md"}));
    studio.take("convert-drag");
}

struct Names {
    QString done, running, failed, sheet, deck, keynote, longName, picture;
};

Names namesFor(const Studio &studio)
{
    return {studio.text("Supply agreement, third draft.docx", "Contrat de fourniture, 3e version.docx"),
        studio.text("Field notes, 14 March.md", "Carnet de terrain, 14 mars.md"),
        studio.text("Board minutes.pdf", "Procès-verbal du conseil.pdf"),
        studio.text("Household budget 2026.gsheet", "Budget du foyer 2026.gsheet"),
        studio.text("Kick-off.pptx", "Lancement.pptx"),
        studio.text("Lecture 4, the printed book.key", "Cours 4, le livre imprimé.key"),
        studio.text("A rather long name for a report that somebody wrote in one go, with annexes A to F.pdf",
            "Un nom de rapport plutôt long, comme on en trouve dans les ministères, avec les annexes A à F.pdf"),
        studio.text("Whiteboard.jpg", "Tableau blanc.jpg")};
}

/// Every kind of row, and a notice.
void fill(Studio &studio, ScreenStage &stage)
{
    const Names names = namesFor(studio);
    stage.add({names.done, names.running, names.failed, names.sheet, names.deck, names.keynote, names.longName,
        names.picture});
    auto *model = stage.app()->property("convert").value<ConvertViewModel *>();
    const auto &items = model->items();
    model->setTarget("pdf", items[1].id);
    model->setTarget("docx", items[6].id);
    stage.succeed(names.done, "a.md");
    stage.failLocked(names.failed);
    stage.succeed(names.longName, "b.docx");
    model->convertAll();
    // Two at a time: what holds a place is taken out and put back, until only one row runs.
    for (const QString &name : {names.sheet, names.deck, names.keynote, names.picture})
        stage.succeed(name, "x.md");
    (void)spinUntil([model] { return model->progress().current == 8; });
    for (const int row : {3, 4, 5, 7})
        model->setTarget(QString::fromStdString(std::string(rawValue(items[static_cast<std::size_t>(row)].target))),
            items[static_cast<std::size_t>(row)].id);
    model->setTarget("xlsx", items[3].id);
    model->setTarget("pdf", items[5].id);
    stage.add({names.done, "a.exe", "b.exe"});
}

void drawRows(Studio &studio)
{
    for (const auto &[name, width, height] :
        {std::tuple("convert-rows", 820, 560), {"convert-rows-small", 720, 420}, {"convert-rows-all", 820, 1250},
            {"convert-rows-all-narrow", 720, 1330}, {"convert-rows-wide", 1400, 900}}) {
        fill(studio, studio.begin(width, height));
        studio.take(name);
    }
}

void drawPicker(Studio &studio)
{
    const Names names = namesFor(studio);
    ScreenStage &stage = studio.begin(820, 560);
    stage.add({names.done, names.running, names.sheet, names.deck});
    Studio::settle();
    auto *picker = qobject_cast<QQuickItem *>(studio.find(studio.item("row0"), "picker"));
    picker->forceActiveFocus(Qt::TabFocusReason);
    QMetaObject::invokeMethod(picker->property("popup").value<QObject *>(), "open");
    studio.take("convert-picker");
}

void drawRest(Studio &studio)
{
    ScreenStage &stage = studio.begin(900, 560);
    stage.app()->setProperty("tool", 1);
    studio.take("coming-compare");
    stage.app()->setProperty("tool", 2);
    studio.take("coming-watermark");

    ScreenStage &full = studio.begin(820, 560);
    fill(studio, full);
    full.app()->setProperty("showExpectations", true);
    studio.take("expectations");

    studio.begin(820, 560);
    QMetaObject::invokeMethod(studio.find("menus"), "openMenu", Q_ARG(QVariant, 0));
    studio.take("menu-file");
    QMetaObject::invokeMethod(studio.find("menus"), "openMenu", Q_ARG(QVariant, 1));
    studio.take("menu-tools");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fputs("usage: nolfa-screens FOLDER en|fr [SUFFIX] [TEXT-SIZE]\n", stderr);
        return 2;
    }
    QGuiApplication application(argc, argv);
    if (argc > 4) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(QByteArray(argv[4]).toDouble());
        QGuiApplication::setFont(font);
    }
    Fonts::registerIfNeeded(Bundle::main());
    Studio studio(QString::fromLocal8Bit(argv[1]), argv[2], argc > 3 ? argv[3] : "");
    drawEmpty(studio);
    drawRows(studio);
    drawPicker(studio);
    drawRest(studio);
    return 0;
}
