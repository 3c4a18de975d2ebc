import NolfaKit.DesignSystem
import QtQuick

/// A rule of exactly one device pixel, as long as its container unless a length is set.
Rectangle {
    id: root

    /// Qt.Horizontal or Qt.Vertical.
    property int axis: Qt.Horizontal
    /// Device pixels for a point.
    property real displayScale: Screen.devicePixelRatio
    readonly property real thickness: 1 / Math.max(1, displayScale)

    implicitWidth: thickness
    implicitHeight: thickness
    width: axis === Qt.Vertical ? thickness : parent ? parent.width : 0
    height: axis === Qt.Horizontal ? thickness : parent ? parent.height : 0
    color: Palette.line
    antialiasing: false
    Accessible.ignored: true
}
