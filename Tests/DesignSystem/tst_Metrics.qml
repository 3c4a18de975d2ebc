import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    name: "Metrics"

    function test_radii() {
        compare([Metrics.radius.chip, Metrics.radius.control, Metrics.radius.card, Metrics.radius.panel, Metrics.radius.hero],
            [6, 8, 12, 16, 22])
    }

    function test_button_heights() {
        compare([Metrics.buttonHeight.sm, Metrics.buttonHeight.md, Metrics.buttonHeight.lg], [36, 44, 48])
    }

    function test_short_transitions_take_15_hundredths_of_a_second() {
        compare(Metrics.anim, 0.15)
        compare(Metrics.animDuration, 150)
    }

    function test_shadows_are_tinted_with_the_accent() {
        compare(Metrics.cardShadow.color, Palette.tint(Palette.burgundyDark, 0.07))
        compare([Metrics.cardShadow.radius, Metrics.cardShadow.x, Metrics.cardShadow.y], [3, 0, 1])
        compare(Metrics.panelShadow.color, Palette.tint(Palette.burgundyDark, 0.16))
        compare([Metrics.panelShadow.radius, Metrics.panelShadow.x, Metrics.panelShadow.y], [18, 0, 6])
    }
}
