import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A list of commands that opens at a word of the menu bar, or where the pointer is.
T.Menu {
    id: root

    readonly property real widest: {
        let width = 160
        for (let i = 0; i < count; ++i)
            width = Math.max(width, itemAt(i).implicitWidth)
        return width
    }

    /// @param at  in the coordinates of @p item
    function openAt(item: Item, at: point) { popup(item, at) }

    implicitWidth: widest + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 6
    margins: 4
    overlap: 0
    delegate: NolfaMenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
        clip: true
    }
    background: GlassFallback { radius: Metrics.radius.card }
}
