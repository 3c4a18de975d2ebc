#include "Platform/Qt/PictureDecoder.h"

#include "Platform/Qt/QtRuntime.h"

#include <QIODevice>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace nolfa {

namespace {

/// Of one decoded picture, in MiB: 117 million pixels. With the copy that turning it needs, it stays below a gibibyte.
constexpr int allocationLimit = 448;

/// Formats that a sniff of the first bytes settles; text that might be taken for a drawing isn't among them.
constexpr std::array<std::string_view, 6> formats{"png", "jpeg", "gif", "bmp", "tiff", "webp"};

QLoggingCategory::CategoryFilter otherFilter = nullptr;

/// Damaged pictures are our callers' to report, not Qt's.
void silencePictures(QLoggingCategory *category)
{
    otherFilter(category);
    if (std::string_view(category->categoryName()).starts_with("qt.gui.imageio")) {
        for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
            category->setEnabled(type, false);
    }
}

/// Reads from memory, and comes to an early end after a stop: decoders take that for a damaged file, soon.
class Bytes : public QIODevice {
public:
    Bytes(std::string_view bytes, std::stop_token stop)
        : m_bytes(bytes)
        , m_stop(std::move(stop))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] bool isSequential() const override { return false; }
    [[nodiscard]] qint64 size() const override { return static_cast<qint64>(m_bytes.size()); }

protected:
    qint64 readData(char *data, qint64 most) override
    {
        if (m_stop.stop_requested())
            return -1;
        const auto from = static_cast<std::size_t>(std::min(pos(), size()));
        const std::size_t count = std::min(static_cast<std::size_t>(most), m_bytes.size() - from);
        std::memcpy(data, m_bytes.data() + from, count);
        return static_cast<qint64>(count);
    }

    qint64 writeData(const char * /*data*/, qint64 /*most*/) override { return -1; }

private:
    std::string_view m_bytes;
    std::stop_token m_stop;
};

using AppendRow = void (*)(const QImage &image, int row, std::vector<std::uint8_t> &pixels);

void appendGrey(const QImage &image, int row, std::vector<std::uint8_t> &pixels)
{
    const uchar *const from = image.constScanLine(row);
    pixels.insert(pixels.end(), from, from + image.width());
}

template <bool hasAlpha> void appendColours(const QImage &image, int row, std::vector<std::uint8_t> &pixels)
{
    constexpr std::size_t channels = hasAlpha ? 4 : 3;
    const auto *from = reinterpret_cast<const QRgb *>(image.constScanLine(row));
    const std::size_t start = pixels.size();
    pixels.resize(start + static_cast<std::size_t>(image.width()) * channels);
    for (std::uint8_t *to = pixels.data() + start; to != pixels.data() + pixels.size(); to += channels, ++from) {
        to[0] = static_cast<std::uint8_t>(qRed(*from));
        to[1] = static_cast<std::uint8_t>(qGreen(*from));
        to[2] = static_cast<std::uint8_t>(qBlue(*from));
        if constexpr (hasAlpha)
            to[3] = static_cast<std::uint8_t>(qAlpha(*from));
    }
}

/// Into our own layout. The rows of grey and of 32-bit pictures are read where they are.
std::optional<Bitmap> bitmap(QImage image)
{
    const bool isGrey = image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16;
    const bool hasAlpha = image.hasAlphaChannel();
    image.convertTo(isGrey ? QImage::Format_Grayscale8 : hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull())
        return std::nullopt;
    Bitmap result;
    result.width = image.width();
    result.height = image.height();
    result.layout = isGrey ? Bitmap::Layout::grey : hasAlpha ? Bitmap::Layout::rgba : Bitmap::Layout::rgb;
    result.pixels.reserve(result.bytesPerRow() * static_cast<std::size_t>(result.height));
    const AppendRow append = isGrey ? appendGrey : hasAlpha ? appendColours<true> : appendColours<false>;
    for (int row = 0; row < result.height; ++row)
        append(image, row, result.pixels);
    return result;
}

class QtPictureSource : public PictureSource {
public:
    QtPictureSource(std::string_view bytes, const std::stop_token &stop)
        : m_bytes(bytes)
        , m_stop(stop)
        , m_device(bytes, stop)
        , m_reader(&m_device)
    {
        // With a format given, Qt would take its word for it.
        m_reader.setDecideFormatFromContent(true);
    }

    [[nodiscard]] bool isPicture()
    {
        const QByteArray format = m_reader.format();
        return std::ranges::count(
                   formats, std::string_view(format.constData(), static_cast<std::size_t>(format.size())))
            != 0;
    }

    [[nodiscard]] std::optional<Dimensions> pixelSize() override
    {
        const QSize size = m_reader.size();
        if (size.width() < 1 || size.height() < 1)
            return std::nullopt;
        return Dimensions{size.width(), size.height()};
    }

    [[nodiscard]] std::optional<Bitmap> thumbnail(int longest) override
    {
        if (const std::optional<Dimensions> size = pixelSize(); size && std::max(size->width, size->height) > longest)
            m_reader.setScaledSize(scaled(*size, longest));
        return read(true);
    }

    [[nodiscard]] std::optional<Bitmap> fullPicture() override
    {
        // A reader reads once.
        QtPictureSource again(m_bytes, m_stop);
        return again.read(false);
    }

private:
    static QSize scaled(const Dimensions &size, int longest)
    {
        const double scale = static_cast<double>(longest) / std::max(size.width, size.height);
        const auto side = [scale](int pixels) { return std::max(1, static_cast<int>(std::lround(pixels * scale))); };
        return {side(size.width), side(size.height)};
    }

    std::optional<Bitmap> read(bool isTurned)
    {
        m_reader.setAutoTransform(isTurned);
        QImage image = m_reader.read();
        if (image.isNull() || m_stop.stop_requested())
            return std::nullopt;
        return bitmap(std::move(image));
    }

    std::string_view m_bytes;
    std::stop_token m_stop;
    Bytes m_device;
    QImageReader m_reader;
};

/// Once for the process, before the first picture.
bool prepare()
{
    QtRuntime::ensureMainThread();
    // Ours is called before it is installed, for every category that is there already: the one it goes on to must be
    // known by then.
    otherFilter = QLoggingCategory::installFilter(nullptr);
    QLoggingCategory::installFilter(silencePictures);
    QImageReader::setAllocationLimit(allocationLimit);
    return true;
}

} // namespace

PictureSource *PictureDecoder::open(std::string_view bytes, const std::stop_token &stop)
{
    [[maybe_unused]] static const bool isReady = prepare();
    auto source = std::make_unique<QtPictureSource>(bytes, stop);
    return source->isPicture() ? source.release() : nullptr;
}

} // namespace nolfa
