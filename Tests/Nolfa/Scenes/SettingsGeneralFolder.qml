import QtQuick
import Nolfa.Features.Settings

/// The first pane with everything chosen.
SettingsWindow {
    settings: surroundings.settings
    visible: true
    Component.onCompleted: {
        settings.outputMode = "custom"
        settings.customOutputDirectoryPath = "/srv/shared/Documents/Converted"
        settings.revealAfterConvert = true
    }
}
