import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The tab of a pane: its symbol and its name.
T.TabButton {
    id: root

    required property SettingsPane pane
    property bool looksHovered: hovered
    property bool looksFocused: visualFocus

    readonly property color foreground: checked ? Palette.burgundy : looksHovered ? Palette.ink : Palette.slate

    implicitWidth: Math.max(88, Math.ceil(widest.implicitWidth) + 20)
    implicitHeight: Math.max(60, 20 + 4 + word.implicitHeight + 16)
    hoverEnabled: true
    text: pane.label
    // The keyboard comes to the choice, and moves it from there.
    focusPolicy: checked ? Qt.TabFocus : Qt.NoFocus
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: checked

    contentItem: Item {
        Column {
            anchors.centerIn: parent
            spacing: 4

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 20
                height: 20
                name: root.pane.symbol
                color: root.foreground
            }
            Text {
                id: word
                anchors.horizontalCenter: parent.horizontalCenter
                text: root.text
                textFormat: Text.PlainText
                font: AppFont.body(13, root.checked ? AppFont.Body.Semibold : AppFont.Body.Medium)
                color: root.foreground
                Accessible.ignored: true
            }
        }
        // The choice is set heavier; no width changes by that.
        Text {
            id: widest
            visible: false
            text: root.text
            textFormat: Text.PlainText
            font: AppFont.body(13, AppFont.Body.Semibold)
        }
    }

    background: Rectangle {
        radius: Metrics.radius.control
        color: Palette.tint(Palette.mist, root.checked ? 1 : root.looksHovered ? 0.5 : 0)

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }
}
