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
    // The settings alone keep nothing running.
    onClosing: Qt.quit()

    RootView {
        anchors.fill: parent
        app: root.app
        onSettingsRequested: settings.show(false)
        onAboutRequested: settings.show(true)
    }

    Loader {
        id: settings
        active: false
        sourceComponent: SettingsWindow { settings: root.app.settings }

        function show(about: bool) {
            active = true
            item.currentIndex = about ? item.aboutIndex : 0
            item.present()
        }
    }
}
