import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The menus of the main window. Every command of the application is in one of them.
NolfaMenuBar {
    id: root

    required property QtObject app
    /// No sheet is over the window.
    readonly property bool isFree: !app.showExpectations

    /// As if its word had been pressed.
    function openMenu(index) {
        for (let i = 0; i < count; ++i)
            menuAt(i).close()
        itemAt(index).triggered()
    }

    signal settingsRequested()
    signal aboutRequested()
    signal quitRequested()

    NolfaMenu {
        title: L10n.T("&File", "&Fichier")

        T.Action {
            text: L10n.T("Open…", "Ouvrir…")
            shortcut: "Ctrl+O"
            enabled: root.isFree
            onTriggered: root.app.chooseFiles()
        }
        T.Action {
            text: L10n.T("Settings", "Réglages")
            shortcut: "Ctrl+,"
            onTriggered: root.settingsRequested()
        }
        T.Action {
            text: L10n.T("Quit", "Quitter")
            shortcut: "Ctrl+Q"
            onTriggered: root.quitRequested()
        }
    }
    NolfaMenu {
        id: tools
        title: L10n.T("&Tools", "&Outils")

        Instantiator {
            model: root.app.tools
            delegate: T.Action {
                required property var modelData
                text: modelData.title
                shortcut: modelData.shortcut
                enabled: root.isFree
                onTriggered: root.app.tool = modelData.tool
            }
            onObjectAdded: (index, action) => tools.insertAction(index, action)
            onObjectRemoved: (index, action) => tools.removeAction(action)
        }
    }
    NolfaMenu {
        title: L10n.T("&Help", "&Aide")

        T.Action {
            text: L10n.T("What to expect", "À quoi s’attendre")
            onTriggered: root.app.showExpectations = true
        }
        T.Action {
            text: L10n.T("About Nolfa", "À propos de Nolfa")
            onTriggered: root.aboutRequested()
        }
    }
}
