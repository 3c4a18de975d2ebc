#include "DesignSystem/MarkdownText.h"

#include <QTextDocument>

namespace nolfa {

bool MarkdownText::isReadable(const QString &text) const
{
    return !words(text).isEmpty();
}

QString MarkdownText::words(const QString &text) const
{
    QTextDocument document;
    document.setMarkdown(text);
    return document.toPlainText().trimmed();
}

} // namespace nolfa
