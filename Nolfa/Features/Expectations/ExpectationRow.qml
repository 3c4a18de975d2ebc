import NolfaKit.DesignSystem
import QtQuick

/// One format of the table, and what each of its ways is worth. One element for assistive technology.
Item {
    id: root

    /// As `ExpectationsModel.rows` has it.
    required property var row
    property real tierWidth: 132
    /// With the table's border.
    readonly property int sideMargin: 17

    implicitHeight: Math.max(36, Math.ceil(names.implicitHeight) + 12)
    Accessible.role: Accessible.ListItem
    Accessible.name: row.summary

    Flow {
        id: names

        x: root.sideMargin
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - 2 * root.sideMargin - 2 * root.tierWidth - spacing
        spacing: 8

        Text {
            objectName: "name"
            height: Math.max(implicitHeight, macChip.implicitHeight)
            width: Math.min(implicitWidth, names.width)
            text: root.row.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            font: AppFont.body(14, AppFont.Body.Medium)
            color: Palette.ink
            Accessible.ignored: true
        }
        Chip {
            id: macChip
            objectName: "mac"
            visible: root.row.isMacOnly
            text: "MAC"
            isRequirement: true
            toolTip: L10n.T("Needs a Mac app", "Nécessite une application Mac")
            Accessible.ignored: true
        }
        Chip {
            objectName: "internet"
            visible: root.row.requiresNetwork
            text: "INTERNET"
            isRequirement: true
            toolTip: L10n.T("Needs the internet", "Nécessite une connexion")
            Accessible.ignored: true
        }
    }
    TierCell {
        objectName: "toMarkdown"
        x: root.width - root.sideMargin - 2 * root.tierWidth
        width: root.tierWidth
        height: root.height
        tier: root.row.toMarkdown
    }
    TierCell {
        objectName: "fromMarkdown"
        x: root.width - root.sideMargin - root.tierWidth
        width: root.tierWidth
        height: root.height
        tier: root.row.fromMarkdown
    }
}
