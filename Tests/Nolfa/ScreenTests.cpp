#include "DesignSystem/Fonts.h"
#include "Nolfa/Support/ScreenStage.h"
#include "Nolfa/Support/ScreenSurroundings.h"
#include "Platform/Bundle.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

/// Lets the QML tests find the modules, and gives them the application's stand-in as `stage`, and what screens without
/// an application meet as `surroundings`.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
        m_stage = std::make_unique<nolfa::testing::ScreenStage>();
        m_surroundings = std::make_unique<nolfa::testing::ScreenSurroundings>();
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath("qrc:/qt/qml");
        engine->rootContext()->setContextProperty("stage", m_stage.get());
        engine->rootContext()->setContextProperty("surroundings", m_surroundings.get());
    }
    void cleanupTestCase()
    {
        m_stage.reset();
        m_surroundings.reset();
    }

private:
    std::unique_ptr<nolfa::testing::ScreenStage> m_stage;
    std::unique_ptr<nolfa::testing::ScreenSurroundings> m_surroundings;
};

QUICK_TEST_MAIN_WITH_SETUP(ScreenTests, Setup)

#include "ScreenTests.moc"
