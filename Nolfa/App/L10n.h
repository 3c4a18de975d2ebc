#pragma once

#include <QObject>
#include <QString>
#include <qqml.h>

/// The way of texts to the screens. Lives on the main thread.
class L10n : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The text in the language in force.
    Q_INVOKABLE QString T(const QString &en, const QString &fr) const;
};
