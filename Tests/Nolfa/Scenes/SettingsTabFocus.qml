import QtQuick
import Nolfa.Features.Settings

/// The window with the keyboard on its tabs.
SettingsWindow {
    settings: surroundings.settings
    visible: true
    onActiveChanged: {
        const tab = contentItem.nextItemInFocusChain()
        tab.nextItemInFocusChain().forceActiveFocus()
        tab.forceActiveFocus(Qt.TabFocusReason)
    }
}
