import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "QualityBadge"
    when: windowShown
    visible: true
    width: 300
    height: 100

    Component { id: maker; QualityBadge {} }

    function init() { Language.current = "en" }

    function test_looks_and_words_data() {
        return [
            { tag: "excellent", en: "EXCELLENT", fr: "EXCELLENT", text: Palette.success, fill: Palette.tint(Palette.success, 0.12) },
            { tag: "good", en: "GOOD", fr: "BON", text: Palette.slate, fill: Palette.tint(Palette.gold, 0.22) },
            { tag: "bestEffort", en: "BEST-EFFORT", fr: "AU MIEUX", text: Palette.warning, fill: Palette.tint(Palette.warning, 0.14) }]
    }
    function test_looks_and_words(row) {
        const badge = createTemporaryObject(maker, test, { tier: row.tag })
        const word = findChild(badge, "word")
        compare(word.text, row.en)
        compare(word.color, row.text)
        compare(badge.color, row.fill)
        compare(badge.radius, badge.height / 2)
        compare(word.x, 9)
        fuzzyCompare(word.font.letterSpacing, 1.6, 0.02)
        compare(badge.Accessible.role, Accessible.StaticText)
        compare(badge.Accessible.name, row.en)
        Language.current = "fr"
        compare(word.text, row.fr)
        compare(badge.Accessible.name, row.fr)
    }

    function test_the_word_has_the_same_room_on_both_sides() {
        const badge = createTemporaryObject(maker, test)
        const word = findChild(badge, "word")
        fuzzyCompare(badge.width - word.x - (word.implicitWidth - 1.6), 9, 1)
    }
}
