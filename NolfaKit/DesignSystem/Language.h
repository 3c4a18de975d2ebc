#pragma once

#include <QObject>
#include <QString>
#include <qqml.h>

class QJSEngine;
class QQmlEngine;

namespace nolfa {

/// The language in force, for the screens: what `L10n.T` stands on. One for the process, on the main thread.
class Language : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// "system", "en" or "fr". Anything else is ignored when it is set.
    Q_PROPERTY(QString current READ current WRITE setCurrent NOTIFY changed)
    /// Grows with each change: a binding that reads it is evaluated anew.
    Q_PROPERTY(int rev READ rev NOTIFY changed)

public:
    [[nodiscard]] static Language &shared();
    [[nodiscard]] static Language *create(QQmlEngine *qmlEngine, QJSEngine *scriptEngine);

    [[nodiscard]] QString current() const;
    void setCurrent(const QString &rawValue);
    [[nodiscard]] int rev() const { return m_rev; }

    /// The text in the language in force.
    Q_INVOKABLE [[nodiscard]] QString text(const QString &en, const QString &fr) const;

    /// Redraws all texts; for whoever changed `NolfaL10n` without this class.
    Q_INVOKABLE void refresh();

signals:
    void changed();

private:
    Language() = default;

    int m_rev = 0;
};

} // namespace nolfa
