import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Spinner"
    when: windowShown
    visible: true
    width: 100
    height: 100

    Component { id: maker; Spinner { size: 16; lineWidth: 2.5; reduceMotion: false } }

    function init() { Language.current = "en" }

    function test_turns_while_it_is_shown() {
        const spinner = createTemporaryObject(maker, test)
        const ring = findChild(spinner, "ring")
        compare([spinner.implicitWidth, spinner.implicitHeight], [16, 16])
        verify(spinner.spinning)
        tryVerify(() => ring.rotation > 0)
        spinner.visible = false
        verify(!spinner.spinning)
    }

    function test_a_turn_takes_three_quarters_of_a_second_for_ever() {
        const turn = createTemporaryObject(maker, test).animation
        compare([turn.from, turn.to, turn.duration], [0, 360, 750])
        verify(turn.loops < 0)
        compare(turn.easing.type, Easing.Linear)
    }

    function test_stands_still_when_motion_is_reduced() {
        const spinner = createTemporaryObject(maker, test)
        const ring = findChild(spinner, "ring")
        tryVerify(() => ring.rotation > 0)
        spinner.reduceMotion = true
        verify(!spinner.spinning)
        compare(ring.rotation, 0)
        wait(60)
        compare(ring.rotation, 0)
    }

    function test_is_one_element_that_says_what_goes_on() {
        const spinner = createTemporaryObject(maker, test)
        compare(spinner.Accessible.role, Accessible.Animation)
        compare(spinner.Accessible.name, "Converting")
        Language.current = "fr"
        compare(spinner.Accessible.name, "Conversion en cours")
    }
}
