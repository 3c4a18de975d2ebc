#include "L10n.h"

#include "Localization/NolfaL10n.h"

QString L10n::T(const QString &en, const QString &fr) const
{
    return QString::fromStdString(nolfa::T(en.toStdString(), fr.toStdString()));
}
