import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A button in a capsule.
T.Button {
    id: root

    property int kind: NolfaButtonStyle.Kind.Primary
    /// The capsule's height; a larger text makes it higher.
    property int buttonHeight: Metrics.buttonHeight.md

    readonly property NolfaButtonStyle style: NolfaButtonStyle {
        kind: root.kind
        enabled: root.enabled
        hovered: root.looksHovered
        pressed: root.down
    }

    // What is shown; a gallery may set them.
    property bool looksHovered: hovered
    property bool looksFocused: visualFocus

    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(buttonHeight, label.implicitHeight + topPadding + bottomPadding)
    horizontalPadding: 20
    verticalPadding: 6
    hoverEnabled: true
    font: AppFont.body(15, AppFont.Body.Medium)
    scale: down ? 0.98 : 1
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()

    contentItem: Text {
        id: label
        text: root.text
        textFormat: Text.PlainText
        font: root.font
        color: root.style.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }
    }

    background: Rectangle {
        radius: height / 2
        color: root.style.fill
        border.width: root.style.isSecondary ? 1 : 0
        border.color: root.style.border

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }
        Behavior on border.color { ColorAnimation { duration: Metrics.animDuration } }

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }

    Behavior on scale {
        enabled: !Motion.reduced
        NumberAnimation { duration: Metrics.animDuration; easing.type: Easing.OutQuad }
    }
}
