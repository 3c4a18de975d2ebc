#include "DesignSystem/ShadowImage.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace nolfa {

namespace {

/// One pass along a line of bytes: each becomes the mean of its neighbourhood.
void smoothLine(std::vector<int> &line, std::vector<int> &sums, int reach)
{
    const int count = static_cast<int>(line.size());
    sums[0] = 0;
    for (int i = 0; i < count; ++i)
        sums[static_cast<std::size_t>(i) + 1] = sums[static_cast<std::size_t>(i)] + line[static_cast<std::size_t>(i)];
    for (int i = 0; i < count; ++i) {
        const auto from = static_cast<std::size_t>(std::max(0, i - reach));
        const auto to = static_cast<std::size_t>(std::min(count, i + reach + 1));
        line[static_cast<std::size_t>(i)] = (sums[to] - sums[from]) / (2 * reach + 1);
    }
}

/// Means taken three times come close to a normal distribution.
/// @param deviation  in pixels
void smooth(QImage &mask, qreal deviation)
{
    constexpr int passes = 3;
    // Finer steps than a byte's, so that the faint rim of the shadow has no contour lines.
    constexpr int fineness = 256;
    const int reach = static_cast<int>(std::lround((std::sqrt(12 * deviation * deviation / passes + 1) - 1) / 2));
    if (reach < 1)
        return;
    const auto run = [&](int lines, int length, const auto &pixel) {
        std::vector<int> line(static_cast<std::size_t>(length));
        std::vector<int> sums(static_cast<std::size_t>(length) + 1);
        for (int i = 0; i < lines; ++i) {
            for (int k = 0; k < length; ++k)
                line[static_cast<std::size_t>(k)] = pixel(i, k) * fineness;
            for (int pass = 0; pass < passes; ++pass)
                smoothLine(line, sums, reach);
            for (int k = 0; k < length; ++k)
                pixel(i, k) = static_cast<uchar>((line[static_cast<std::size_t>(k)] + fineness / 2) / fineness);
        }
    };
    run(mask.height(), mask.width(), [&mask](int row, int column) -> uchar & { return mask.scanLine(row)[column]; });
    run(mask.width(), mask.height(), [&mask](int column, int row) -> uchar & { return mask.scanLine(row)[column]; });
}

} // namespace

ShadowImage ShadowImage::of(const Look &look, QSizeF size, qreal scale)
{
    ShadowImage shadow;
    shadow.margin = static_cast<int>(std::ceil(look.blur * 1.5));
    const int corner = static_cast<int>(std::ceil(look.radius)) + shadow.margin;
    const auto inner = [corner](qreal length) { return std::min(static_cast<int>(std::ceil(length)), 2 * corner + 2); };
    const QSize rectangle(inner(size.width()), inner(size.height()));
    const QSize whole = rectangle + QSize(2 * shadow.margin, 2 * shadow.margin);
    shadow.horizontalInset = (whole.width() - 1) / 2;
    shadow.verticalInset = (whole.height() - 1) / 2;

    QImage mask(whole * scale, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRectF(QPointF(shadow.margin, shadow.margin), rectangle), look.radius, look.radius);
    painter.end();
    smooth(mask, look.blur / 2 * scale);

    shadow.image = QImage(mask.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.image.fill(look.color);
    QPainter tint(&shadow.image);
    tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    tint.drawImage(0, 0, mask);
    return shadow;
}

} // namespace nolfa
