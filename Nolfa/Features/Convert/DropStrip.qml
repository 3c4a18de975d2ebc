import NolfaKit.DesignSystem
import QtQuick

/// The zone above a list.
Rectangle {
    id: root

    required property string prompt
    required property string chooseLabel
    required property bool targeted
    readonly property alias button: choose

    signal chooseRequested()

    implicitHeight: Math.max(56, choose.implicitHeight + 20)
    radius: Metrics.radius.panel
    color: Palette.surface
    border.width: targeted ? 2 : 1
    border.color: targeted ? Palette.burgundy : Palette.stone

    Behavior on border.color { ColorAnimation { duration: Metrics.animDuration } }

    Text {
        objectName: "prompt"
        x: 17
        width: choose.x - 16 - x
        anchors.verticalCenter: parent.verticalCenter
        // The family sits high in its line.
        anchors.verticalCenterOffset: 1
        text: root.prompt
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: AppFont.display(17, AppFont.Display.Medium)
        color: Palette.ink
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    NolfaButton {
        id: choose

        objectName: "choose"
        anchors.right: parent.right
        anchors.rightMargin: 11
        anchors.verticalCenter: parent.verticalCenter
        kind: NolfaButtonStyle.Kind.Secondary
        buttonHeight: Metrics.buttonHeight.sm
        text: root.chooseLabel
        onClicked: root.chooseRequested()
    }
}
