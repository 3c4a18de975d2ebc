#include "DesignSystem/Fonts.h"
#include "Platform/Bundle.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <clocale>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("Nolfa");
    // The application takes the user's locale for the whole process; numbers in files keep their points.
    std::setlocale(LC_NUMERIC, "C");
    nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
    QQmlApplicationEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.load(QUrl("qrc:/qt/qml/Nolfa/App/Main.qml"));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
