import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.App

TestCase {
    id: test
    name: "ComingView"
    when: windowShown
    visible: true
    width: 900
    height: 560

    Component { id: coming; ComingView { anchors.fill: parent; title: "Compare" } }

    function init() { stage.restart() }

    function test_says_in_both_languages_that_the_tool_is_not_here() {
        const view = createTemporaryObject(coming, test)
        compare(view.explanation, "This tool isn’t here yet. It comes with a later version of Nolfa.")
        stage.app.settings.language = "fr"
        compare(view.explanation, "Cet outil n’est pas encore là. Il arrive avec une prochaine version de Nolfa.")
    }
}
