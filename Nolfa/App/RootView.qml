import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Convert
import Nolfa.Features.Expectations

/// All that is in the main window: menus, switcher, and the screen of the tool on show.
FocusScope {
    id: root

    /// The `AppModel`.
    required property QtObject app
    /// Whether a wish for the open panel is answered here.
    property bool opensPanel: true

    signal settingsRequested()
    signal aboutRequested()

    focus: true

    Rectangle {
        anchors.fill: parent
        color: Palette.paper
    }

    AppMenuBar {
        id: menus
        objectName: "menus"
        width: parent.width
        app: root.app
        onSettingsRequested: root.settingsRequested()
        onAboutRequested: root.aboutRequested()
        onQuitRequested: Qt.quit()
    }
    Shortcut {
        sequence: "F10"
        onActivated: menus.openMenu(0)
    }

    AppToolBar {
        id: tools
        objectName: "toolBar"
        y: menus.height
        width: parent.width
        app: root.app
        onSettingsRequested: root.settingsRequested()
    }

    Item {
        id: content
        y: tools.y + tools.height
        width: parent.width
        height: parent.height - y

        ConvertView {
            objectName: "convertView"
            anchors.fill: parent
            visible: root.app.tool === 0
            focus: visible
            convert: root.app.convert
            onChooseRequested: root.app.chooseFiles()
        }
        Loader {
            objectName: "comingView"
            anchors.fill: parent
            active: root.app.tool !== 0
            sourceComponent: ComingView { title: root.app.tools[root.app.tool].title }
        }
    }

    // Both are made when they are first wanted.
    Loader {
        id: sheet
        objectName: "sheet"
        active: false
        sourceComponent: ExpectSheet { onClosed: root.app.showExpectations = false }
        readonly property bool wanted: root.app.showExpectations
        onWantedChanged: {
            active = active || wanted
            if (wanted)
                item.open()
            else if (item)
                item.close()
        }
    }
    Loader {
        id: panel
    }
    Connections {
        target: root.app
        enabled: root.opensPanel
        function onOpenPanelRequested() {
            if (!panel.item)
                panel.setSource("OpenPanel.qml", { app: root.app })
            panel.item.open()
        }
    }
}
