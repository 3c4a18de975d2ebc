import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "QuietControls"
    when: windowShown
    visible: true
    width: 400
    height: 200

    property real usual: 0

    Component { id: chip; Chip { text: "GOOGLE SLIDES" } }
    Component { id: word; TextButton { text: "Open" } }
    Component { id: icon; IconButton { symbol: "xmark"; text: "Remove" } }
    SignalSpy { id: spy; signalName: "clicked" }

    function initTestCase() { usual = AppFont.systemSize }
    function cleanup() { surroundings.setTextSize(usual) }
    function make(component, properties) { return createTemporaryObject(component, test, properties) }

    function test_chip_is_a_soft_fill_or_a_quiet_border() {
        const plain = make(chip)
        compare(plain.height, 22)
        compare(plain.color, Palette.mist)
        compare(plain.border.width, 0)
        compare(plain.Accessible.name, "GOOGLE SLIDES")
        const requirement = make(chip, { isRequirement: true })
        compare(requirement.color.a, 0)
        compare(requirement.border.color, Palette.stone)
    }

    function test_chip_grows_with_the_text() {
        surroundings.setTextSize(22)
        const item = make(chip)
        verify(item.height > 22)
        verify(!item.children[0].truncated)
    }

    function test_buttons_are_large_enough_and_answer_data() {
        return [{ tag: "word", component: word, name: "Open" }, { tag: "icon", component: icon, name: "Remove" }]
    }
    function test_buttons_are_large_enough_and_answer(row) {
        const button = make(row.component)
        verify(button.width >= 32 && button.height >= 32)
        compare(button.Accessible.role, Accessible.Button)
        compare(button.Accessible.name, row.name)
        const ring = button.background.children[0]
        spy.target = button
        spy.clear()
        mouseClick(button)
        compare(spy.count, 1)
        verify(!ring.visible)
        button.focus = false
        button.forceActiveFocus(Qt.TabFocusReason)
        verify(ring.visible)
        keyClick(Qt.Key_Space)
        compare(spy.count, 2)
        mouseMove(button, 4, 4)
        tryCompare(button.background, "color", Palette.mist)
        button.enabled = false
        mouseClick(button)
        compare(spy.count, 2)
    }
}
