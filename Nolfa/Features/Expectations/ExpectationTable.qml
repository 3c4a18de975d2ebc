import NolfaKit.DesignSystem
import QtQuick

/// What each format is worth on its way to Markdown and back.
Item {
    id: root

    /// As `ExpectationsModel.rows` has them.
    required property var rows
    /// Room for the widest badge, but never so much that the names have none.
    readonly property real tierWidth: Math.round(Math.min(132 * AppFont.textScale, width / 3))

    component Head: Text {
        y: (headers.height - height) / 2
        textFormat: Text.PlainText
        font: AppFont.mono(11, AppFont.Mono.Medium, 1.6)
        color: Palette.slate
        fontSizeMode: Text.HorizontalFit
        Accessible.role: Accessible.ColumnHeader
        Accessible.name: text
    }

    implicitHeight: lines.y + lines.implicitHeight
    Accessible.role: Accessible.List
    Accessible.name: L10n.T("What to expect", "À quoi s’attendre")

    Rectangle {
        anchors.fill: parent
        radius: Metrics.radius.card
        color: Palette.surface
    }
    Item {
        id: headers

        readonly property int sideMargin: 17
        readonly property int badgePadding: 9

        width: parent.width
        height: Math.max(33, first.implicitHeight + 16)
        // The fill has the table's corners above and none below.
        clip: true

        Rectangle {
            width: parent.width
            height: parent.height + radius
            radius: Metrics.radius.card
            color: Palette.mist
        }
        Head { id: first; objectName: "header"; x: headers.sideMargin; text: "FORMAT" }
        Head {
            objectName: "header"
            x: root.width - headers.sideMargin - 2 * root.tierWidth + headers.badgePadding
            width: root.tierWidth - headers.badgePadding
            text: "→ MARKDOWN"
        }
        Head {
            objectName: "header"
            x: root.width - headers.sideMargin - root.tierWidth + headers.badgePadding
            width: root.tierWidth - headers.badgePadding
            text: "MARKDOWN →"
        }
    }
    Column {
        id: lines

        y: headers.height
        width: parent.width

        Repeater {
            model: root.rows

            ExpectationRow {
                id: line

                required property var modelData

                objectName: "row"
                width: lines.width
                row: modelData
                tierWidth: root.tierWidth

                Hairline {}
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: Metrics.radius.card
        color: "transparent"
        border.width: 1
        border.color: Palette.line
    }
}
