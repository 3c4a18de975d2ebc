import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "NolfaButton"
    when: windowShown
    visible: true
    width: 600
    height: 300

    property real usual: AppFont.systemSize

    Component { id: maker; NolfaButton { text: "Label" } }
    SignalSpy { id: spy; signalName: "clicked" }

    function initTestCase() { usual = AppFont.systemSize }
    function cleanup() { surroundings.setTextSize(usual) }
    function make(properties) { return createTemporaryObject(maker, test, properties) }
    function ring(button) { return button.background.children[0] }

    function test_looks_at_rest_and_pressed_data() {
        const Kind = NolfaButtonStyle.Kind
        return [
            { tag: "primary", kind: NolfaButtonStyle.Kind.Primary, fill: Palette.burgundy, text: Palette.paper, border: 0, pressed: Palette.burgundyDark },
            { tag: "secondary", kind: NolfaButtonStyle.Kind.Secondary, fill: Palette.tint(Palette.mist, 0), text: Palette.ink, border: 1, pressed: Palette.mist },
            { tag: "ghost", kind: NolfaButtonStyle.Kind.Ghost, fill: Palette.tint(Palette.mist, 0), text: Palette.slate, border: 0, pressed: Palette.mist }]
    }
    function test_looks_at_rest_and_pressed(row) {
        const button = make({ kind: row.kind })
        compare(button.background.color, row.fill)
        compare(button.contentItem.color, row.text)
        compare(button.background.border.width, row.border)
        if (row.border)
            compare(button.background.border.color, Palette.stone)
        compare(button.scale, 1)
        mousePress(button)
        tryCompare(button.background, "color", row.pressed)
        tryCompare(button, "scale", 0.98)
        mouseRelease(button)
        tryCompare(button, "scale", 1)
    }

    function test_hover_changes_the_look_data() { return test_looks_at_rest_and_pressed_data() }
    function test_hover_changes_the_look(row) {
        const button = make({ kind: row.kind, x: 50, y: 50 })
        mouseMove(button, 5, 20)
        tryCompare(button, "hovered", true)
        tryVerify(() => !Qt.colorEqual(button.background.color, row.fill))
    }

    function test_disabled_looks_quiet_and_does_nothing() {
        const button = make({ enabled: false })
        compare(button.background.color, Palette.line)
        compare(button.contentItem.color, Palette.slate)
        spy.target = button
        spy.clear()
        mouseClick(button)
        compare(spy.count, 0)
    }

    function test_is_a_capsule_of_its_height_data() {
        return [{ tag: "sm", height: 36 }, { tag: "md", height: 44 }, { tag: "lg", height: 48 }]
    }
    function test_is_a_capsule_of_its_height(row) {
        const button = make({ buttonHeight: Metrics.buttonHeight[row.tag] })
        compare(button.height, row.height)
        compare(button.background.radius, row.height / 2)
        compare(button.contentItem.font.pixelSize, 15)
        compare(button.contentItem.x, 20)
        compare(button.width, Math.ceil(button.contentItem.implicitWidth) + 40)
    }

    function test_large_system_text_fits_in() {
        surroundings.setTextSize(22)
        const button = make({ buttonHeight: Metrics.buttonHeight.sm, text: "Convertir 6 fichiers" })
        compare(button.contentItem.font.pixelSize, 30)
        verify(button.height >= button.contentItem.implicitHeight)
        verify(!button.contentItem.truncated)
    }

    function test_the_ring_shows_for_the_keyboard_only() {
        const first = make({ y: 0 })
        const second = make({ y: 100 })
        spy.target = second
        mouseClick(first)
        verify(!ring(first).visible)
        keyClick(Qt.Key_Tab)
        verify(second.activeFocus)
        verify(ring(second).visible)
        compare(ring(second).border.width, 2)
        compare(ring(second).border.color, Palette.burgundy)
        compare(ring(second).x, -4)
        compare(ring(second).width, second.width + 8)
        spy.clear()
        keyClick(Qt.Key_Space)
        compare(spy.count, 1)
    }

    function test_tells_its_role_and_name() {
        const button = make({ text: "Save" })
        compare(button.Accessible.role, Accessible.Button)
        compare(button.Accessible.name, "Save")
    }
}
