#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <qqml.h>

namespace nolfa {

/// What the convert screen says about formats, in the language in force. Main thread only.
class ConvertTexts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList masthead READ masthead NOTIFY changed)

public:
    ConvertTexts();

    [[nodiscard]] static QStringList masthead();

    /// What a picker of targets offers, family by family, in the given order within each.
    /// @param targets  raw values; one that means nothing is left out
    /// @return  one map a target: "value", "text", and the family's title as "section"
    Q_INVOKABLE [[nodiscard]] QVariantList choices(const QStringList &targets) const;

signals:
    void changed();
};

} // namespace nolfa
