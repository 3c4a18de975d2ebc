#include "Nolfa/Features/Settings/AboutInfo.h"

#include "Nolfa/Support/SupportInfo.h"

namespace nolfa {

AboutInfo::AboutInfo(QObject *parent)
    : AboutInfo(Bundle::main(), parent)
{
}

AboutInfo::AboutInfo(const Bundle &bundle, QObject *parent)
    : QObject(parent)
    , m_version(QString::fromStdString(bundle.value("CFBundleShortVersionString").value_or(std::string())))
{
    const std::optional<QUrl> donation = SupportInfo::donationURL(bundle);
    m_donationURL = donation.value_or(QUrl());
    m_hasRealDonationLink = SupportInfo::hasRealDonationLink(donation);
}

} // namespace nolfa
