#include "DesignSystem/Language.h"

#include "Localization/NolfaL10n.h"

#include <QJSEngine>

namespace nolfa {

Language &Language::shared()
{
    static Language language;
    return language;
}

Language *Language::create(QQmlEngine * /*qmlEngine*/, QJSEngine * /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

QString Language::current() const
{
    const std::string_view raw = rawValue(NolfaL10n::current());
    return QString::fromUtf8(raw.data(), static_cast<qsizetype>(raw.size()));
}

void Language::setCurrent(const QString &rawValue)
{
    const std::optional<NolfaLanguage> language = languageFromRawValue(rawValue.toStdString());
    if (!language || *language == NolfaL10n::current())
        return;
    NolfaL10n::setCurrent(*language);
    refresh();
}

QString Language::text(const QString &en, const QString &fr) const
{
    return QString::fromStdString(T(en.toStdString(), fr.toStdString()));
}

void Language::refresh()
{
    ++m_rev;
    emit changed();
}

} // namespace nolfa
