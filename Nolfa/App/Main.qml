import NolfaKit.DesignSystem
import QtQuick

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
    }
}
