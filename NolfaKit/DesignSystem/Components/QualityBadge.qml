import NolfaKit.DesignSystem
import QtQuick

/// What a conversion is worth, in a capsule.
Rectangle {
    id: root

    /// "excellent", "good" or "bestEffort".
    property string tier: "excellent"
    readonly property string label: tier === "excellent" ? L10n.T("EXCELLENT", "EXCELLENT")
        : tier === "good" ? L10n.T("GOOD", "BON") : L10n.T("BEST-EFFORT", "AU MIEUX")
    readonly property color textColor: tier === "excellent" ? Palette.success
        : tier === "good" ? Palette.slate : Palette.warning

    readonly property int padding: 9
    readonly property real tracking: 1.6

    // The space after the last letter is no part of the word.
    implicitWidth: Math.ceil(word.implicitWidth - tracking) + 2 * padding
    implicitHeight: Math.max(22, word.implicitHeight + 6)
    radius: height / 2
    color: tier === "excellent" ? Palette.tint(Palette.success, 0.12)
        : tier === "good" ? Palette.tint(Palette.gold, 0.22) : Palette.tint(Palette.warning, 0.14)
    Accessible.role: Accessible.StaticText
    Accessible.name: label

    Text {
        id: word

        objectName: "word"
        x: root.padding
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
        textFormat: Text.PlainText
        font: AppFont.mono(11, AppFont.Mono.Semibold, root.tracking)
        color: root.textColor
        Accessible.ignored: true
    }
}
