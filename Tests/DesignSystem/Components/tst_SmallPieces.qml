import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "SmallPieces"
    when: windowShown
    visible: true
    width: 400
    height: 300

    Component { id: card; Card { padding: 10; radius: 16; Item { implicitWidth: 50; implicitHeight: 30 } } }
    Component { id: datum; DatumRule {} }
    Component { id: shortRule; DatumRule { width: 40; color: Palette.gold } }
    Component { id: hairline; Hairline {} }
    Component { id: mark; NolfaMark {} }
    Component { id: wordmark; NolfaWordmark {} }
    Component { id: panel; NolfaGlassPanel { width: 100; height: 50 } }
    Component { id: bar; NolfaGlassBar { width: 100; height: 50 } }
    Component { id: accent; NolfaGlassAccent { width: 100; height: 50; radius: 4 } }
    Component {
        id: list
        Item {
            property alias view: view
            property alias edge: edge
            width: 100
            height: 100
            Flickable { id: view; anchors.fill: parent; contentHeight: 300 }
            NolfaSoftScrollEdge { id: edge; flickable: view }
        }
    }

    function make(component, properties) { return createTemporaryObject(component, test, properties) }

    function test_card_is_a_white_sheet_around_its_content() {
        const item = make(card)
        compare([item.implicitWidth, item.implicitHeight], [70, 50])
        const sheet = findChild(item, "sheet")
        compare(sheet.color, Palette.surface)
        compare(sheet.border.color, Palette.line)
        compare(sheet.radius, 16)
    }

    function test_datum_rule_is_two_high_and_as_wide_as_its_container_unless_told() {
        compare([make(datum).width, make(datum).height], [400, 2])
        const rule = make(shortRule)
        compare(rule.width, 40)
        compare(rule.color, Palette.gold)
    }

    function test_hairline_is_one_device_pixel_data() {
        return [{ tag: "half", scale: 0.5, thickness: 1 }, { tag: "one", scale: 1, thickness: 1 },
            { tag: "one and a half", scale: 1.5, thickness: 1 / 1.5 }, { tag: "two", scale: 2, thickness: 0.5 }]
    }
    function test_hairline_is_one_device_pixel(row) {
        const across = make(hairline, { displayScale: row.scale })
        compare([across.width, across.height], [400, row.thickness])
        const down = make(hairline, { displayScale: row.scale, axis: Qt.Vertical })
        compare([down.width, down.height], [row.thickness, 300])
    }

    function test_mark_is_square_and_drawn() {
        const item = make(mark, { size: 32 })
        compare([item.width, item.height], [32, 32])
        tryCompare(item, "status", Image.Ready)
        verify(item.smooth && item.mipmap)
    }

    function test_wordmark_keeps_its_gap_and_says_its_name() {
        const item = make(wordmark, { markSize: 50 })
        const word = findChild(item, "word")
        compare(word.text, "Nolfa")
        compare(word.color, Palette.ink)
        compare(word.x, 67)
        compare(item.Accessible.name, "Nolfa")
        compare(surroundings.drawnWith(word.font), "Newsreader24pt-SemiBold")
    }

    function test_glass_is_a_plain_fill_with_a_border_and_a_shadow_data() {
        return [{ tag: "bar", component: bar, radius: 0, fill: Palette.surface },
            { tag: "panel", component: panel, radius: 16, fill: Palette.surface },
            { tag: "accent", component: accent, radius: 4, fill: Palette.mist }]
    }
    function test_glass_is_a_plain_fill_with_a_border_and_a_shadow(row) {
        const glass = make(row.component)
        const fill = findChild(glass, "fill")
        compare(fill.color, row.fill)
        compare(fill.border.width, 1)
        compare(fill.border.color, Palette.line)
        compare(fill.radius, row.radius)
        verify(findChild(glass, "shadow").color.a > 0)
    }

    function test_the_soft_edge_shows_while_there_is_more_below() {
        const item = make(list)
        verify(item.edge.hasMore)
        item.view.contentY = 200
        verify(!item.edge.hasMore)
        tryCompare(item.edge, "opacity", 0)
    }
}
