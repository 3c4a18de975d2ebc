import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A choice of one from a list that opens below its field, or above it where there is no room. The model is a list
/// of objects with `text`, `value` and, where the list has parts, the part's title as `section`.
T.ComboBox {
    id: root

    /// What the choice is about, for assistive technology.
    property string title
    property bool looksHovered: hovered
    property bool looksFocused: visualFocus
    property bool looksOpen: popup.visible

    function choose(index: int) {
        popup.close()
        currentIndex = index
        activated(index)
    }

    implicitWidth: Math.max(124, Math.ceil(label.implicitWidth) + leftPadding + rightPadding)
    implicitHeight: Math.max(32, label.implicitHeight + 8)
    leftPadding: 10
    rightPadding: 32
    hoverEnabled: true
    textRole: "text"
    valueRole: "value"
    font: AppFont.body(14, AppFont.Body.Medium)
    Accessible.role: Accessible.ComboBox
    Accessible.name: title
    Accessible.description: displayText
    Accessible.onPressAction: popup.visible ? popup.close() : popup.open()

    contentItem: Text {
        id: label
        text: root.displayText
        textFormat: Text.PlainText
        font: root.font
        color: root.enabled ? Palette.ink : Palette.tint(Palette.slate, 0.62)
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
    }

    indicator: Symbol {
        x: root.width - width - 8
        y: (root.height - height) / 2
        width: 16
        height: 16
        name: "chevron.up.chevron.down"
        color: root.enabled ? Palette.slate : Palette.tint(Palette.slate, 0.62)
    }

    background: Rectangle {
        radius: Metrics.radius.control
        color: !root.enabled ? "transparent" : root.looksOpen ? Palette.mist
            : root.looksHovered ? Qt.tint(Palette.surface, Palette.tint(Palette.mist, 0.5)) : Palette.surface
        border.width: 1
        border.color: !root.enabled ? Palette.line
            : root.looksHovered ? Palette.slate : Palette.tint(Palette.slate, 0.7)

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }

    delegate: T.ItemDelegate {
        id: entry

        required property int index
        readonly property var choice: root.model[index]
        readonly property string section: choice.section ?? ""
        readonly property bool opensSection: section !== "" && (index === 0 || root.model[index - 1].section !== section)
        readonly property bool isChosen: index === root.currentIndex
        readonly property real headHeight: opensSection ? head.implicitHeight + (index === 0 ? 6 : 10) + 4 : 0

        width: ListView.view ? ListView.view.width : 0
        implicitWidth: 44 + Math.ceil(word.implicitWidth)
        implicitHeight: headHeight + Math.max(32, word.implicitHeight + 8)
        topPadding: headHeight
        hoverEnabled: true
        highlighted: root.highlightedIndex === index
        text: choice.text
        Accessible.role: Accessible.ListItem
        Accessible.name: section === "" ? text : section + ", " + text
        Accessible.onPressAction: root.choose(index)

        contentItem: Text {
            id: word
            leftPadding: 34
            text: entry.text
            textFormat: Text.PlainText
            font: AppFont.body(14, entry.isChosen ? AppFont.Body.Semibold : AppFont.Body.Regular)
            color: entry.isChosen ? Palette.burgundy : Palette.ink
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }

        background: Item {
            Text {
                id: head
                visible: entry.opensSection
                x: 10
                y: entry.headHeight - 4 - implicitHeight
                text: entry.section
                textFormat: Text.PlainText
                font: AppFont.body(12, AppFont.Body.Semibold)
                color: Palette.slate
                Accessible.ignored: true
            }
            Rectangle {
                y: entry.headHeight
                width: parent.width
                height: parent.height - y
                radius: Metrics.radius.control
                color: entry.highlighted ? Palette.mist : "transparent"

                Symbol {
                    visible: entry.isChosen
                    x: 10
                    anchors.verticalCenter: parent.verticalCenter
                    width: 16
                    height: 16
                    name: "checkmark"
                    color: Palette.burgundy
                }
            }
        }
    }

    popup: T.Popup {
        readonly property real room: root.Window.height

        y: {
            const below = root.mapToItem(null, 0, root.height).y + 2 + implicitHeight
            return visible && below > room && root.mapToItem(null, 0, 0).y - 2 - implicitHeight >= 0
                ? -implicitHeight - 2 : root.height + 2
        }
        width: Math.max(root.width, 196)
        implicitHeight: contentItem.implicitHeight + 2 * padding
        padding: 6
        margins: 4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
        }

        background: GlassFallback { radius: Metrics.radius.card }
    }
}
