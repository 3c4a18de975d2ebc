#include "Nolfa/Features/Convert/Masthead.h"

namespace nolfa::Masthead {

namespace {

QString labelOf(DocumentFormat format)
{
    switch (format) {
    case DocumentFormat::gdoc:
        return QStringLiteral("GOOGLE DOCS");
    case DocumentFormat::gsheet:
        return QStringLiteral("SHEETS");
    case DocumentFormat::gslides:
        return QStringLiteral("SLIDES");
    case DocumentFormat::image:
        return QStringLiteral("IMAGE");
    default:
        return QString::fromStdString(displayName(format)).toUpper();
    }
}

} // namespace

QString mastheadLine(const std::vector<FormatFamily> &families)
{
    QStringList labels;
    for (const FormatFamily wanted : families) {
        for (const DocumentFormat format : DocumentFormats::allCases) {
            if (family(format) == wanted)
                labels << labelOf(format);
        }
    }
    return labels.join(QStringLiteral(" · "));
}

QStringList lines()
{
    return {mastheadLine({FormatFamily::hub, FormatFamily::office}),
        mastheadLine({FormatFamily::apple, FormatFamily::google, FormatFamily::picture})};
}

} // namespace nolfa::Masthead
