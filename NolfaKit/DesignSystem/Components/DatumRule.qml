import NolfaKit.DesignSystem
import QtQuick

/// A rule 2 points high, as wide as its container unless a width is set.
Rectangle {
    width: parent ? parent.width : 0
    height: 2
    implicitHeight: 2
    color: Palette.burgundy
    Accessible.ignored: true
}
