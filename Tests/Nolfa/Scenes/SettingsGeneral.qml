import QtQuick
import Nolfa.Features.Settings

/// The first pane as it is at first.
SettingsWindow {
    settings: surroundings.settings
    visible: true
}
