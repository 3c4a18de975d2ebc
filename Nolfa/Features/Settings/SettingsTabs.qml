import NolfaKit.DesignSystem
import QtQuick

/// The tabs above the panes. Arrow keys move the choice.
FocusScope {
    id: root

    /// Each a `SettingsPane`.
    required property var panes
    property int currentIndex: 0

    /// By keyboard: the focus goes along.
    function choose(index: int) {
        const goal = Math.max(0, Math.min(panes.length - 1, index))
        // First, since a choice takes the focus by itself, but doesn't show it.
        tabs.itemAt(goal).forceActiveFocus(Qt.TabFocusReason)
        currentIndex = goal
    }

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight + 16
    Accessible.role: Accessible.PageTabList
    Accessible.name: L10n.T("Settings", "Réglages")

    Keys.onPressed: event => {
        const goals = { [Qt.Key_Left]: currentIndex - 1, [Qt.Key_Right]: currentIndex + 1, [Qt.Key_Home]: 0,
            [Qt.Key_End]: panes.length - 1 }
        event.accepted = event.key in goals
        if (event.accepted)
            choose(goals[event.key])
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 4

        Repeater {
            id: tabs

            model: root.panes.length

            SettingsTab {
                required property int index

                objectName: "tab"
                pane: root.panes[index]
                checked: index === root.currentIndex
                focus: checked
                onClicked: root.currentIndex = index
            }
        }
    }
}
