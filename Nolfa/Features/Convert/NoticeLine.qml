import NolfaKit.DesignSystem
import QtQuick

/// What a drop brought besides rows; fades in and out.
Item {
    id: root

    property bool shown: false
    property int skipped: 0
    property int duplicates: 0
    property bool isCentred: false

    readonly property string skippedText: skipped === 0 ? ""
        : skipped === 1 ? L10n.T("One file was skipped. Nolfa cannot open that format.",
                                 "Un fichier a été ignoré. Nolfa ne sait pas ouvrir ce format.")
        : skipped + L10n.T(" files were skipped. Nolfa cannot open those formats.",
                           " fichiers ont été ignorés. Nolfa ne sait pas ouvrir ces formats.")
    readonly property string duplicatesText: duplicates === 0 ? "" : L10n.T("Already in the list.", "Déjà dans la liste.")
    readonly property string noticeText: [skippedText, duplicatesText].filter(text => text !== "").join(" ")

    /// The words stay while they fade out.
    property string lastText
    onNoticeTextChanged: if (noticeText !== "") lastText = noticeText

    visible: opacity > 0
    opacity: shown ? 1 : 0
    implicitHeight: Math.max(20, word.implicitHeight)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: lastText
    Accessible.ignored: !shown

    Behavior on opacity { NumberAnimation { duration: Metrics.animDuration } }

    Symbol {
        id: icon
        x: root.isCentred ? Math.max(0, Math.round((root.width - 24 - word.implicitWidth) / 2)) : 0
        y: 2
        width: 16
        height: 16
        name: "info.circle"
        color: Palette.slate
    }
    Text {
        id: word
        objectName: "notice"
        x: icon.x + 24
        width: root.width - x
        y: Math.round((root.height - implicitHeight) / 2)
        text: root.lastText
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: AppFont.body(13)
        color: Palette.slate
        Accessible.ignored: true
    }
}
