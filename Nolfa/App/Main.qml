import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Settings

/// The main window.
Window {
    id: root

    /// The `AppModel`.
    required property QtObject app

    width: 820
    height: 560
    minimumWidth: 720
    minimumHeight: 420
    visible: true
    title: "Nolfa"
    color: Palette.paper

    RootView {
        anchors.fill: parent
        app: root.app
        onSettingsRequested: settings.show(0)
        onAboutRequested: settings.show(1)
    }

    Loader {
        id: settings
        active: false
        sourceComponent: SettingsWindow { settings: root.app.settings }

        function show(pane: int) {
            active = true
            item.currentIndex = pane
            item.present()
        }
    }
}
