#pragma once

#include <QRect>
#include <QSize>
#include <optional>

class QWindow;

namespace nolfa {

/// Makes room for a tool that needs more of the window. A window only ever grows. Main thread only.
namespace WindowGrowth {

/// Where a window ends up, with y downward. The top edge stays where it is as long as the available area allows;
/// there, a window moves left rather than past the right edge, and up rather than past the bottom.
/// @param frame      with the decorations
/// @param content    what lies inside them
/// @param least      what the tool needs of the content
/// @param available  the screen without its panels; absent: no screen
/// @return the new frame; absent when the content is large enough
[[nodiscard]] std::optional<QRect> grown(
    const QRect &frame, const QSize &content, const QSize &least, const std::optional<QRect> &available);

/// @param window  may be null: nothing happens
void growIfNeeded(QWindow *window, const QSize &least);

} // namespace WindowGrowth

} // namespace nolfa
