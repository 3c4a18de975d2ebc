import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Symbol"
    when: windowShown
    visible: true
    width: 100
    height: 100

    Component { id: maker; Symbol { width: 40; height: 40; color: "#ff0000" } }

    function test_is_drawn_in_its_colour_data() {
        return ["xmark", "xmark.circle.fill", "info.circle", "checkmark.circle.fill", "exclamationmark.triangle.fill",
            "arrow.left.arrow.right", "arrow.right", "chevron.up.chevron.down", "chevron.down", "chevron.left",
            "chevron.right", "magnifyingglass", "checkmark", "gearshape", "globe", "arrow.triangle.2.circlepath",
            "square.grid.2x2", "doc.text"].map(name => ({ tag: name }))
    }
    function test_is_drawn_in_its_colour(row) {
        const symbol = createTemporaryObject(maker, test, { name: row.tag })
        waitForRendering(symbol)
        const image = grabImage(symbol)
        let count = 0
        for (let y = 0; y < 40; ++y)
            for (let x = 0; x < 40; ++x)
                count += image.red(x, y) > 200 && image.green(x, y) < 60 ? 1 : 0
        verify(count > 20, count)
    }

    function test_an_unknown_name_is_told_and_draws_nothing() {
        ignoreWarning("There is no symbol \"nowhere\".")
        const symbol = createTemporaryObject(maker, test, { name: "nowhere" })
        compare(symbol.name, "nowhere")
    }
}
