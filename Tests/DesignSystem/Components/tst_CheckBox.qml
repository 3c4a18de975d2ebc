import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "CheckBox"
    when: windowShown
    visible: true
    width: 400
    height: 200

    property real usual: 0

    Component { id: box; NolfaCheckBox { text: "Auto" } }
    SignalSpy { id: toggled; signalName: "toggled" }

    function initTestCase() { usual = AppFont.systemSize }
    function cleanup() { surroundings.setTextSize(usual); mouseMove(test, 399, 199) }
    function make(properties) {
        const item = createTemporaryObject(box, test, properties)
        toggled.target = item
        toggled.clear()
        return item
    }
    function square(item) { return findChild(item, "box") }
    function tick(item) { return findChild(item, "tick") }

    function test_a_click_and_the_space_bar_toggle_it() {
        const item = make()
        verify(!item.checked && !tick(item).visible)
        mouseClick(item)
        verify(item.checked && tick(item).visible)
        verify(!item.looksFocused)
        item.focus = false
        item.forceActiveFocus(Qt.TabFocusReason)
        verify(item.looksFocused)
        keyClick(Qt.Key_Space)
        verify(!item.checked)
        compare(toggled.count, 2)
    }

    function test_the_words_belong_to_the_box() {
        const item = make()
        mouseClick(item, item.width - 2, item.height / 2)
        verify(item.checked)
    }

    function test_it_says_what_it_is() {
        const item = make({ checked: true })
        compare(item.Accessible.role, Accessible.CheckBox)
        compare(item.Accessible.name, "Auto")
        verify(item.Accessible.checkable && item.Accessible.checked)
        item.Accessible.pressAction()
        verify(!item.checked && !item.Accessible.checked)
        compare(toggled.count, 1)
    }

    function test_looks() {
        const item = make()
        verify(item.height >= 32)
        compare([square(item).width, square(item).height], [18, 18])
        compare(square(item).border.color, Palette.slate)
        compare(square(item).color, Palette.surface)
        mouseMove(item, 4, 4)
        tryCompare(square(item), "color", Palette.mist)
        mouseMove(test, 399, 199)
        item.checked = true
        tryCompare(square(item), "color", Palette.burgundy)
        compare(square(item).border.color, Palette.burgundy)
        item.enabled = false
        compare(square(item).border.color, Palette.stone)
        mouseClick(item)
        verify(item.checked)
    }

    function test_a_long_text_wraps_and_a_large_one_has_room() {
        const wrapped = make({ text: "A question that is much longer than its place allows", width: 150 })
        verify(wrapped.height > 32)
        verify(!wrapped.contentItem.truncated)
        surroundings.setTextSize(22)
        const large = make()
        verify(large.height > 32)
    }
}
