import NolfaKit.DesignSystem
import QtQuick

/// One file of the list: what it is, what becomes of it, and how that stands. No `Card` itself, since controls keep
/// their own role among what assistive technology sees.
Item {
    id: root

    // The item.
    required property string name
    required property string path
    required property string sourceName
    required property string target
    required property string targetName
    required property string itemState ///< "idle", "running", "done" or "failed"
    required property string message

    /// Raw values of what the source can become, in order.
    property var targets: []

    // The capability; no tier where there is none.
    required property string tier
    required property string tierLabel
    required property string note
    required property bool isMacOnly
    required property bool requiresNetwork

    readonly property bool hovering: pointer.hovered
    readonly property bool isDone: itemState === "done"
    readonly property bool isFailed: itemState === "failed"
    readonly property string secondLine: isFailed ? message : isDone || itemState === "idle" ? note : ""

    readonly property string macSentence: L10n.T("Needs a Mac app", "Nécessite une application Mac")
    readonly property string networkSentence: L10n.T("Needs the internet", "Nécessite une connexion")
    readonly property string stateDescription: itemState === "running" ? L10n.T("Converting", "Conversion en cours")
        : isDone ? L10n.T("Converted", "Converti") : isFailed ? L10n.T("Failed", "Échec") : ""
    readonly property string accessibilitySummary: [name, sourceName + " → " + targetName, tierLabel,
        isMacOnly ? macSentence : "", requiresNetwork ? networkSentence : "", stateDescription]
        .filter(part => part !== "").join(", ")

    signal targetChosen(string target)
    signal removeRequested()
    signal revealRequested()
    signal openRequested()

    /// Takes the keyboard at its first control, or at its last.
    function enter(forward: bool) {
        const stops = focusStops()
        stops[forward ? 0 : stops.length - 1].forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }
    /// Moves the keyboard within the row. @return false at the row's end
    function step(forward: bool): bool {
        const stops = focusStops()
        const next = stops.findIndex(stop => stop.activeFocus) + (forward ? 1 : -1)
        if (next < 0 || next >= stops.length)
            return false
        stops[next].forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        return true
    }
    function focusStops(): var {
        return [line.picker, reveal, open, head.remove].filter(stop => stop.visible)
    }

    readonly property alias body: body

    implicitHeight: card.implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: accessibilitySummary
    Accessible.description: secondLine

    Card {
        id: card
        anchors.fill: parent
        // The border of one point and what lies within it.
        leftPadding: 17
        rightPadding: 13
        topPadding: 9
        bottomPadding: 13
        contentHeight: body.implicitHeight
        Accessible.ignored: true

        contentItem: Item {
            id: body

            readonly property real textLeft: chip.width + 16
            readonly property real room: width - textLeft
            // The buttons stand beside the conversion if nothing else is said and they have room there.
            readonly property bool linksInline: root.secondLine === ""
                && textLeft + line.width + 12 + links.width <= width
            readonly property real thirdTop: line.y + line.height + 6

            implicitHeight: root.secondLine !== "" ? thirdTop + Math.max(words.implicitHeight, root.isDone ? 18 : 0)
                : root.isDone && !linksInline ? thirdTop + 25 : line.y + line.height

            HoverHandler { id: pointer }
            TapHandler {
                acceptedButtons: Qt.RightButton
                onTapped: point => rowMenu.openAt(body, point.position)
            }

            Chip {
                id: chip
                objectName: "sourceChip"
                y: 4
                width: 104 * Math.max(1, AppFont.textScale)
                height: Math.max(24, implicitHeight)
                text: root.sourceName.toUpperCase()
                Accessible.ignored: true
            }

            FileRowHead {
                id: head
                x: body.textLeft
                width: body.room
                name: root.name
                path: root.path
                itemState: root.itemState
                hovering: root.hovering
                onRemoveRequested: root.removeRequested()
            }

            ConversionLine {
                id: line
                x: body.textLeft
                y: head.height
                sourceName: root.sourceName
                targets: root.targets
                target: root.target
                targetName: root.targetName
                tier: root.tier
                macSentence: root.isMacOnly ? root.macSentence : ""
                networkSentence: root.requiresNetwork ? root.networkSentence : ""
                onChosen: target => root.targetChosen(target)
            }

            Text {
                id: words
                objectName: "secondLine"
                visible: text !== ""
                x: body.textLeft
                y: body.thirdTop
                width: Math.min(640, links.visible ? links.x - x - 16 : body.room)
                text: root.secondLine
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                font: AppFont.body(13)
                lineHeight: Math.round(18 * AppFont.textScale)
                lineHeightMode: Text.FixedHeight
                color: root.isFailed ? Palette.error : Palette.slate
                Accessible.ignored: true
            }

            Row {
                id: links
                objectName: "links"
                visible: root.isDone
                anchors.right: parent.right
                y: body.linksInline ? line.y + Math.round((line.height - height) / 2) : body.thirdTop - 7

                TextButton {
                    id: reveal
                    objectName: "reveal"
                    text: L10n.T("Reveal in Finder", "Afficher dans le Finder")
                    onClicked: root.revealRequested()
                    HoverTip { shown: reveal.hovered; text: reveal.text }
                }
                TextButton {
                    id: open
                    objectName: "open"
                    text: L10n.T("Open", "Ouvrir")
                    onClicked: root.openRequested()
                    HoverTip { shown: open.hovered; text: open.text }
                }
            }

            NolfaMenu {
                id: rowMenu
                objectName: "rowMenu"

                NolfaMenuItem {
                    text: L10n.T("Remove", "Retirer")
                    onTriggered: root.removeRequested()
                }
            }
        }
    }
}
