// Runs on a message bus of its own, with a stand-in for the desktop portal.

#include "DesignSystem/Motion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QSignalSpy>
#include <QTest>

using nolfa::Motion;

/// Answers as the portal of a desktop whose animations are off.
class Portal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    Motion::Settings settings{{"org.gnome.desktop.interface", {{"enable-animations", false}}}};
    QStringList asked;

public slots:
    QMap<QString, QVariantMap> ReadAll(const QStringList &namespaces)
    {
        asked = namespaces;
        return settings;
    }
};

class MotionTests : public QObject {
    Q_OBJECT

private slots:
    void asksThePortal()
    {
        qDBusRegisterMetaType<Motion::Settings>();
        Portal portal;
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
        QVERIFY(bus.isConnected());
        QVERIFY(bus.registerObject("/org/freedesktop/portal/desktop", &portal, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService("org.freedesktop.portal.Desktop"));

        Motion &motion = Motion::shared();
        QVERIFY(!motion.reduced());
        QSignalSpy spy(&motion, &Motion::reducedChanged);
        QTRY_VERIFY(motion.reduced());
        QCOMPARE(portal.asked.size(), 3);
        QCOMPARE(spy.count(), 1);

        // The user changes their mind while the program runs.
        const auto tell = [&bus](const QVariant &value) {
            QDBusMessage change = QDBusMessage::createSignal(
                "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
            change << "org.gnome.desktop.interface"
                   << "enable-animations" << QVariant::fromValue(QDBusVariant(value));
            return bus.send(change);
        };
        QVERIFY(tell(true));
        QTRY_VERIFY(!motion.reduced());
        QVERIFY(tell(false));
        QTRY_VERIFY(motion.reduced());
        QCOMPARE(spy.count(), 3);
    }
};

QTEST_GUILESS_MAIN(MotionTests)

#include "MotionTests.moc"
