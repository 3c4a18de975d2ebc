#include "DesignSystem/Fonts.h"
#include "DesignSystem/Language.h"
#include "Nolfa/App/AppModel.h"
#include "Nolfa/App/WindowGrowth.h"
#include "Nolfa/Support/EndOnSignals.h"
#include "Nolfa/Support/FileURL.h"
#include "Platform/Bundle.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <clocale>
#include <filesystem>
#include <system_error>

namespace {

/// The files named on the command line.
QList<QUrl> filesGiven(int argc, char **argv)
{
    QList<QUrl> urls;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        const std::filesystem::path path = std::filesystem::absolute(argv[i], error);
        if (!error)
            urls << nolfa::FileURL::fromPath(path.lexically_normal());
    }
    return urls;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv); // takes its own options out of the arguments
    QGuiApplication::setApplicationName("Nolfa");
    QGuiApplication::setDesktopFileName("app.pelgo.nolfa");
    if (const auto icon = nolfa::Bundle::main().resource("NolfaIcon", "svg"))
        QGuiApplication::setWindowIcon(QIcon(QString::fromStdString(icon->string())));
    // The application takes the user's locale for the whole process; numbers in files keep their points.
    std::setlocale(LC_NUMERIC, "C");

    nolfa::AppModel app;
    QObject::connect(
        app.settings(), &nolfa::AppSettings::languageChanged, &nolfa::Language::shared(), &nolfa::Language::refresh);
    nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());

    QQmlApplicationEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.setInitialProperties({{"app", QVariant::fromValue<QObject *>(&app)}});
    engine.load(QUrl("qrc:/qt/qml/Nolfa/App/Main.qml"));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    QObject::connect(&app, &nolfa::AppModel::toolChanged, window,
        [&app, window] { nolfa::WindowGrowth::growIfNeeded(window, nolfa::AppModel::leastContentSize(app.tool())); });
    app.convert()->add(filesGiven(argc, argv));
    // Whoever ends the session finds nothing half-done: what runs is stopped, as when the window is closed.
    const nolfa::EndOnSignals endOnSignals;
    return QGuiApplication::exec();
}
