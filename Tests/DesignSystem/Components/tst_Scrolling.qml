import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T
import QtTest

TestCase {
    id: test
    name: "Scrolling"
    when: windowShown
    visible: true
    width: 300
    height: 300

    Component {
        id: list
        Flickable {
            property alias bar: bar
            width: 200
            height: 100
            contentHeight: 400
            T.ScrollBar.vertical: NolfaScrollBar { id: bar }
        }
    }
    Component {
        id: pane
        ScrollingPane {
            property alias first: first
            property alias last: last
            width: 200
            height: 100
            title: "Long"
            sideMargin: 10
            topMargin: 4
            bottomMargin: 6
            spacing: 5
            NolfaButton { id: first; text: "First"; height: 50 }
            Rectangle { width: parent.width; height: 200 }
            NolfaButton { id: last; text: "Last"; height: 50 }
        }
    }

    function test_the_bar_is_there_only_while_something_is_out_of_view() {
        const view = createTemporaryObject(list, test)
        verify(view.bar.visible)
        compare(view.bar.contentItem.width, 6)
        compare(view.bar.contentItem.height, Math.round((100 - 6) / 4 * 2) / 2)
        view.contentHeight = 100
        verify(!view.bar.visible)
    }

    function test_the_bar_can_be_dragged_and_answers_the_pointer() {
        const view = createTemporaryObject(list, test)
        compare(view.bar.contentItem.color, Palette.stone)
        mouseMove(view.bar, 6, 10)
        tryCompare(view.bar.contentItem, "color", Palette.tint(Palette.slate, 0.7))
        mousePress(view.bar, 6, 10)
        mouseMove(view.bar, 6, 60)
        verify(view.contentY > 100)
        tryCompare(view.bar.contentItem, "color", Palette.slate)
        mouseRelease(view.bar, 6, 60)
        mouseMove(test, 299, 299)
        tryCompare(view.bar.contentItem, "color", Palette.stone)
    }

    function test_a_bar_never_shrinks_to_nothing() {
        const view = createTemporaryObject(list, test, { contentHeight: 1e6 })
        verify(view.bar.contentItem.height >= 12)
    }

    function test_a_pane_is_as_high_as_its_column_with_its_margins() {
        const item = createTemporaryObject(pane, test)
        compare(item.implicitHeight, 4 + 50 + 5 + 200 + 5 + 50 + 6)
        compare(item.first.mapToItem(item, 0, 0), Qt.point(10, 4))
        verify(item.overflows)
        compare(item.Accessible.name, "Long")
    }

    function test_keys_scroll_a_pane_as_far_as_there_is_something_to_see() {
        const item = createTemporaryObject(pane, test)
        const end = item.implicitHeight - item.height
        item.forceActiveFocus(Qt.TabFocusReason)
        verify(item.looksFocused)
        for (const [key, at] of [[Qt.Key_Down, 40], [Qt.Key_PageDown, 100], [Qt.Key_Up, 60], [Qt.Key_PageUp, 0],
            [Qt.Key_Up, 0], [Qt.Key_End, end], [Qt.Key_Down, end], [Qt.Key_Home, 0]]) {
            keyClick(key)
            compare(item.flickable.contentY, at)
        }
    }

    function test_a_pane_with_nothing_out_of_view_is_passed_over() {
        const item = createTemporaryObject(pane, test, { height: 320 })
        verify(!item.overflows)
        item.first.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Tab)
        verify(item.last.activeFocus)
        keyClick(Qt.Key_Tab)
        verify(item.first.activeFocus)
        keyClick(Qt.Key_Down)
        compare(item.flickable.contentY, 0)
    }

    function test_what_has_the_focus_is_kept_in_view() {
        const item = createTemporaryObject(pane, test)
        item.first.forceActiveFocus(Qt.TabFocusReason)
        compare(item.flickable.contentY, 0)
        keyClick(Qt.Key_Tab)
        verify(item.last.activeFocus)
        verify(item.last.mapToItem(item, 0, item.last.height).y <= item.height)
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
        verify(item.first.mapToItem(item, 0, 0).y >= 0)
    }

    function test_more_room_brings_the_end_back_into_view() {
        const item = createTemporaryObject(pane, test)
        item.scrollBy(1000)
        item.height = 250
        compare(item.flickable.contentY, item.implicitHeight - 250)
        item.height = 330
        compare(item.flickable.contentY, 0)
    }
}
