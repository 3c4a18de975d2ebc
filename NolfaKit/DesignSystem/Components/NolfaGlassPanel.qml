import NolfaKit.DesignSystem
import QtQuick

/// The ground of a panel that floats above the content.
GlassFallback {
    radius: Metrics.radius.panel
}
