import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// Its content on a white sheet with rounded corners, a quiet border and a soft shadow.
T.Pane {
    id: root

    property real radius: Metrics.radius.card

    implicitWidth: Math.max(implicitBackgroundWidth, contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight, contentHeight + topPadding + bottomPadding)
    padding: 16

    background: Item {
        Shadow {
            x: Metrics.cardShadow.x
            y: Metrics.cardShadow.y
            width: parent.width
            height: parent.height
            radius: root.radius
            blur: Metrics.cardShadow.radius
            color: Metrics.cardShadow.color
        }
        Rectangle {
            objectName: "sheet"
            anchors.fill: parent
            radius: root.radius
            color: Palette.surface
            border.width: 1
            border.color: Palette.line
        }
    }
}
