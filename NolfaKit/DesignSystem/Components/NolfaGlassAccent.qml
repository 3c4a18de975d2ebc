import NolfaKit.DesignSystem
import QtQuick

/// The ground of a panel that wants to be seen.
GlassFallback {
    radius: Metrics.radius.panel
    color: Palette.mist
}
