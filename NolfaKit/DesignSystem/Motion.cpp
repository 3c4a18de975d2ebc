#include "DesignSystem/Motion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QJSEngine>

namespace nolfa {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString plasma = QStringLiteral("org.kde.kdeglobals.KDE");

} // namespace

Motion &Motion::shared()
{
    static Motion motion;
    return motion;
}

Motion *Motion::create(QQmlEngine * /*qmlEngine*/, QJSEngine * /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

Motion::Motion()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qDBusRegisterMetaType<Settings>();
    // The types of the slot are looked up by name, and this one is known only once it was used.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portal, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
        SLOT(takeOne(QString, QString, QDBusVariant)));
    QDBusMessage question
        = QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("ReadAll"));
    question << QStringList{appearance, gnome, plasma};
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<Settings> reply = *call;
        call->deleteLater();
        if (!reply.isError())
            takeAll(reply.value());
    });
}

bool Motion::isReducedBy(const Settings &settings)
{
    const QVariantMap common = settings.value(appearance);
    if (common.value(QStringLiteral("reduced-motion")).toUInt() == 1)
        return true;
    if (!settings.value(gnome).value(QStringLiteral("enable-animations"), true).toBool())
        return true;
    bool isNumber = false;
    const double duration = settings.value(plasma).value(QStringLiteral("AnimationDurationFactor")).toDouble(&isNumber);
    return isNumber && duration == 0;
}

void Motion::takeAll(const Settings &settings)
{
    m_settings = settings;
    update();
}

void Motion::takeOne(const QString &space, const QString &key, const QDBusVariant &value)
{
    m_settings[space][key] = value.variant();
    update();
}

void Motion::update()
{
    const bool isReduced = isReducedBy(m_settings);
    if (isReduced == m_reduced)
        return;
    m_reduced = isReduced;
    emit reducedChanged();
}

} // namespace nolfa
