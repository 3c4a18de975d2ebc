import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Shadow"
    when: windowShown
    visible: true
    width: 200
    height: 200

    Rectangle {
        id: ground
        anchors.fill: parent
        Shadow { x: 50; y: 50; width: 100; height: 100; radius: 12; blur: 18; color: Palette.tint(Palette.burgundyDark, 0.5) }
    }

    function test_fades_out_beyond_the_edges_and_is_even_on_all_sides() {
        waitForRendering(ground)
        const image = grabImage(ground)
        const inside = image.red(100, 100)
        const near = image.red(100, 46)
        const far = image.red(100, 38)
        verify(inside < near && near < far && far < 255, [inside, near, far])
        compare(image.red(100, 10), 255)
        compare(image.red(46, 100), near)
        fuzzyCompare(image.red(153, 100), near, 1)
        fuzzyCompare(image.red(100, 153), near, 1)
    }
}
