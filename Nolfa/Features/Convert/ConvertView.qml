import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The screen of the convert tool. Shows a `ConvertViewModel`, and decides nothing but what is seen.
FocusScope {
    id: root

    /// The `ConvertViewModel`.
    required property QtObject convert
    readonly property var items: convert.items
    readonly property bool isEmpty: items.count === 0
    readonly property alias list: list

    /// No list, menu or sheet is open: there, the keys are its own. A tool tip takes no keys.
    readonly property bool keysAreOurs: {
        for (let item = Window.activeFocusItem; item; item = item.parent) {
            if (item === T.Overlay.overlay || (item.popup && item.popup.visible))
                return false
        }
        return true
    }

    /// The user wants the open panel.
    signal chooseRequested()

    function goToRow(row: int, forward: bool) {
        list.positionViewAtIndex(row, ListView.Contain)
        const item = list.itemAtIndex(row)
        if (item)
            item.enter(forward)
    }

    /// The keyboard stays where it was in the list.
    function removeRow(row: int, id: var) {
        const hadFocus = focusedRow === row
        convert.remove(id)
        if (hadFocus && isEmpty)
            zone.button.forceActiveFocus(Qt.TabFocusReason)
        else if (hadFocus)
            goToRow(Math.min(row, items.count - 1), false)
    }

    /// The row that holds the keyboard, or -1.
    readonly property int focusedRow: rowOf(Window.activeFocusItem)

    function rowOf(item: Item): int {
        for (; item; item = item.parent) {
            if (item instanceof FileRow)
                return item.row
        }
        return -1
    }

    // Rows come and go as the list is scrolled: their order among the focus stops is the list's, not theirs of birth.
    Shortcut {
        sequence: "Tab"
        enabled: list.visible && keysAreOurs && (root.focusedRow >= 0 || zone.button.activeFocus)
        onActivated: root.focusedRow < 0 ? root.goToRow(0, true) : root.stepFrom(root.focusedRow, true)
    }
    Shortcut {
        sequences: ["Shift+Tab", "Backtab", "Shift+Backtab"]
        enabled: list.visible && keysAreOurs && (root.focusedRow >= 0 || footer.firstButton.activeFocus)
        onActivated: root.focusedRow < 0 ? root.goToRow(root.items.count - 1, false) : root.stepFrom(root.focusedRow, false)
    }

    function stepFrom(row: int, forward: bool) {
        const item = list.itemAtIndex(row)
        const next = row + (forward ? 1 : -1)
        if (item.step(forward))
            return
        if (next < 0)
            zone.button.forceActiveFocus(Qt.BacktabFocusReason)
        else if (next >= items.count)
            footer.firstButton.forceActiveFocus(Qt.TabFocusReason)
        else
            goToRow(next, forward)
    }

    DropZone {
        id: zone

        objectName: "zone"
        mode: root.isEmpty ? DropZone.Mode.Hero : DropZone.Mode.Strip
        dropTarget: root
        x: root.isEmpty ? 0 : 20
        y: root.isEmpty ? 0 : 12
        width: root.width - 2 * x
        height: root.isEmpty ? root.height : implicitHeight
        onUrls: list => root.convert.add(list)
        onChooseRequested: root.chooseRequested()
    }

    NoticeLine {
        id: notice

        objectName: "noticeLine"
        shown: root.convert.hasNotice
        skipped: root.convert.skipped
        duplicates: root.convert.duplicates
        isCentred: root.isEmpty
        x: 36
        y: zone.y + zone.wellBottom + 10
        width: root.width - 72
    }

    ListView {
        id: list

        objectName: "list"
        visible: !root.isEmpty
        anchors.left: parent.left
        anchors.right: parent.right
        y: zone.y + zone.height + 10 + noticeRoom
        height: footer.y - y
        topMargin: 2
        bottomMargin: 20
        leftMargin: 20
        rightMargin: 20
        spacing: 10
        clip: true
        cacheBuffer: 400
        boundsBehavior: Flickable.StopAtBounds
        model: root.items
        T.ScrollBar.vertical: NolfaScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: L10n.T("Documents", "Documents")

        delegate: FileRow {
            required property int index
            required property var itemId
            required property string source
            readonly property int row: index

            objectName: "row" + index
            width: ListView.view.width - 40
            targets: root.items.targets(source)
            onTargetChosen: target => root.convert.setTarget(target, itemId)
            onRemoveRequested: root.removeRow(row, itemId)
            onRevealRequested: root.convert.reveal(itemId)
            onOpenRequested: root.convert.open(itemId)
        }

        property real noticeRoom: notice.shown ? notice.height + 10 : 0
        Behavior on noticeRoom {
            enabled: !Motion.reduced
            NumberAnimation { duration: Metrics.animDuration; easing.type: Easing.OutQuad }
        }
    }
    NolfaSoftScrollEdge {
        objectName: "edge"
        visible: list.visible
        flickable: list
    }

    ConvertFooter {
        id: footer

        objectName: "footer"
        visible: !root.isEmpty
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        count: root.items.count
        isConverting: root.convert.isConverting
        current: root.convert.current
        total: root.convert.total
        keysAreOurs: root.keysAreOurs
        onClearRequested: root.convert.clear()
        onConvertRequested: root.convert.convertAll()
    }
}
