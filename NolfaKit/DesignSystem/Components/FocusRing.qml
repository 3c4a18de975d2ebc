import NolfaKit.DesignSystem
import QtQuick

/// Shows where the keyboard is, around its parent. Bind `visible` to what says that the keyboard brought the focus.
Rectangle {
    /// From the parent's edge to the ring; negative for a ring inside.
    property int offset: 2
    /// Of the parent's corners.
    property real targetRadius: Metrics.radius.control

    anchors.fill: parent
    anchors.margins: -offset - (offset < 0 ? 0 : border.width)
    z: 1
    radius: Math.max(0, targetRadius - anchors.margins)
    color: "transparent"
    border.width: 2
    border.color: Palette.burgundy
    Accessible.ignored: true
}
