import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A command, with its keys at the right.
T.MenuItem {
    id: root

    /// What the keys are called, if there are any.
    property string keys: action ? String(action.shortcut ?? "") : ""

    implicitWidth: Math.ceil(word.implicitWidth) + (keys === "" ? 0 : Math.ceil(shortcut.implicitWidth) + 32) + leftPadding + rightPadding
    implicitHeight: Math.max(32, word.implicitHeight + 8)
    width: ListView.view ? ListView.view.width : implicitWidth
    horizontalPadding: 12
    font: AppFont.body(14)
    Accessible.role: Accessible.MenuItem
    Accessible.name: word.text
    Accessible.onPressAction: {
        menu.dismiss()
        if (action)
            action.trigger()
        else
            triggered()
    }

    contentItem: Item {
        Text {
            id: word
            anchors.verticalCenter: parent.verticalCenter
            text: root.text.replace("&", "")
            textFormat: Text.PlainText
            font: root.font
            color: root.enabled ? Palette.ink : Palette.tint(Palette.slate, 0.62)
            Accessible.ignored: true
        }
        Text {
            id: shortcut
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.keys
            textFormat: Text.PlainText
            font: AppFont.body(13)
            color: Palette.slate
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Metrics.radius.chip
        color: Palette.tint(Palette.mist, root.highlighted && root.enabled ? 1 : 0)
    }
}
