#include "Localization/NolfaL10n.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Lets the QML tests find the modules.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() { nolfa::NolfaL10n::setCurrent(nolfa::NolfaLanguage::fr); }
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImportPath("qrc:/qt/qml"); }
};

QUICK_TEST_MAIN_WITH_SETUP(ScreenTests, Setup)

#include "ScreenTests.moc"
