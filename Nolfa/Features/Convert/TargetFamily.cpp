#include "Nolfa/Features/Convert/TargetFamily.h"

#include "Localization/NolfaL10n.h"

namespace nolfa {

TargetFamily TargetFamilies::of(DocumentFormat target)
{
    switch (target) {
    case DocumentFormat::docx:
    case DocumentFormat::pdf:
    case DocumentFormat::pages:
    case DocumentFormat::gdoc:
    case DocumentFormat::image:
        return TargetFamily::documents;
    case DocumentFormat::pptx:
    case DocumentFormat::key:
    case DocumentFormat::gslides:
        return TargetFamily::presentations;
    case DocumentFormat::xlsx:
    case DocumentFormat::numbers:
    case DocumentFormat::gsheet:
        return TargetFamily::spreadsheets;
    case DocumentFormat::markdown:
        break;
    }
    return TargetFamily::text;
}

QString title(TargetFamily family)
{
    const auto text
        = [](const char *english, const char *french) { return QString::fromStdString(T(english, french)); };
    switch (family) {
    case TargetFamily::documents:
        return text("Documents", "Documents");
    case TargetFamily::presentations:
        return text("Presentations", "Présentations");
    case TargetFamily::spreadsheets:
        return text("Spreadsheets", "Feuilles de calcul");
    case TargetFamily::text:
        break;
    }
    return text("Text", "Texte");
}

} // namespace nolfa
