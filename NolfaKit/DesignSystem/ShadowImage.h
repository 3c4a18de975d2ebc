#pragma once

#include <QColor>
#include <QImage>

namespace nolfa {

/// The drawing of a soft shadow, to be stretched in its middle.
struct ShadowImage {
    QImage image; ///< premultiplied
    int margin = 0; ///< how far the shadow reaches beyond its rectangle, in points
    int horizontalInset = 0; ///< from the image's edge to the part that may be stretched, in points
    int verticalInset = 0;

    /// What a shadow looks like. Lengths in points.
    struct Look {
        qreal radius = 0;
        qreal blur = 0;
        QColor color;
    };

    /// @param size  of the rectangle, in points; the image is smaller where its middle can be stretched
    /// @param scale  device pixels for a point
    [[nodiscard]] static ShadowImage of(const Look &look, QSizeF size, qreal scale);
};

} // namespace nolfa
