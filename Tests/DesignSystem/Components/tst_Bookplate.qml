import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Bookplate"
    when: windowShown
    visible: true
    width: 300
    height: 200

    Component { id: maker; Bookplate { width: 200; height: 120 } }

    function test_stands_out_while_a_file_is_held_over_it() {
        const plate = createTemporaryObject(maker, test)
        const frame = findChild(plate, "frame")
        const inner = findChild(plate, "innerLine")
        compare(frame.color, Palette.surface)
        compare(frame.border.color, Palette.stone)
        compare(inner.border.color, Palette.line)
        plate.targeted = true
        compare(frame.border.width, 2)
        tryCompare(frame.border, "color", Palette.burgundy)
        tryCompare(inner.border, "color", Palette.tint(Palette.burgundy, 0.3))
        plate.targeted = false
        tryCompare(frame.border, "color", Palette.stone)
    }
}
