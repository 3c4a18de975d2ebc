#pragma once

#include <QJSValue>
#include <QObject>
#include <qqml.h>

class QJSEngine;
class QQmlEngine;

namespace nolfa {

/// The way of texts to the screens: `text: L10n.T("Save", "Enregistrer")` is the text in the language in force, and
/// follows a change of language. One for each engine, on the main thread.
class L10n : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The function from an English and a French text to one of them. A property, and no function of this class,
    /// because a binding remembers what it reads and not what it calls.
    Q_PROPERTY(QJSValue T READ translator NOTIFY changed)

public:
    [[nodiscard]] static L10n *create(QQmlEngine *qmlEngine, QJSEngine *scriptEngine);

    [[nodiscard]] QJSValue translator() const { return m_translator; }

signals:
    void changed();

private:
    explicit L10n(QJSEngine &engine);

    QJSValue m_translator;
};

} // namespace nolfa
