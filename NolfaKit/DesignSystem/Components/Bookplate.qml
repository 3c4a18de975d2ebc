import NolfaKit.DesignSystem
import QtQuick

/// The ground of every empty well: a sheet with a double frame, which stands out while a file is held over it.
Item {
    id: root

    property bool targeted: false
    /// Device pixels for a point.
    property real displayScale: Screen.devicePixelRatio
    /// One and a half points, in whole device pixels: a blurred frame would look uneven.
    readonly property real frameWidth: Math.max(1, Math.floor(1.5 * displayScale)) / Math.max(1, displayScale)

    Accessible.ignored: true

    Shadow {
        y: Metrics.panelShadow.y
        width: parent.width
        height: parent.height
        radius: Metrics.radius.hero
        blur: Metrics.panelShadow.radius
        color: Metrics.panelShadow.color
        opacity: root.targeted ? 1 : 0

        Behavior on opacity { NumberAnimation { duration: Metrics.animDuration } }
    }
    Rectangle {
        objectName: "frame"
        anchors.fill: parent
        radius: Metrics.radius.hero
        color: Palette.surface
        border.width: root.targeted ? 2 : root.frameWidth
        border.color: root.targeted ? Palette.burgundy : Palette.stone

        Behavior on border.color { ColorAnimation { duration: Metrics.animDuration } }
    }
    Rectangle {
        objectName: "innerLine"
        anchors.fill: parent
        anchors.margins: 6 + root.frameWidth
        radius: Metrics.radius.panel
        color: "transparent"
        border.width: 1
        border.color: root.targeted ? Palette.tint(Palette.burgundy, 0.3) : Palette.line

        Behavior on border.color { ColorAnimation { duration: Metrics.animDuration } }
    }
}
