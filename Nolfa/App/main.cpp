#include "DesignSystem/Fonts.h"
#include "Platform/Bundle.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("Nolfa");
    nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
    QQmlApplicationEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    engine.load(QUrl("qrc:/qt/qml/Nolfa/App/Main.qml"));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
