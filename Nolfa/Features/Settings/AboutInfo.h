#pragma once

#include "Platform/Bundle.h"

#include <QObject>
#include <QString>
#include <QUrl>

namespace nolfa {

/// What the bundle says of the application itself. Read once, at construction. Main thread only.
class AboutInfo : public QObject {
    Q_OBJECT
    /// Empty where the bundle names none.
    Q_PROPERTY(QString version MEMBER m_version CONSTANT)
    Q_PROPERTY(QUrl donationURL MEMBER m_donationURL CONSTANT)
    Q_PROPERTY(bool hasRealDonationLink MEMBER m_hasRealDonationLink CONSTANT)

public:
    explicit AboutInfo(QObject *parent = nullptr);
    explicit AboutInfo(const Bundle &bundle, QObject *parent = nullptr);

private:
    QString m_version;
    QUrl m_donationURL;
    bool m_hasRealDonationLink = false;
};

} // namespace nolfa
