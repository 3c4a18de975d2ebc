#pragma once

#include "Platform/Qt/PrintPictures.h"

#include <QColor>
#include <QSizeF>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFormat>
#include <vector>

class QTextFrame;

namespace nolfa {

/// Sets right in a text that came from HTML what the layout engine understands otherwise than a browser.
class PrintRepairs {
public:
    /// The colour of a table's lines.
    static constexpr QColor rule{0xE3, 0xDA, 0xCB};

    /// @param text  the part of a page that text may fill, in CSS pixels
    PrintRepairs(QTextDocument &document, const PrintPictures &pictures, QSizeF text);

    /// All edits are one step: otherwise each of them would lay the whole document out anew.
    void apply();

private:
    struct Fragment {
        int position;
        int length;
        QTextCharFormat format;
    };

    void repairBlock(const QTextBlock &block);
    void repairSizes(const std::vector<Fragment> &fragments);
    /// @return whether a picture is left
    bool repairPicture(const Fragment &fragment, const QTextBlock &block);
    void giveOwnLine(const Fragment &fragment, const QTextBlock &block);
    void repairEmoji(const QTextBlock &block);
    void repairLineHeight(const QTextBlock &block, double pointSize, bool hasPicture);
    void placeMarker(const QTextBlock &block);
    void repairTables(QTextFrame &frame);
    [[nodiscard]] QSizeF bounded(QSizeF size, const QTextBlock &block) const;

    QTextDocument &m_document;
    const PrintPictures &m_pictures;
    QSizeF m_text;
};

} // namespace nolfa
