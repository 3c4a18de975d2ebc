import NolfaKit.DesignSystem
import QtQuick

/// A title, a line, and what stands below them.
Item {
    id: root

    property string title
    default property alias content: column.data

    width: parent ? parent.width : 0
    implicitHeight: column.y + column.implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Text {
        id: heading
        objectName: "heading"
        width: parent.width
        height: implicitHeight + 6
        text: root.title
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        font: AppFont.display(18, AppFont.Display.Semibold)
        color: Palette.ink
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Hairline { y: heading.height + 8 }
    Column {
        id: column
        y: heading.height + 8 + 1 + 12
        width: parent.width
    }
}
