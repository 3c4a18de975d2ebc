import NolfaKit.DesignSystem
import Nolfa.Features.Convert
import QtQuick
import QtQuick.Layouts

/// The zone of an empty list: what this is, what it can open, and a large well.
Item {
    id: root

    required property string prompt
    required property string chooseLabel
    required property bool targeted
    readonly property alias button: choose
    readonly property bool isCompact: height < 420
    readonly property real wellBottom: column.y + well.y + well.height

    signal chooseRequested()

    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        readonly property int foot: root.isCompact ? 12 : 32

        x: 40
        y: Math.max(0, Math.floor((root.height - foot - height) / 2))
        width: root.width - 80
        height: Math.min(implicitHeight, root.height - foot)
        spacing: 0

        NolfaMark {
            size: root.isCompact ? 40 : 52
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: root.isCompact ? 4 : 12
        }
        Text {
            objectName: "heading"
            text: L10n.T("Drop documents below", "Déposez vos documents ci-dessous")
            textFormat: Text.PlainText
            font: AppFont.display(root.isCompact ? 26 : 30, AppFont.Display.Medium, -0.3)
            color: Palette.ink
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            verticalAlignment: Text.AlignVCenter
            topPadding: 2 // the family sits high in its line
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        DatumRule {
            Layout.preferredWidth: 40
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: root.isCompact ? 8 : 12
            Layout.bottomMargin: root.isCompact ? 8 : 12
        }
        Repeater {
            model: ConvertTexts.masthead

            Text {
                required property string modelData

                objectName: "masthead"
                text: modelData
                textFormat: Text.PlainText
                font: AppFont.mono(11, AppFont.Mono.Medium, 1.2)
                color: Palette.slate
                verticalAlignment: Text.AlignVCenter
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Layout.minimumHeight: 18
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Item {
            id: well

            objectName: "well"
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.maximumWidth: 560
            Layout.topMargin: root.isCompact ? 16 : 24
            Layout.preferredHeight: root.isCompact ? 140 : 200
            Layout.minimumHeight: root.isCompact ? 124 : 136

            Bookplate {
                anchors.fill: parent
                targeted: root.targeted
            }
            ColumnLayout {
                anchors.centerIn: parent
                width: parent.width - 48
                spacing: root.isCompact ? 12 : 16

                Text {
                    objectName: "prompt"
                    text: root.prompt
                    textFormat: Text.PlainText
                    font: AppFont.display(20, AppFont.Display.Medium)
                    color: Palette.ink
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    topPadding: 2
                    Layout.fillWidth: true
                    Layout.minimumHeight: 28
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                NolfaButton {
                    id: choose
                    objectName: "choose"
                    text: root.chooseLabel
                    Layout.alignment: Qt.AlignHCenter
                    onClicked: root.chooseRequested()
                }
            }
        }
    }
}
