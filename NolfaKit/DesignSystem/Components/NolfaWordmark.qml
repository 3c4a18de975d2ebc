import NolfaKit.DesignSystem
import QtQuick

/// The mark and then the name.
Item {
    id: root

    property real markSize: 20
    readonly property real gap: 0.34 * markSize

    implicitWidth: Math.ceil(word.x + word.implicitWidth)
    implicitHeight: Math.max(markSize, word.implicitHeight)
    Accessible.role: Accessible.Graphic
    Accessible.name: word.text

    NolfaMark {
        id: mark

        size: root.markSize
        anchors.verticalCenter: parent.verticalCenter
    }

    Text {
        id: word

        /// Of the capitals, in the unit of the font's size: the family sits high in its line.
        readonly property real capitals: 0.67

        objectName: "word"
        x: mark.width + root.gap
        y: parent.height / 2 + capitals * font.pixelSize / 2 - baselineOffset
        text: "Nolfa"
        textFormat: Text.PlainText
        font: AppFont.display(0.88 * root.markSize, AppFont.Display.Semibold)
        color: Palette.ink
        Accessible.ignored: true
    }
}
