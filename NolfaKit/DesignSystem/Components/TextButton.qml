import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A button that is a word in burgundy.
T.Button {
    id: root

    property bool looksHovered: hovered
    property bool looksFocused: visualFocus

    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(32, label.implicitHeight + 8)
    horizontalPadding: 10
    hoverEnabled: true
    font: AppFont.body(13, AppFont.Body.Medium)
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()

    contentItem: Text {
        id: label
        text: root.text
        textFormat: Text.PlainText
        font: root.font
        color: root.enabled ? Palette.burgundy : Palette.tint(Palette.slate, 0.62)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
    }

    background: Rectangle {
        radius: Metrics.radius.control
        color: Palette.tint(Palette.mist, root.enabled && (root.looksHovered || root.down) ? 1 : 0)

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }
}
