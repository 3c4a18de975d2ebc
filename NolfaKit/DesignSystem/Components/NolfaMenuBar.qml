import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The bar of menus at the head of the window.
T.MenuBar {
    id: root

    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(28, contentHeight)
    horizontalPadding: 8
    spacing: 0
    Accessible.role: Accessible.MenuBar

    delegate: T.MenuBarItem {
        id: entry

        implicitWidth: Math.ceil(word.implicitWidth) + 20
        implicitHeight: Math.max(28, word.implicitHeight + 6)
        font: AppFont.body(13)
        Accessible.role: Accessible.MenuItem
        Accessible.name: word.text
        Accessible.onPressAction: triggered()

        contentItem: Text {
            id: word
            text: entry.text.replace("&", "")
            textFormat: Text.PlainText
            font: entry.font
            color: Palette.ink
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Item {
            Rectangle {
                anchors.fill: parent
                anchors.topMargin: 1
                anchors.bottomMargin: 1
                radius: Metrics.radius.chip
                color: Palette.tint(Palette.mist, entry.highlighted || entry.hovered || entry.down ? 1 : 0)

                FocusRing { visible: entry.visualFocus; offset: -2; targetRadius: parent.radius }
            }
        }
    }

    contentItem: Row {
        spacing: root.spacing
        Repeater { model: root.contentModel }
    }
}
