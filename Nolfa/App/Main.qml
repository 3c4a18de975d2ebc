import NolfaKit.DesignSystem
import QtQuick
import Nolfa.App

/// The main window.
Window {
    id: root

    width: 820
    height: 560
    minimumWidth: 480
    minimumHeight: 320
    visible: true
    title: "Nolfa"
    color: Palette.paper

    ComingView {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 560)
    }
}
