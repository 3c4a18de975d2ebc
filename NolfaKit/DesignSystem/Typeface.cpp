#include "DesignSystem/Typeface.h"

#include <QEvent>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace nolfa {

Typeface::Typeface()
{
    qGuiApp->installEventFilter(this);
}

double Typeface::systemSize() const
{
    constexpr double pointsPerPixel = 72.0 / 96;
    const QFont font = QGuiApplication::font();
    return font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * pointsPerPixel;
}

bool Typeface::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        emit systemSizeChanged();
    return QObject::eventFilter(watched, event);
}

QFont Typeface::font(const QString &family, int weight, double size, double tracking) const
{
    QFont font;
    // Arrows are in the monospaced family alone.
    font.setFamilies({family, QStringLiteral("IBM Plex Mono")});
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    if (tracking != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    return font;
}

} // namespace nolfa
