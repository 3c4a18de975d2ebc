#include "DesignSystem/Fonts.h"
#include "Localization/NolfaL10n.h"
#include "Nolfa/Support/ScreenSurroundings.h"
#include "Platform/Bundle.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

/// Lets the QML tests find the modules, and what screens meet outside of themselves.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main());
        m_surroundings = std::make_unique<nolfa::testing::ScreenSurroundings>();
        nolfa::NolfaL10n::setCurrent(nolfa::NolfaLanguage::fr);
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath("qrc:/qt/qml");
        engine->rootContext()->setContextProperty("surroundings", m_surroundings.get());
    }

private:
    std::unique_ptr<nolfa::testing::ScreenSurroundings> m_surroundings;
};

QUICK_TEST_MAIN_WITH_SETUP(ScreenTests, Setup)

#include "ScreenTests.moc"
