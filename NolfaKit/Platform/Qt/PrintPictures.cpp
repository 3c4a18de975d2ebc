#include "Platform/Qt/PrintPictures.h"

#include "Platform/HTMLPrinter.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QTextFormat>
#include <algorithm>
#include <cmath>

namespace nolfa {

namespace {

constexpr double pixelsAnInch = 96;
/// What a printer shows; more pixels only make the file larger.
constexpr double finest = 300;

/// Reads from bytes that stay where they are.
class Reader {
public:
    explicit Reader(const std::string &bytes)
        : m_bytes(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())))
        , m_buffer(&m_bytes)
        , reader(&m_buffer)
    {
        m_buffer.open(QIODevice::ReadOnly);
        reader.setAutoTransform(true);
    }

    [[nodiscard]] bool turnsSides() const
    {
        return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    }

private:
    QByteArray m_bytes;
    QBuffer m_buffer;

public:
    QImageReader reader;
};

} // namespace

const std::string *PrintPictures::bytes(const QString &source) const
{
    const QLatin1String scheme(
        HTMLPrinter::pictureScheme.data(), static_cast<qsizetype>(HTMLPrinter::pictureScheme.size()));
    if (!source.startsWith(scheme))
        return nullptr;
    bool isNumber = false;
    const std::size_t index = source.mid(scheme.size()).toULongLong(&isNumber);
    return isNumber && index < m_pictures.size() ? &m_pictures[index] : nullptr;
}

QSize PrintPictures::naturalSize(const QString &source) const
{
    const std::string *file = bytes(source);
    if (file == nullptr)
        return {};
    const Reader opened(*file);
    // What wouldn't decode must not keep an empty place.
    const QSize size = opened.reader.size();
    if (size.isEmpty() || !opened.reader.canRead())
        return {};
    return opened.turnsSides() ? size.transposed() : size;
}

QSizeF PrintPictures::intrinsicSize(QTextDocument *, int, const QTextFormat &format)
{
    const QTextImageFormat image = format.toImageFormat();
    return QSizeF(image.width(), image.height()) * (m_resolution / pixelsAnInch);
}

QImage PrintPictures::decoded(const QString &source, const QSizeF &place) const
{
    const std::string *file = bytes(source);
    if (file == nullptr)
        return {};
    Reader opened(*file);
    const QSize natural = opened.reader.size();
    const QSizeF upright = opened.turnsSides() ? place.transposed() : place;
    const double scale
        = std::max(upright.width() / natural.width(), upright.height() / natural.height()) * (finest / m_resolution);
    if (scale < 1)
        opened.reader.setScaledSize((QSizeF(natural) * scale).toSize().expandedTo({1, 1}));
    return opened.reader.read();
}

void PrintPictures::drawObject(QPainter *painter, const QRectF &place, QTextDocument *, int, const QTextFormat &format)
{
    const QString source = format.toImageFormat().name();
    if (source != m_lastSource || m_last.isNull()) {
        m_last = {};
        m_last = decoded(source, place.size());
        m_lastSource = source;
    }
    if (!m_last.isNull())
        painter->drawImage(place, m_last);
}

} // namespace nolfa
