import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The tabs above the panes. Arrow keys move the choice.
T.Control {
    id: root

    /// Each a `SettingsPane`.
    required property var panes
    property int currentIndex: 0
    property bool looksFocused: visualFocus

    function choose(index: int) {
        currentIndex = Math.max(0, Math.min(panes.length - 1, index))
    }

    implicitWidth: row.implicitWidth
    implicitHeight: Math.max(60, row.implicitHeight) + 16
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.PageTabList
    Accessible.name: L10n.T("Settings", "Réglages")
    Keys.onLeftPressed: choose(currentIndex - 1)
    Keys.onRightPressed: choose(currentIndex + 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
        if (event.accepted)
            choose(event.key === Qt.Key_Home ? 0 : panes.length - 1)
    }

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: 4

            Repeater {
                model: root.panes.length

                Rectangle {
                    id: tab

                    required property int index
                    readonly property SettingsPane pane: root.panes[index]
                    readonly property bool isChosen: index === root.currentIndex
                    readonly property color foreground: isChosen ? Palette.burgundy : pointer.hovered ? Palette.ink : Palette.slate

                    objectName: "tab"
                    width: Math.max(88, Math.ceil(widest.implicitWidth) + 20)
                    height: Math.max(60, 20 + 4 + word.implicitHeight + 16)
                    radius: Metrics.radius.control
                    color: Palette.tint(Palette.mist, isChosen ? 1 : pointer.hovered ? 0.5 : 0)
                    Accessible.role: Accessible.PageTab
                    Accessible.name: pane.label
                    Accessible.selectable: true
                    Accessible.selected: isChosen
                    Accessible.onPressAction: root.choose(index)

                    Behavior on color { ColorAnimation { duration: Metrics.animDuration } }

                    Column {
                        anchors.centerIn: parent
                        spacing: 4

                        Symbol {
                            anchors.horizontalCenter: parent.horizontalCenter
                            width: 20
                            height: 20
                            name: tab.pane.symbol
                            color: tab.foreground
                        }
                        Text {
                            id: word
                            anchors.horizontalCenter: parent.horizontalCenter
                            text: tab.pane.label
                            textFormat: Text.PlainText
                            font: AppFont.body(13, tab.isChosen ? AppFont.Body.Semibold : AppFont.Body.Medium)
                            color: tab.foreground
                            Accessible.ignored: true
                        }
                    }
                    // The choice is set heavier; no width changes by that.
                    Text {
                        id: widest
                        visible: false
                        text: tab.pane.label
                        textFormat: Text.PlainText
                        font: AppFont.body(13, AppFont.Body.Semibold)
                    }
                    HoverHandler { id: pointer }
                    TapHandler { onTapped: root.choose(tab.index) }
                    FocusRing { visible: tab.isChosen && root.looksFocused; targetRadius: parent.radius }
                }
            }
        }
    }
}
