#include "Platform/Qt/PrintDocument.h"

#include "Platform/Qt/PrintRepairs.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <cmath>

namespace nolfa {

namespace {

constexpr double pixelsAPoint = 96.0 / 72;
const QColor ink(0x1A, 0x17, 0x14);

/// How often a document may be laid out anew for the sake of its headings.
constexpr int mostHeadingsMoved = 40;

} // namespace

PrintDocument::PrintDocument(const HTMLPrinter::Job &job, QPaintDevice &device, int unitsAPoint)
    : m_pictures(job.pictures, 72.0 * unitsAPoint)
    , m_page(job.page.width * unitsAPoint, job.page.height * unitsAPoint)
{
    m_document.setUndoRedoEnabled(false);
    m_document.documentLayout()->setPaintDevice(&device);
    m_document.documentLayout()->registerHandler(QTextFormat::ImageObject, &m_pictures);
    m_document.setHtml(QString::fromUtf8(job.html.data(), static_cast<qsizetype>(job.html.size())));
    // Lengths in formats are CSS pixels, which the layout scales to the device.
    m_document.setDocumentMargin(job.margin * pixelsAPoint);
    const QSizeF text(job.page.width - 2 * job.margin, job.page.height - 2 * job.margin);
    PrintRepairs(m_document, m_pictures, text * pixelsAPoint).apply();
    m_document.setPageSize(m_page);
    keepHeadingsWithText();
}

int PrintDocument::pageCount() const
{
    return std::max(1, m_document.pageCount());
}

/// A heading at a page's foot whose text begins on the next page goes there too.
void PrintDocument::keepHeadingsWithText()
{
    const QAbstractTextDocumentLayout &layout = *m_document.documentLayout();
    const auto pageOf = [&](double y) { return static_cast<int>(std::floor(y / m_page.height())); };
    int moved = 0;
    QTextBlock first; // of a run of headings
    for (QTextBlock block = m_document.begin(); block.isValid() && moved < mostHeadingsMoved; block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) {
            if (!first.isValid())
                first = block;
            continue;
        }
        if (!first.isValid())
            continue;
        const QTextBlock heading = std::exchange(first, QTextBlock());
        const double top = layout.blockBoundingRect(heading).top();
        const QTextLine line = block.layout()->lineCount() > 0 ? block.layout()->lineAt(0) : QTextLine();
        const double next = layout.blockBoundingRect(block).top() + (line.isValid() ? line.y() + line.height() / 2 : 0);
        if (pageOf(top) == pageOf(next) || heading == m_document.begin())
            continue;
        QTextCursor cursor(heading);
        QTextBlockFormat format = heading.blockFormat();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        cursor.setBlockFormat(format);
        ++moved;
    }
}

void PrintDocument::drawPage(QPainter &painter, int page) const
{
    const double top = page * m_page.height();
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(QPointF(0, top), m_page);
    context.palette.setColor(QPalette::Text, ink);
    painter.save();
    painter.translate(0, -top);
    painter.setClipRect(context.clip);
    m_document.documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace nolfa
