import NolfaKit.DesignSystem
import QtQuick

/// The folder that was chosen, and the way to another.
Item {
    id: root

    /// As people read it; empty for none.
    property string shortPath
    property string path

    signal chooseRequested()

    width: parent ? parent.width : 0
    implicitHeight: choose.implicitHeight

    Rectangle {
        objectName: "folder"
        width: root.width - choose.width - 12
        height: root.height
        visible: root.path !== ""
        radius: Metrics.radius.control
        color: Palette.mist
        Accessible.role: Accessible.StaticText
        Accessible.name: root.path

        Text {
            objectName: "path"
            anchors.fill: parent
            leftPadding: 12
            rightPadding: 12
            text: root.shortPath
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            verticalAlignment: Text.AlignVCenter
            font: AppFont.mono(13)
            color: Palette.ink
            Accessible.ignored: true
        }
        HoverHandler { id: pointer }
        NolfaToolTip {
            visible: pointer.hovered
            text: root.path
        }
    }
    NolfaButton {
        id: choose
        objectName: "chooseFolder"
        x: root.width - width
        kind: NolfaButtonStyle.Kind.Secondary
        buttonHeight: Metrics.buttonHeight.sm
        text: L10n.T("Choose folder…", "Choisir un dossier…")
        onClicked: root.chooseRequested()
    }
}
