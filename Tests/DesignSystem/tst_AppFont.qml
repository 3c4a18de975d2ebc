import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    name: "AppFont"

    readonly property font bound: AppFont.body(20, AppFont.Body.Regular)
    property real usual: 0

    function initTestCase() { usual = AppFont.systemSize }
    function cleanup() { surroundings.setTextSize(usual) }

    function test_draws_with_the_named_font_data() {
        return [
            { tag: "Newsreader24pt-Regular", font: AppFont.display(20, AppFont.Display.Regular) },
            { tag: "Newsreader24pt-Medium", font: AppFont.display(20, AppFont.Display.Medium) },
            { tag: "Newsreader24pt-SemiBold", font: AppFont.display(20, AppFont.Display.Semibold) },
            { tag: "HankenGrotesk-Regular", font: AppFont.body(20, AppFont.Body.Regular) },
            { tag: "HankenGrotesk-Medium", font: AppFont.body(20, AppFont.Body.Medium) },
            { tag: "HankenGrotesk-SemiBold", font: AppFont.body(20, AppFont.Body.Semibold) },
            { tag: "HankenGrotesk-Bold", font: AppFont.body(20, AppFont.Body.Bold) },
            { tag: "IBMPlexMono-Regular", font: AppFont.mono(20, AppFont.Mono.Regular) },
            { tag: "IBMPlexMono-Medium", font: AppFont.mono(20, AppFont.Mono.Medium) },
            { tag: "IBMPlexMono-SemiBold", font: AppFont.mono(20, AppFont.Mono.Semibold) }]
    }
    function test_draws_with_the_named_font(row) { compare(surroundings.drawnWith(row.font), row.tag) }

    function test_without_a_weight_is_regular() {
        compare(surroundings.drawnWith(AppFont.display(20)), "Newsreader24pt-Regular")
        compare(surroundings.drawnWith(AppFont.body(20)), "HankenGrotesk-Regular")
        compare(surroundings.drawnWith(AppFont.mono(20)), "IBMPlexMono-Regular")
    }

    function test_ordinary_text_sizes_leave_sizes_alone() {
        for (const size of [8, 9, 10, 11]) {
            surroundings.setTextSize(size)
            compare(AppFont.display(30).pixelSize, 30)
            compare(AppFont.body(15).pixelSize, 15)
            compare(AppFont.mono(11).pixelSize, 11)
        }
    }

    function test_large_system_text_makes_titles_grow_less_and_captions_more() {
        surroundings.setTextSize(16.5)
        compare(AppFont.textScale, 1.5)
        compare(AppFont.body(20).pixelSize, 30)
        compare(AppFont.display(34).pixelSize, 47)
        compare(AppFont.mono(20).pixelSize, 33)
    }

    function test_grows_at_most_twice() {
        surroundings.setTextSize(40)
        compare(AppFont.textScale, 2)
    }

    function test_a_font_in_use_follows_the_system() {
        compare(bound.pixelSize, 20)
        surroundings.setTextSize(22)
        compare(bound.pixelSize, 40)
    }

    function test_tracking_stands_between_letters() { fuzzyCompare(AppFont.mono(11, AppFont.Mono.Semibold, 1.6).letterSpacing, 1.6, 0.02) }
}
