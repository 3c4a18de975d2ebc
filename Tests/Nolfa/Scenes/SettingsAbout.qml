import QtQuick
import Nolfa.Features.Settings

/// The last pane, while there is no payment page.
SettingsWindow {
    settings: surroundings.settings
    visible: true
    currentIndex: 1
}
