import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    name: "L10n"

    readonly property string bound: L10n.T("Save", "Enregistrer")

    function init() { Language.current = "en" }

    function test_a_bound_text_follows_the_language() {
        compare(bound, "Save")
        Language.current = "fr"
        compare(bound, "Enregistrer")
        Language.current = "en"
        compare(bound, "Save")
    }

    function test_an_unknown_language_changes_nothing() {
        const before = Language.rev
        Language.current = "de"
        compare(Language.current, "en")
        compare(Language.rev, before)
    }

    function test_the_same_language_again_redraws_nothing() {
        const before = Language.rev
        Language.current = "en"
        compare(Language.rev, before)
    }
}
