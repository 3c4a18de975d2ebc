import NolfaKit.DesignSystem
import QtQuick

/// How a file's conversion stands; nothing before it began.
Item {
    id: root

    property string itemState: "idle"
    readonly property bool isSettled: itemState === "done" || itemState === "failed"
    readonly property string words: itemState === "done" ? L10n.T("Converted", "Converti")
        : itemState === "failed" ? L10n.T("Failed", "Échec") : ""
    readonly property color color: itemState === "failed" ? Palette.error : Palette.success

    visible: itemState !== "idle"
    implicitWidth: !visible ? 0 : isSettled ? word.x + Math.ceil(word.implicitWidth) : spinner.implicitWidth
    implicitHeight: 20

    Spinner {
        id: spinner
        objectName: "spinner"
        visible: root.itemState === "running"
        anchors.verticalCenter: parent.verticalCenter
        size: 16
        lineWidth: 2.5
    }
    Symbol {
        objectName: "icon"
        visible: root.isSettled
        width: 16
        height: 16
        anchors.verticalCenter: parent.verticalCenter
        name: root.itemState === "failed" ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        color: root.color
    }
    Text {
        id: word
        objectName: "status"
        visible: root.isSettled
        x: 22
        anchors.verticalCenter: parent.verticalCenter
        text: root.words
        textFormat: Text.PlainText
        font: AppFont.body(13, AppFont.Body.Medium)
        color: root.color
        Accessible.ignored: true
    }
}
