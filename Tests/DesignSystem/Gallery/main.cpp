// Draws the gallery of the design system into a file: nolfa-gallery OUT.png en|fr [TEXT-SIZE]

#include "DesignSystem/Fonts.h"
#include "DesignSystem/Language.h"
#include "Platform/Bundle.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTimer>
#include <cstdio>

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fputs("usage: nolfa-gallery OUT.png en|fr [TEXT-SIZE]\n", stderr);
        return 2;
    }
    QGuiApplication application(argc, argv);
    if (argc > 3) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(QByteArray(argv[3]).toDouble());
        QGuiApplication::setFont(font);
    }
    nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
    nolfa::Language::shared().setCurrent(argv[2]);

    QQuickView view;
    view.engine()->addImportPath("qrc:/qt/qml");
    view.setSource(QUrl::fromLocalFile(GALLERY_SOURCE "/Gallery.qml"));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.show();
    // Long enough for every transition to end.
    QTimer::singleShot(700, &view, [&view, &application, argv] {
        application.exit(view.grabWindow().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1);
    });
    return QGuiApplication::exec();
}
