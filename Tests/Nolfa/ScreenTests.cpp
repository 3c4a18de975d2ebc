#include "DesignSystem/Fonts.h"
#include "Nolfa/Support/ScreenStage.h"
#include "Platform/Bundle.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

/// Lets the QML tests find the modules, and gives them the application's stand-in as `stage`.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
        m_stage = std::make_unique<nolfa::testing::ScreenStage>();
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath("qrc:/qt/qml");
        engine->rootContext()->setContextProperty("stage", m_stage.get());
    }
    void cleanupTestCase() { m_stage.reset(); }

private:
    std::unique_ptr<nolfa::testing::ScreenStage> m_stage;
};

QUICK_TEST_MAIN_WITH_SETUP(ScreenTests, Setup)

#include "ScreenTests.moc"
