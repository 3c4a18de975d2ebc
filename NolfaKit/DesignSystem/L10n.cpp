#include "DesignSystem/L10n.h"

#include "DesignSystem/Language.h"

#include <QJSEngine>

namespace nolfa {

L10n::L10n(QJSEngine &engine)
{
    Language &language = Language::shared();
    QJSEngine::setObjectOwnership(&language, QJSEngine::CppOwnership);
    m_translator = engine.newQObject(&language).property(QStringLiteral("text"));
    connect(&language, &Language::changed, this, &L10n::changed);
}

L10n *L10n::create(QQmlEngine * /*qmlEngine*/, QJSEngine *scriptEngine)
{
    return new L10n(*scriptEngine);
}

} // namespace nolfa
