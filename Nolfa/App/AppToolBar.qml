import NolfaKit.DesignSystem
import QtQuick

/// The switcher of the tools, with the way to the sheet and to the settings.
Item {
    id: root

    required property QtObject app
    readonly property alias picker: picker

    signal settingsRequested()

    implicitHeight: Math.max(52, picker.implicitHeight + 16)

    NolfaWordmark {
        id: wordmark
        x: 20
        anchors.verticalCenter: parent.verticalCenter
        // Large text in a narrow window: what can be pressed goes first.
        visible: picker.x >= x + width + 16
    }
    SegmentedPicker {
        id: picker
        objectName: "tools"
        x: Math.max(12, Math.min(Math.round((root.width - width) / 2), actions.x - 16 - width))
        anchors.verticalCenter: parent.verticalCenter
        title: L10n.T("Tool", "Outil")
        labels: root.app.tools.map(tool => tool.title)
        onActivated: index => root.app.tool = root.app.tools[index].tool
        Component.onCompleted: currentIndex = root.app.tool

        Connections {
            target: root.app
            function onToolChanged() { picker.currentIndex = root.app.tool }
        }
    }
    Row {
        id: actions
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        TextButton {
            objectName: "expectations"
            text: L10n.T("What to expect", "À quoi s’attendre")
            onClicked: root.app.showExpectations = true
        }
        TextButton {
            objectName: "settings"
            text: L10n.T("Settings", "Réglages")
            onClicked: root.settingsRequested()
        }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
