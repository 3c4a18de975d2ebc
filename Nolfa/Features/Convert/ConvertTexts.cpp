#include "Nolfa/Features/Convert/ConvertTexts.h"

#include "DesignSystem/Language.h"
#include "Nolfa/Features/Convert/Masthead.h"
#include "Nolfa/Features/Convert/TargetFamily.h"

#include <QVariantMap>

namespace nolfa {

ConvertTexts::ConvertTexts()
{
    connect(&Language::shared(), &Language::changed, this, &ConvertTexts::changed);
}

QStringList ConvertTexts::masthead()
{
    return Masthead::lines();
}

QVariantList ConvertTexts::choices(const QStringList &targets) const
{
    QVariantList list;
    for (const TargetFamily family : TargetFamilies::allCases) {
        for (const QString &raw : targets) {
            const std::optional<DocumentFormat> format = DocumentFormats::fromRawValue(raw.toStdString());
            if (format && TargetFamilies::of(*format) == family)
                list << QVariantMap{
                    {"value", raw}, {"text", QString::fromStdString(displayName(*format))}, {"section", title(family)}};
        }
    }
    return list;
}

} // namespace nolfa
