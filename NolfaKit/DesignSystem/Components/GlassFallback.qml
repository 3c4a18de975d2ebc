import NolfaKit.DesignSystem
import QtQuick

/// What stands for glass: a plain fill with a quiet border and a soft shadow.
Item {
    id: root

    property real radius: 0
    property color color: Palette.surface
    property color shadowColor: Metrics.panelShadow.color
    property real shadowRadius: Metrics.panelShadow.radius
    property real shadowY: Metrics.panelShadow.y

    Accessible.ignored: true

    Shadow {
        objectName: "shadow"
        y: root.shadowY
        width: parent.width
        height: parent.height
        radius: root.radius
        blur: root.shadowRadius
        color: root.shadowColor
    }
    Rectangle {
        objectName: "fill"
        anchors.fill: parent
        radius: root.radius
        color: root.color
        border.width: 1
        border.color: Palette.line
    }
}
