import QtQuick
import Nolfa.Features.Settings

/// The first pane with a list open.
SettingsWindow {
    settings: surroundings.settings
    visible: true
    Component.onCompleted: contentItem.children[0].nextItemInFocusChain().nextItemInFocusChain().popup.open()
}
