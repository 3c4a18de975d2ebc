#include "Platform/Qt/PrintRepairs.h"

#include "Platform/HTMLPrinter.h"

#include <QFontMetricsF>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <algorithm>

namespace nolfa {

namespace {

constexpr double pixelsAPoint = 96.0 / 72;
/// Room for the line that a picture stands in, and its paragraph's margins.
constexpr double aroundPicture = 54;
constexpr double aroundTable = 8;
const QString emojiFamily = QStringLiteral("Symbola");

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

PrintRepairs::PrintRepairs(QTextDocument &document, const PrintPictures &pictures, QSizeF text)
    : m_document(document)
    , m_pictures(pictures)
    , m_text(text)
{
}

void PrintRepairs::apply()
{
    QTextCursor all(&m_document);
    all.beginEditBlock();
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
        repairBlock(block);
    repairTables(*m_document.rootFrame());
    all.endEditBlock();
}

void PrintRepairs::repairBlock(const QTextBlock &block)
{
    std::vector<Fragment> fragments;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
        if (at.fragment().isValid())
            fragments.push_back({at.fragment().position(), at.fragment().length(), at.fragment().charFormat()});
    }
    double pointSize = 0;
    for (const Fragment &fragment : fragments)
        pointSize = std::max(pointSize, fragment.format.fontPointSize());
    repairSizes(fragments);
    bool hasPicture = false;
    // From the end, so that positions before an edit stay right.
    std::ranges::reverse(fragments);
    for (const Fragment &fragment : fragments) {
        if (fragment.format.isImageFormat())
            hasPicture |= repairPicture(fragment, block);
    }
    repairEmoji(block);
    repairLineHeight(block, pointSize, hasPicture);
    placeMarker(block);
}

/// The tag of a heading makes its text larger still than the style sheet says.
void PrintRepairs::repairSizes(const std::vector<Fragment> &fragments)
{
    for (const Fragment &fragment : fragments) {
        if (fragment.format.isImageFormat() || !fragment.format.hasProperty(QTextFormat::FontSizeAdjustment)
            || fragment.format.fontPointSize() <= 0)
            continue;
        QTextCharFormat format = fragment.format;
        format.clearProperty(QTextFormat::FontSizeAdjustment);
        QTextCursor cursor(&m_document);
        cursor.setPosition(fragment.position);
        cursor.setPosition(fragment.position + fragment.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
}

/// What fits the page, and a share of it in a table.
QSizeF PrintRepairs::bounded(QSizeF size, const QTextBlock &block) const
{
    double width = m_text.width() - 2;
    const QTextCursor cursor(block);
    if (const QTextTable *table = cursor.currentTable())
        width = std::max(24.0, width / std::max(1, table->columns()) - 20);
    const double indent = block.textList() != nullptr ? 40.0 * block.textList()->format().indent() : 0;
    width = std::max(24.0, width - indent - block.blockFormat().leftMargin() - block.blockFormat().rightMargin());
    const double scale = std::min({1.0, width / size.width(), (m_text.height() - aroundPicture) / size.height()});
    return {std::max(1.0, size.width() * scale), std::max(1.0, size.height() * scale)};
}

bool PrintRepairs::repairPicture(const Fragment &fragment, const QTextBlock &block)
{
    // Several pictures in a row are one fragment only when they are the same.
    QTextImageFormat image = fragment.format.toImageFormat();
    QTextCursor cursor(&m_document);
    cursor.setPosition(fragment.position);
    cursor.setPosition(fragment.position + fragment.length, QTextCursor::KeepAnchor);
    const QSize natural = m_pictures.naturalSize(image.name());
    if (natural.isEmpty()) {
        const QString alternative = image.property(QTextFormat::ImageAltText).toString();
        QTextCharFormat words = QTextCursor(block).blockCharFormat();
        words.setFontItalic(true);
        cursor.insertText(alternative, words);
        return false;
    }
    QSizeF size(image.width(), image.height());
    if (size.width() <= 0 && size.height() <= 0)
        size = natural;
    else if (size.height() <= 0)
        size.setHeight(size.width() * natural.height() / natural.width());
    else if (size.width() <= 0)
        size.setWidth(size.height() * natural.width() / natural.height());
    size = bounded(size, block);
    image.setWidth(size.width());
    image.setHeight(size.height());
    cursor.setCharFormat(image);
    if (size.width() > m_text.width() / 2)
        giveOwnLine(fragment, block);
    return true;
}

/// A large picture in the midst of a text: what stands before it would be set as high as the picture.
void PrintRepairs::giveOwnLine(const Fragment &fragment, const QTextBlock &block)
{
    QTextCursor cursor(&m_document);
    cursor.setPosition(fragment.position + fragment.length);
    if (!cursor.atBlockEnd())
        cursor.insertText(QString(QChar::LineSeparator), block.charFormat());
    cursor.setPosition(fragment.position);
    if (!cursor.atBlockStart())
        cursor.insertText(QString(QChar::LineSeparator), block.charFormat());
}

/// The machine's emoji are usually pictures, which a PDF doesn't take; a font of outlines does where there is one.
void PrintRepairs::repairEmoji(const QTextBlock &block)
{
    const QString content = block.text();
    const auto isEmoji = [&](qsizetype at) {
        const QChar c = content[at];
        if (c.isLowSurrogate())
            return at > 0 && content[at - 1].unicode() >= 0xD83C && content[at - 1].unicode() <= 0xD83E;
        return (c.unicode() >= 0xD83C && c.unicode() <= 0xD83E) || c.unicode() == 0xFE0F || c.unicode() == 0x200D;
    };
    for (qsizetype start = 0; start < content.size(); ++start) {
        if (!content[start].isHighSurrogate() || !isEmoji(start))
            continue;
        qsizetype end = start;
        while (end < content.size() && isEmoji(end))
            ++end;
        QTextCursor cursor(&m_document);
        cursor.setPosition(block.position() + static_cast<int>(start));
        cursor.setPosition(block.position() + static_cast<int>(end), QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setFontFamilies({emojiFamily});
        cursor.mergeCharFormat(format);
        start = end;
    }
}

/// A proportional height is taken of the font's own line, not of its size.
void PrintRepairs::repairLineHeight(const QTextBlock &block, double pointSize, bool hasPicture)
{
    QTextBlockFormat format = block.blockFormat();
    format.setNonBreakableLines(false);
    if (hasPicture)
        format.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
    else if (format.lineHeightType() == QTextBlockFormat::ProportionalHeight && format.lineHeight() > 0
        && pointSize > 0)
        format.setLineHeight(format.lineHeight() / 100 * pointSize * pixelsAPoint, QTextBlockFormat::FixedHeight);
    QTextCursor(block).setBlockFormat(format);
}

/// A list item with a marker of its own leaves the list, and the marker hangs before its text.
void PrintRepairs::placeMarker(const QTextBlock &block)
{
    const QString content = block.text();
    if (!content.startsWith(text(HTMLPrinter::markerStart)))
        return;
    const qsizetype end = content.indexOf(text(HTMLPrinter::markerEnd));
    if (end < 0)
        return;
    const QString marker = content.mid(1, end - 1) + QChar(QChar::Nbsp);
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor, static_cast<int>(end) + 1);
    cursor.insertText(marker);
    QFont font = block.begin().fragment().charFormat().font();
    font.setPixelSize(std::max(1, qRound(font.pointSizeF() * pixelsAPoint * 16)));
    QTextBlockFormat format = block.blockFormat();
    if (QTextList *list = block.textList()) {
        list->remove(block); // which keeps its indent
        format = block.blockFormat();
    }
    format.setTextIndent(-QFontMetricsF(font).horizontalAdvance(marker) / 16);
    QTextCursor(block).setBlockFormat(format);
}

/// One line around every cell, the last column's right one included.
void PrintRepairs::repairTables(QTextFrame &frame)
{
    for (QTextFrame *child : frame.childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(child)) {
            QTextTableFormat format = table->format();
            format.setBorderCollapse(true);
            format.setBorder(1);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setBorderBrush(rule);
            format.setCellSpacing(0);
            format.setTopMargin(aroundTable);
            format.setBottomMargin(aroundTable);
            table->setFormat(format);
        }
        repairTables(*child);
    }
}

} // namespace nolfa
