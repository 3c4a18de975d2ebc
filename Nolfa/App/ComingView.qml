import QtQuick
import QtQuick.Layouts
import Nolfa.App

/// What the window has to say as long as its tools are not there.
ColumnLayout {
    id: root

    readonly property string title: L10n.T("Documents ⇄ Markdown", "Documents ⇄ Markdown")
    readonly property string explanation: L10n.T(
        "This window doesn't convert yet. Until it does, the command line is at your service:",
        "Cette fenêtre ne convertit pas encore. En attendant, la ligne de commande est à votre service :")
    readonly property string command: "nolfa-cli convert report.docx --to markdown"

    spacing: 16

    Text {
        text: root.title
        color: "#1A1714"
        font.pixelSize: 30
        Layout.alignment: Qt.AlignHCenter
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        text: root.explanation
        color: "#5B6068"
        font.pixelSize: 15
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    TextEdit {
        text: root.command
        readOnly: true
        selectByMouse: true
        color: "#6E2433"
        font.family: "monospace"
        font.pixelSize: 15
        Layout.alignment: Qt.AlignHCenter
        Accessible.role: Accessible.EditableText
        Accessible.name: text
    }
}
