import NolfaKit.DesignSystem
import QtQuick

/// The title of a group, and a line to the right edge.
Item {
    id: root

    property string text

    width: parent.width
    implicitHeight: 50

    Text {
        id: title
        y: 26
        text: root.text
        font: AppFont.display(17, AppFont.Display.Semibold)
        color: Palette.ink
    }
    Hairline {
        anchors.left: title.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.verticalCenter: title.verticalCenter
    }
}
