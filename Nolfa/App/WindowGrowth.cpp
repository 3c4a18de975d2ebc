#include "Nolfa/App/WindowGrowth.h"

#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace nolfa::WindowGrowth {

std::optional<QRect> grown(
    const QRect &frame, const QSize &content, const QSize &least, const std::optional<QRect> &available)
{
    const QSize missing = (least - content).expandedTo(QSize(0, 0));
    if (missing.isNull())
        return std::nullopt;
    QRect result(frame.topLeft(), frame.size() + missing);
    if (available) {
        const int right = available->x() + available->width();
        const int bottom = available->y() + available->height();
        result.moveTo(std::min(result.x(), right - result.width()), std::min(result.y(), bottom - result.height()));
    }
    return result;
}

void growIfNeeded(QWindow *window, const QSize &least)
{
    if (window == nullptr)
        return;
    const QRect frame = window->frameGeometry();
    const std::optional<QRect> available
        = window->screen() != nullptr ? std::optional(window->screen()->availableGeometry()) : std::nullopt;
    const std::optional<QRect> target = grown(frame, window->size(), least, available);
    if (!target)
        return;
    // The decorations stay as they are.
    window->resize(window->size() + target->size() - frame.size());
    window->setFramePosition(target->topLeft());
}

} // namespace nolfa::WindowGrowth
