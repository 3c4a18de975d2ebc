#pragma once

#include "Platform/HTMLPrinter.h"
#include "Platform/Qt/PrintPictures.h"

#include <QTextDocument>
#include <map>

class QPainter;
class QPaintDevice;
class QTextBlock;
class QTextFrame;
class QTextTable;

namespace nolfa {

/// An HTML text laid out on pages.
class PrintDocument {
public:
    /// @param unitsAPoint  of @p device
    PrintDocument(const HTMLPrinter::Job &job, QPaintDevice &device, int unitsAPoint);

    /// At least 1.
    [[nodiscard]] int pageCount() const;

    /// Draws one page, counted from 0, at the painter's origin.
    void drawPage(QPainter &painter, int page) const;

private:
    /// Loads nothing at all, whatever a text names.
    class ClosedDocument : public QTextDocument {
    protected:
        QVariant loadResource(int, const QUrl &) override { return {}; }
    };

    void keepHeadingsWithText();
    [[nodiscard]] int pageAt(double y) const;
    [[nodiscard]] double firstLineOf(const QTextBlock &block) const;
    void findOpenRows(const QTextFrame &frame);
    void findOpenRow(const QTextTable &table, int row);
    [[nodiscard]] double topOf(const QTextTable &table, int row) const;
    [[nodiscard]] double bottomOf(const QTextTable &table, int row) const;

    PrintPictures m_pictures;
    ClosedDocument m_document;
    double m_unitsAPixel; ///< device units a CSS pixel
    QSizeF m_page; ///< device units
    std::map<int, QRectF> m_feet; ///< the line that closes a table before a page's foot, by page
};

} // namespace nolfa
