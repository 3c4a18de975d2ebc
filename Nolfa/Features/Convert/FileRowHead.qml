import NolfaKit.DesignSystem
import QtQuick

/// The name of the file, how its conversion stands, and the way out of the list.
Item {
    id: root

    required property string name
    required property string path
    required property string itemState
    /// The pointer is over the row.
    required property bool hovering
    readonly property alias remove: remove

    signal removeRequested()

    implicitHeight: 32

    Text {
        objectName: "name"
        width: (status.visible ? status.x : remove.x) - 12
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        font: AppFont.body(15, AppFont.Body.Medium)
        color: Palette.ink
        Accessible.ignored: true

        HoverHandler { id: overName }
        HoverTip {
            objectName: "pathTip"
            shown: overName.hovered
            text: root.path
        }
    }
    RowStatus {
        id: status
        objectName: "rowStatus"
        anchors.right: remove.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        itemState: root.itemState
    }
    IconButton {
        id: remove
        objectName: "remove"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "xmark"
        text: L10n.T("Remove", "Retirer")
        looksHovered: hovered || root.hovering
        background.visible: hovered || down || visualFocus
        onClicked: root.removeRequested()

        HoverTip { shown: remove.hovered; text: remove.text }
    }
}
