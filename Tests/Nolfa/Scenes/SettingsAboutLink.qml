import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Settings

/// The last pane with its button, and the keyboard on it.
Window {
    width: 600
    height: 484
    visible: true
    color: Palette.paper

    AboutTab {
        id: pane
        anchors.fill: parent
        info: surroundings.about({ CFBundleShortVersionString: "1.0", NolfaDonationURL: "https://example.org/tip" })
        Component.onCompleted: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
    }
}
