import QtQuick
import QtQuick.Dialogs

/// Asks for the files to convert. Made when it is first wanted: it brings in much that the start can do without.
FileDialog {
    required property QtObject app

    fileMode: FileDialog.OpenFiles
    title: app.openPanelMessage
    acceptLabel: app.openPanelPrompt
    nameFilters: app.openPanelNameFilters
    onAccepted: app.filesChosen(selectedFiles)
}
