#pragma once

#include "Platform/HTMLPrinter.h"
#include "Platform/Qt/PrintPictures.h"

#include <QTextDocument>

class QPainter;
class QPaintDevice;

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

    PrintPictures m_pictures;
    ClosedDocument m_document;
    QSizeF m_page; ///< device units
};

} // namespace nolfa
