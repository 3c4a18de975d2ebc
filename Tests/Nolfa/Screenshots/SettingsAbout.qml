import QtQuick
import Nolfa.Features.Settings

/// The last pane.
SettingsWindow {
    settings: surroundings.settings
    visible: true
    currentIndex: 1
}
