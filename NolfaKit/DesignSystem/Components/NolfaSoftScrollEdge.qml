import NolfaKit.DesignSystem
import QtQuick

/// Lets the content of a list fade out at the foot, as long as there is more below.
Rectangle {
    id: root

    required property Flickable flickable
    property color ground: Palette.paper
    readonly property bool hasMore: flickable.contentHeight + flickable.originY - flickable.contentY > flickable.height + 0.5

    anchors.left: flickable.left
    anchors.right: flickable.right
    anchors.bottom: flickable.bottom
    height: 24
    opacity: hasMore ? 1 : 0
    gradient: Gradient {
        GradientStop { position: 0; color: Palette.tint(root.ground, 0) }
        GradientStop { position: 1; color: root.ground }
    }
    Accessible.ignored: true

    Behavior on opacity { NumberAnimation { duration: Metrics.animDuration } }
}
