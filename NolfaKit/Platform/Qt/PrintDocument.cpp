#include "Platform/Qt/PrintDocument.h"

#include "Platform/Qt/PrintRepairs.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <algorithm>
#include <cmath>
#include <limits>

namespace nolfa {

namespace {

constexpr double pixelsAPoint = 96.0 / 72;
/// The least that Qt's numbers can tell from none, in device units.
constexpr double leastSpacing = 1.0 / 64;
const QColor ink(0x1A, 0x17, 0x14);

/// How much may be laid out anew for the sake of headings.
constexpr int mostBlocksLaidOut = 100'000;
/// A cell's padding and border below its text, in CSS pixels.
constexpr double belowRow = 7.5;
/// A cell's padding and border beside its text, in CSS pixels.
constexpr double besideCell = 9;
/// What can't be more than the paddings of two cells, in CSS pixels.
constexpr double largestGap = 60;

} // namespace

PrintDocument::PrintDocument(const HTMLPrinter::Job &job, QPaintDevice &device, int unitsAPoint)
    : m_pictures(job.pictures, 72.0 * unitsAPoint)
    , m_unitsAPixel(unitsAPoint / pixelsAPoint)
    , m_page(job.page.width * unitsAPoint, job.page.height * unitsAPoint)
{
    m_document.setUndoRedoEnabled(false);
    // The PDF writer doesn't say what a ligature stands for, and readers couldn't find "office". A space between
    // letters, too small to be seen, keeps them apart.
    QFont font = m_document.defaultFont();
    font.setLetterSpacing(QFont::AbsoluteSpacing, leastSpacing);
    m_document.setDefaultFont(font);
    m_document.documentLayout()->setPaintDevice(&device);
    m_document.documentLayout()->registerHandler(QTextFormat::ImageObject, &m_pictures);
    m_document.setHtml(QString::fromUtf8(job.html.data(), static_cast<qsizetype>(job.html.size())));
    // Lengths in formats are CSS pixels, which the layout scales to the device.
    m_document.setDocumentMargin(job.margin * pixelsAPoint);
    const QSizeF text(job.page.width - 2 * job.margin, job.page.height - 2 * job.margin);
    PrintRepairs(m_document, m_pictures, text * pixelsAPoint).apply();
    m_document.setPageSize(m_page);
    keepHeadingsWithText();
    findOpenRows(*m_document.rootFrame());
}

int PrintDocument::pageCount() const
{
    return std::max(1, m_document.pageCount());
}

/// A heading at a page's foot whose text begins on the next page goes there too.
void PrintDocument::keepHeadingsWithText()
{
    const QAbstractTextDocumentLayout &layout = *m_document.documentLayout();
    int layouts = std::max(1, mostBlocksLaidOut / std::max(1, m_document.blockCount()));
    QTextBlock first; // of a run of headings
    for (QTextBlock block = m_document.begin(); block.isValid() && layouts > 0; block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) {
            if (!first.isValid())
                first = block;
            continue;
        }
        const QTextBlock heading = std::exchange(first, QTextBlock());
        if (!heading.isValid() || heading == m_document.begin()
            || pageAt(layout.blockBoundingRect(heading).top()) == pageAt(firstLineOf(block)))
            continue;
        QTextBlockFormat format = heading.blockFormat();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(heading).setBlockFormat(format);
        // Laid out in part, a document loses what stands behind its tables.
        m_document.markContentsDirty(0, m_document.characterCount());
        --layouts;
    }
}

int PrintDocument::pageAt(double y) const
{
    return static_cast<int>(std::floor(y / m_page.height()));
}

/// The middle of a block's first line.
double PrintDocument::firstLineOf(const QTextBlock &block) const
{
    const double top = m_document.documentLayout()->blockBoundingRect(block).top();
    if (block.layout()->lineCount() == 0)
        return top;
    const QTextLine line = block.layout()->lineAt(0);
    return top + line.y() + line.height() / 2;
}

/// A table's row whose text begins on the next page would leave its empty frame at the foot of this one. The table
/// is closed there instead.
void PrintDocument::findOpenRows(const QTextFrame &frame)
{
    for (const QTextFrame *child : frame.childFrames()) {
        const auto *table = qobject_cast<const QTextTable *>(child);
        if (table == nullptr) {
            findOpenRows(*child);
            continue;
        }
        for (int row = 1; row < table->rows(); ++row)
            findOpenRow(*table, row);
    }
}

void PrintDocument::findOpenRow(const QTextTable &table, int row)
{
    const QAbstractTextDocumentLayout &layout = *m_document.documentLayout();
    const double bottom = bottomOf(table, row - 1);
    double top = std::numeric_limits<double>::max();
    for (int column = 0; column < table.columns(); ++column)
        top = std::min(top, firstLineOf(table.cellAt(row, column).firstCursorPosition().block()));
    const int page = pageAt(bottom);
    if (pageAt(top) == page)
        return;
    // The border lies midway between the texts of two rows; how far apart these are, the rows before tell.
    const double gap = row > 1 ? topOf(table, row - 1) - bottomOf(table, row - 2) : 0;
    const bool isUsual = gap > 0 && gap < largestGap * m_unitsAPixel;
    const double foot = bottom + (isUsual ? gap / 2 : belowRow * m_unitsAPixel);
    const auto cellRect = [&](int column) {
        return layout.blockBoundingRect(table.cellAt(row - 1, column).firstCursorPosition().block());
    };
    const double left = cellRect(0).left() - besideCell * m_unitsAPixel;
    const double right = cellRect(table.columns() - 1).right() + besideCell * m_unitsAPixel;
    m_feet[page] = QRectF(left, foot, right - left, m_unitsAPixel);
}

/// Where the text of a row begins.
double PrintDocument::topOf(const QTextTable &table, int row) const
{
    double top = std::numeric_limits<double>::max();
    for (int column = 0; column < table.columns(); ++column) {
        const QTextBlock first = table.cellAt(row, column).firstCursorPosition().block();
        top = std::min(top, m_document.documentLayout()->blockBoundingRect(first).top());
    }
    return top;
}

/// Where the text of a row ends.
double PrintDocument::bottomOf(const QTextTable &table, int row) const
{
    double bottom = 0;
    for (int column = 0; column < table.columns(); ++column) {
        const QTextBlock last = table.cellAt(row, column).lastCursorPosition().block();
        bottom = std::max(bottom, m_document.documentLayout()->blockBoundingRect(last).bottom());
    }
    return bottom;
}

void PrintDocument::drawPage(QPainter &painter, int page) const
{
    const double top = page * m_page.height();
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(QPointF(0, top), m_page);
    context.palette.setColor(QPalette::Text, ink);
    painter.save();
    painter.translate(0, -top);
    QRectF visible = context.clip;
    const auto foot = m_feet.find(page);
    if (foot != m_feet.end()) {
        visible.setBottom(foot->second.top());
        painter.fillRect(foot->second, PrintRepairs::rule);
    }
    painter.setClipRect(visible);
    m_document.documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace nolfa
