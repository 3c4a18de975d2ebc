// Draws a window into a file: nolfa-scene SCENE.qml OUT.png en|fr [TEXT-SIZE]

#include "DesignSystem/Fonts.h"
#include "Nolfa/Support/ScreenSurroundings.h"
#include "Platform/Bundle.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>

int main(int argc, char **argv)
{
    if (argc < 4) {
        std::fputs("usage: nolfa-scene SCENE.qml OUT.png en|fr [TEXT-SIZE]\n", stderr);
        return 2;
    }
    QGuiApplication application(argc, argv);
    if (argc > 4) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(QByteArray(argv[4]).toDouble());
        QGuiApplication::setFont(font);
    }
    nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
    nolfa::testing::ScreenSurroundings surroundings;
    surroundings.settings()->setProperty("language", QString::fromLocal8Bit(argv[3]));

    QQmlApplicationEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.rootContext()->setContextProperty("surroundings", &surroundings);
    engine.load(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    // Long enough for every transition to end.
    QTimer::singleShot(700, window, [window, &application, argv] {
        application.exit(window->grabWindow().save(QString::fromLocal8Bit(argv[2])) ? 0 : 1);
    });
    return QGuiApplication::exec();
}
