import NolfaKit.DesignSystem
import QtQuick

/// A short word in capitals, on a soft fill, or in a quiet border when it asks something of the user.
Rectangle {
    id: root

    property string text
    property bool isRequirement: false
    /// What the word means; shown while the pointer rests on it.
    property string toolTip

    implicitWidth: Math.ceil(word.implicitWidth) + 14
    implicitHeight: Math.max(22, word.implicitHeight + 6)
    radius: Metrics.radius.chip
    color: isRequirement ? Palette.tint(Palette.mist, 0) : Palette.mist
    border.width: isRequirement ? 1 : 0
    border.color: Palette.stone
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: toolTip

    HoverHandler { id: pointer; enabled: root.toolTip !== "" }
    // Only few chips are ever pointed at.
    Loader {
        objectName: "toolTipLoader"
        anchors.fill: parent
        active: pointer.hovered
        sourceComponent: NolfaToolTip { visible: true; text: root.toolTip }
    }

    Text {
        id: word

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 8)
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: AppFont.mono(11, AppFont.Mono.Medium, root.isRequirement ? 0.8 : 0.4)
        color: Palette.slate
        Accessible.ignored: true
    }
}
