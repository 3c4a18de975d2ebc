#pragma once

#include <QObject>
#include <QString>
#include <qqml.h>

namespace nolfa {

/// What `TXm` stands on.
class MarkdownText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Whether anything is left to read once @p text was parsed as Markdown. The parser itself refuses nothing.
    Q_INVOKABLE [[nodiscard]] bool isReadable(const QString &text) const;

    /// The words of a text, without what marks them up.
    Q_INVOKABLE [[nodiscard]] QString words(const QString &text) const;
};

} // namespace nolfa
