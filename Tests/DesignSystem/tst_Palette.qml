import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    name: "Palette"

    function test_has_the_fourteen_colours_data() {
        return [
            { tag: "paper", hex: "#fbf9f4" }, { tag: "surface", hex: "#ffffff" }, { tag: "mist", hex: "#f7efe0" },
            { tag: "ink", hex: "#1a1714" }, { tag: "slate", hex: "#5b6068" }, { tag: "stone", hex: "#d6cdbd" },
            { tag: "line", hex: "#e3dacb" }, { tag: "burgundy", hex: "#6e2433" }, { tag: "burgundyDark", hex: "#511a26" },
            { tag: "gold", hex: "#b8915e" }, { tag: "success", hex: "#2d6a4f" }, { tag: "warning", hex: "#b8860b" },
            { tag: "info", hex: "#4a6fa5" }, { tag: "error", hex: "#9b2335" }]
    }
    function test_has_the_fourteen_colours(row) {
        compare(String(Palette[row.tag]), row.hex)
        compare(Palette[row.tag].a, 1)
    }

    function test_a_tint_keeps_the_colour() {
        const tint = Palette.tint(Palette.burgundy, 0.5)
        compare(tint.r, Palette.burgundy.r)
        fuzzyCompare(tint.a, 0.5, 0.01)
    }
}
