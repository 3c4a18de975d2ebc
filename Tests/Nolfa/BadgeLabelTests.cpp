// The design system can't ask the engine; what both say must be the same.

#include "DesignSystem/Language.h"
#include "Engine/Fidelity.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <gtest/gtest.h>
#include <memory>

using namespace nolfa;

TEST(QualityBadge, saysWhatTheEngineCallsEachTier)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 0;
    const QGuiApplication application(count, nullptr);
    QQmlEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    QQmlComponent component(&engine);
    component.setData("import NolfaKit.DesignSystem\nQualityBadge {}", {});
    const std::unique_ptr<QObject> badge(component.create());
    ASSERT_TRUE(badge) << component.errorString().toStdString();
    for (const char *language : {"en", "fr"}) {
        Language::shared().setCurrent(language);
        for (const FidelityTier tier : FidelityTiers::allCases) {
            badge->setProperty("tier", QString::fromStdString(std::string(rawValue(tier))));
            EXPECT_EQ(badge->property("label").toString().toStdString(), label(tier)) << language;
        }
    }
}
