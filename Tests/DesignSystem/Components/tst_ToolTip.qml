import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "ToolTip"
    when: windowShown
    visible: true
    width: 400
    height: 200

    Component { id: plain; Chip { text: "PDF"; x: 100; y: 100 } }
    Component { id: explained; Chip { text: "MAC"; toolTip: "Needs a Mac app"; x: 100; y: 100 } }
    Component { id: tip; Item { property alias tip: tip; width: 20; height: 20; NolfaToolTip { id: tip; delay: 0 } } }

    function init() { mouseMove(test, 1, 1) }
    function loader(chip) { return findChild(chip, "toolTipLoader") }

    function test_a_chip_explains_itself_while_the_pointer_rests_on_it() {
        const chip = createTemporaryObject(explained, test)
        compare(chip.Accessible.description, "Needs a Mac app")
        compare(loader(chip).item, null)
        mouseMove(chip, 5, 5)
        tryVerify(() => loader(chip).item !== null && loader(chip).item.opened)
        compare(loader(chip).item.text, "Needs a Mac app")
        verify(loader(chip).item.y < 0)
        mouseMove(test, 1, 1)
        tryCompare(loader(chip), "item", null)
    }

    function test_a_chip_without_an_explanation_shows_none() {
        const chip = createTemporaryObject(plain, test)
        mouseMove(chip, 5, 5)
        verify(!loader(chip).active)
    }

    function test_a_long_text_wraps_and_stays_in_the_window() {
        const item = createTemporaryObject(tip, test, { x: 380, y: 100 })
        item.tip.text = "a long explanation ".repeat(20)
        item.tip.visible = true
        tryVerify(() => item.tip.opened)
        verify(item.tip.width <= 340)
        verify(item.tip.contentItem.lineCount > 1)
        verify(item.x + item.tip.x + item.tip.width <= test.width)
    }
}
