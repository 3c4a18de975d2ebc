import NolfaKit.DesignSystem
import QtQuick

/// The ground of a bar along an edge of the window, with its shadow towards the content above.
GlassFallback {
    shadowColor: Palette.tint(Palette.burgundyDark, 0.05)
    shadowRadius: 10
    shadowY: -2
}
