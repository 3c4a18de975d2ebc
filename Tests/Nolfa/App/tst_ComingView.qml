import QtQuick
import QtTest
import Nolfa.App

TestCase {
    name: "ComingView"
    when: windowShown

    ComingView {
        id: view
        width: 400
    }

    function test_speaks_the_language_in_force() {
        compare(view.explanation,
            "Cette fenêtre ne convertit pas encore. En attendant, la ligne de commande est à votre service :")
    }

    function test_fits_its_width() {
        verify(view.implicitHeight > 0)
        for (let index = 0; index < view.children.length; ++index)
            verify(view.children[index].width <= view.width, view.children[index].text)
    }
}
