import NolfaKit.DesignSystem
import QtQuick

/// A partial ring that turns as long as it is shown, unless the user wants less motion.
Item {
    id: root

    property real size: 20
    property real lineWidth: 2.5
    property bool reduceMotion: Motion.reduced
    readonly property bool spinning: visible && !reduceMotion
    readonly property alias animation: turn

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Animation
    Accessible.name: L10n.T("Converting", "Conversion en cours")

    Canvas {
        id: ring

        objectName: "ring"
        width: root.size
        height: root.size
        anchors.centerIn: parent
        onPaint: {
            const context = getContext("2d")
            const start = -70 * Math.PI / 180
            context.reset()
            context.lineWidth = root.lineWidth
            context.lineCap = "butt"
            context.strokeStyle = Palette.burgundy
            context.beginPath()
            context.arc(width / 2, height / 2, (root.size - root.lineWidth) / 2, start, start + 0.72 * 2 * Math.PI)
            context.stroke()
        }

        RotationAnimation on rotation {
            id: turn
            from: 0
            to: 360
            duration: 750
            loops: Animation.Infinite
            running: root.spinning
            onStopped: ring.rotation = 0
        }

        Connections {
            target: root
            function onLineWidthChanged() { ring.requestPaint() }
        }
    }
}
