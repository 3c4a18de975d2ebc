import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Layouts

/// What stands for a tool that isn't there yet.
Item {
    id: root

    /// The tool's name.
    required property string title
    readonly property string explanation: L10n.T(
        "This tool isn’t here yet. It comes with a later version of Nolfa.",
        "Cet outil n’est pas encore là. Il arrive avec une prochaine version de Nolfa.")

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 560)
        spacing: 0

        NolfaMark {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 12
            opacity: 0.4
        }
        Text {
            text: root.title
            textFormat: Text.PlainText
            color: Palette.ink
            font: AppFont.display(28, AppFont.Display.Medium, -0.2)
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        DatumRule {
            Layout.preferredWidth: 40
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 12
            Layout.bottomMargin: 12
        }
        Text {
            text: root.explanation
            textFormat: Text.PlainText
            color: Palette.slate
            font: AppFont.body(15)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
