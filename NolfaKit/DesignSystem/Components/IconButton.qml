import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A button that is a symbol; `text` is what it is called.
T.Button {
    id: root

    property string symbol
    property real symbolSize: 18
    property bool looksHovered: hovered
    property bool looksFocused: visualFocus

    implicitWidth: 32
    implicitHeight: 32
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            width: root.symbolSize
            height: root.symbolSize
            name: root.symbol
            color: !root.enabled ? Palette.stone : root.looksHovered || root.down ? Palette.ink : Palette.slate
        }
    }

    background: Rectangle {
        radius: height / 2
        color: Palette.tint(Palette.mist, root.enabled && (root.looksHovered || root.down) ? 1 : 0)

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }
}
