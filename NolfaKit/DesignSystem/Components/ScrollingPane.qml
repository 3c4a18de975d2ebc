import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A column that scrolls once it is higher than its place: by wheel, by bar and by keyboard. What has the focus is
/// kept in view.
T.Control {
    id: root

    default property alias content: column.data
    readonly property alias flickable: view
    readonly property bool overflows: view.contentHeight > view.height
    /// What the pane is called, for assistive technology.
    property string title
    property bool looksFocused: visualFocus
    property color ground: Palette.paper

    // The room around the column; it scrolls with it.
    property real sideMargin: 0
    property real topMargin: 0
    property real bottomMargin: 0

    readonly property Item focused: Window.activeFocusItem

    /// Scrolls by so many points, as far as there is something to see.
    function scrollBy(distance: real) {
        view.contentY = Math.max(0, Math.min(view.contentHeight - view.height, view.contentY + distance))
    }

    function reveal(item: Item) {
        for (let above = item; above !== column; above = above.parent) {
            if (!above)
                return
        }
        const room = 12
        const top = item.mapToItem(view.contentItem, 0, 0).y
        if (top - room < view.contentY)
            scrollBy(top - room - view.contentY)
        else if (top + item.height + room > view.contentY + view.height)
            scrollBy(top + item.height + room - view.contentY - view.height)
    }

    onFocusedChanged: reveal(focused)

    implicitHeight: view.contentHeight
    focusPolicy: overflows ? Qt.TabFocus : Qt.NoFocus
    Accessible.role: Accessible.Pane
    Accessible.name: title

    Keys.onPressed: event => {
        const page = view.height - 40
        const steps = { [Qt.Key_Up]: -40, [Qt.Key_Down]: 40, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -view.contentHeight, [Qt.Key_End]: view.contentHeight }
        event.accepted = overflows && event.key in steps
        if (event.accepted)
            scrollBy(steps[event.key])
    }

    contentItem: Item {
        Flickable {
            id: view

            anchors.fill: parent
            clip: true
            contentWidth: width
            contentHeight: column.implicitHeight + root.topMargin + root.bottomMargin
            boundsBehavior: Flickable.StopAtBounds
            // The room can grow or the text shrink under a scrolled view.
            onHeightChanged: root.scrollBy(0)
            onContentHeightChanged: root.scrollBy(0)

            T.ScrollBar.vertical: NolfaScrollBar {
                leftPadding: 4
                // Beside the ring, when that shows.
                rightPadding: root.looksFocused ? 8 : 4
                topPadding: 6
                bottomPadding: 6
            }

            Column {
                id: column

                x: root.sideMargin
                y: root.topMargin
                width: view.width - 2 * root.sideMargin
                spacing: root.spacing
            }
        }
        NolfaSoftScrollEdge { flickable: view; ground: root.ground }
        FocusRing { visible: root.looksFocused; offset: -4 }
    }
}
