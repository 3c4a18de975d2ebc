#pragma once

#include <QImage>
#include <QObject>
#include <QSizeF>
#include <QTextObjectInterface>
#include <string>
#include <vector>

namespace nolfa {

/// The pictures of one document on paper: measured from their headers, decoded when their turn to be drawn comes, so
/// that one of them at a time is in memory. Sizes in formats are CSS pixels (1/96 inch).
class PrintPictures : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    /// @param pictures    encoded files; must outlive the object
    /// @param resolution  device units an inch
    PrintPictures(const std::vector<std::string> &pictures, double resolution)
        : m_pictures(pictures)
        , m_resolution(resolution)
    {
    }

    /// The size of the picture that a source names, in its own pixels as it is to be seen. Empty when there is none,
    /// or none that can be read.
    [[nodiscard]] QSize naturalSize(const QString &source) const;

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &place, QTextDocument *document, int position,
        const QTextFormat &format) override;

private:
    [[nodiscard]] const std::string *bytes(const QString &source) const;
    [[nodiscard]] QImage decoded(const QString &source, const QSizeF &place) const;

    const std::vector<std::string> &m_pictures;
    double m_resolution;
    // The last one is kept: its identity lets the PDF hold a repeated logo once.
    QString m_lastSource;
    QImage m_last;
};

} // namespace nolfa
