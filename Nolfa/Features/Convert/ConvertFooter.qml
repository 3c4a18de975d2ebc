import NolfaKit.DesignSystem
import QtQuick

/// What can be done with the whole list.
Item {
    id: root

    property int count: 0
    property bool isConverting: false
    property int current: 1
    property int total: 0
    /// Nothing else is open that wants them.
    property bool keysAreOurs: true
    readonly property alias firstButton: clear

    readonly property string convertLabel: count === 1 ? L10n.T("Convert", "Convertir")
        : L10n.T("Convert " + count + " files", "Convertir " + count + " fichiers")
    readonly property string progressLabel: L10n.T("Converting " + current + " of " + total,
        "Conversion " + current + " sur " + total)

    signal clearRequested()
    signal convertRequested()

    implicitHeight: Math.max(64, convert.implicitHeight + 20)

    NolfaGlassBar {
        anchors.fill: parent
        anchors.leftMargin: -1
        anchors.rightMargin: -1
        anchors.bottomMargin: -1
    }
    NolfaButton {
        id: clear
        objectName: "clear"
        x: 37 - leftPadding
        anchors.verticalCenter: parent.verticalCenter
        kind: NolfaButtonStyle.Kind.Ghost
        text: L10n.T("Clear", "Vider la liste")
        onClicked: root.clearRequested()
    }
    Text {
        objectName: "progress"
        visible: root.isConverting
        anchors.right: convert.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: root.progressLabel
        textFormat: Text.PlainText
        font: AppFont.body(13)
        color: Palette.slate
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    NolfaButton {
        id: convert
        objectName: "convert"
        anchors.right: parent.right
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        enabled: root.count > 0 && !root.isConverting
        text: root.convertLabel
        onClicked: root.convertRequested()
    }

    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: convert.enabled && convert.visible && root.keysAreOurs
        onActivated: root.convertRequested()
    }
    Shortcut {
        sequences: ["Ctrl+Del", "Ctrl+Backspace"]
        enabled: clear.visible && root.keysAreOurs
        onActivated: root.clearRequested()
    }
}
