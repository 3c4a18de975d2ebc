import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Layouts

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
        color: Palette.ink
        font: AppFont.display(30, AppFont.Display.Medium, -0.3)
        Layout.alignment: Qt.AlignHCenter
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        text: root.explanation
        color: Palette.slate
        font: AppFont.body(15)
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
        color: Palette.burgundy
        font: AppFont.mono(15)
        Layout.alignment: Qt.AlignHCenter
        Accessible.role: Accessible.EditableText
        Accessible.name: text
    }
}
