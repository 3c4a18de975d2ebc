import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// Yes or no, with the question beside the box.
T.CheckBox {
    id: root

    property bool looksHovered: hovered
    property bool looksFocused: visualFocus

    /// As a click does, for assistive technology.
    function answer() {
        toggle()
        toggled()
    }

    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(32, label.implicitHeight + topPadding + bottomPadding)
    verticalPadding: 4
    spacing: 8
    hoverEnabled: true
    font: AppFont.body(14)
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: answer()
    Accessible.onToggleAction: answer()

    indicator: Rectangle {
        objectName: "box"
        x: root.leftPadding
        y: (root.height - height) / 2
        implicitWidth: 18
        implicitHeight: 18
        radius: 4
        color: root.checked ? (root.enabled ? Palette.burgundy : Palette.stone)
            : root.enabled && (root.looksHovered || root.down) ? Palette.mist : Palette.surface
        // Whole pixels of the device: a half would be thick on one side.
        border.width: Math.floor(1.5 * Screen.devicePixelRatio) / Screen.devicePixelRatio
        border.color: !root.enabled ? Palette.stone : root.checked ? Palette.burgundy : Palette.slate

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }

        Symbol {
            objectName: "tick"
            anchors.centerIn: parent
            width: 14
            height: 14
            visible: root.checked
            name: "checkmark"
            color: Palette.paper
        }
        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }

    contentItem: Text {
        id: label
        leftPadding: root.indicator.width + root.spacing
        text: root.text
        textFormat: Text.PlainText
        font: root.font
        color: root.enabled ? Palette.ink : Palette.tint(Palette.slate, 0.62)
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
