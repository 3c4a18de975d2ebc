#include "Nolfa/Support/SupportInfo.h"

#include "Platform/Bundle.h"

#include <QString>

namespace nolfa::SupportInfo {

std::optional<QUrl> donationURL(const Bundle &bundle)
{
    const QUrl url(QString::fromStdString(bundle.value("NolfaDonationURL").value_or(std::string())));
    return url.isEmpty() || !url.isValid() ? std::nullopt : std::optional(url);
}

bool hasRealDonationLink(const std::optional<QUrl> &donationURL)
{
    // Hosts come in lower case, whatever was written.
    return donationURL && !donationURL->toString().contains(QStringLiteral("REPLACE_WITH"), Qt::CaseInsensitive);
}

} // namespace nolfa::SupportInfo
