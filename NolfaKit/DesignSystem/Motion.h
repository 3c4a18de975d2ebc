#pragma once

#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QVariantMap>
#include <qqml.h>

class QJSEngine;
class QQmlEngine;

namespace nolfa {

/// Whether the user asked the desktop for less motion. One for the process, on the main thread. Asks the desktop
/// portal in the background; false until it has answered, and where there is none.
class Motion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ reduced NOTIFY reducedChanged)

public:
    /// Settings by namespace and key, as the portal gives them.
    using Settings = QMap<QString, QVariantMap>;

    [[nodiscard]] static Motion &shared();
    [[nodiscard]] static Motion *create(QQmlEngine *qmlEngine, QJSEngine *scriptEngine);

    /// What the settings of the desktops that we know say.
    [[nodiscard]] static bool isReducedBy(const Settings &settings);

    [[nodiscard]] bool reduced() const { return m_reduced; }

signals:
    void reducedChanged();

private slots:
    void takeOne(const QString &space, const QString &key, const QDBusVariant &value);

private:
    Motion();

    void takeAll(const Settings &settings);
    void update();

    Settings m_settings;
    bool m_reduced = false;
};

} // namespace nolfa
