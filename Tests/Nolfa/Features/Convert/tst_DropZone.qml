import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Convert

TestCase {
    id: test
    name: "DropZone"
    when: windowShown
    visible: true
    width: 820
    height: 480

    Component { id: hero; DropZone { width: 820; height: 480 } }
    Component { id: strip; DropZone { mode: DropZone.Mode.Strip; width: 780; height: 56 } }
    SignalSpy { id: dropped; signalName: "urls" }
    SignalSpy { id: chosen; signalName: "chooseRequested" }

    function init() { stage.restart() }
    function cleanup() { stage.setTextSize(0) }

    function textOf(item, name) { return findChild(item, name).text }

    function test_prompts_data() {
        return [
            { tag: "hero, en", part: hero, language: "en", rest: "Drop documents here", drag: "Release to add them" },
            { tag: "hero, fr", part: hero, language: "fr", rest: "Déposez vos documents ici", drag: "Relâchez pour les ajouter" },
            { tag: "strip, en", part: strip, language: "en", rest: "Drop more documents", drag: "Release to add them" },
            { tag: "strip, fr", part: strip, language: "fr", rest: "Déposez d’autres documents", drag: "Relâchez pour les ajouter" },
        ]
    }
    function test_prompts(data) {
        const zone = createTemporaryObject(data.part, test)
        stage.app.settings.language = data.language
        compare(textOf(zone, "prompt"), data.rest)
        compare(findChild(zone, "choose").text, data.language === "en" ? "Choose files…" : "Choisir des fichiers…")
        verify(!zone.targeted)
        stage.dragEnter(zone, 100, 20, stage.urls(["a.md"]))
        verify(zone.targeted)
        compare(textOf(zone, "prompt"), data.drag)
        stage.dragLeave(zone)
        verify(!zone.targeted)
        compare(textOf(zone, "prompt"), data.rest)
    }

    function test_the_border_is_stone_at_rest_and_burgundy_while_targeted() {
        const zone = createTemporaryObject(hero, test)
        const frame = findChild(zone, "frame")
        verify(Qt.colorEqual(frame.border.color, Palette.stone))
        verify(Qt.colorEqual(frame.color, Palette.surface))
        stage.dragEnter(zone, 100, 20, stage.urls(["a.md"]))
        tryVerify(() => Qt.colorEqual(frame.border.color, Palette.burgundy))
        stage.dragLeave(zone)
        tryVerify(() => Qt.colorEqual(frame.border.color, Palette.stone))

        const band = createTemporaryObject(strip, test, { y: 20 })
        const edge = band.button.parent
        verify(Qt.colorEqual(edge.border.color, Palette.stone))
        zone.visible = false
        stage.dragEnter(band, 100, 20, stage.urls(["a.md"]))
        tryVerify(() => Qt.colorEqual(edge.border.color, Palette.burgundy))
        stage.dragLeave(band)
    }

    function test_drops_are_accepted_whatever_they_are() {
        for (const part of [hero, strip]) {
            const zone = createTemporaryObject(part, test)
            dropped.target = zone
            dropped.clear()
            const urls = ["https://example.org/page", ...stage.urls(["a.md", "b.exe"])]
            verify(stage.drop(zone, 100, 20, urls))
            compare(dropped.count, 1)
            compare(dropped.signalArguments[0][0].map(url => String(url)),
                ["https://example.org/page", "file:///home/claire/Documents/a.md", "file:///home/claire/Documents/b.exe"])
            verify(!zone.targeted)
            zone.visible = false
        }
    }

    function test_the_button_asks_for_files_by_pointer_and_by_keyboard() {
        for (const part of [hero, strip]) {
            const zone = createTemporaryObject(part, test)
            chosen.target = zone
            chosen.clear()
            mouseClick(zone.button)
            compare(chosen.count, 1)
            zone.button.forceActiveFocus(Qt.TabFocusReason)
            keyClick(Qt.Key_Space)
            compare(chosen.count, 2)
            zone.visible = false
        }
    }

    function test_the_masthead_names_what_can_be_opened() {
        compare(ConvertTexts.masthead, ["MARKDOWN · PDF · WORD · POWERPOINT · EXCEL",
            "PAGES · KEYNOTE · NUMBERS · GOOGLE DOCS · SHEETS · SLIDES · IMAGE"])
    }

    function test_the_heading_speaks_both_languages() {
        const zone = createTemporaryObject(hero, test)
        compare(textOf(zone, "heading"), "Drop documents below")
        stage.app.settings.language = "fr"
        compare(textOf(zone, "heading"), "Déposez vos documents ci-dessous")
    }

    function test_nothing_overlaps_in_a_low_window_nor_with_large_text_data() {
        return [{ tag: "820x480", width: 820, height: 480, size: 0 }, { tag: "720x340", width: 720, height: 340, size: 0 },
            { tag: "820x480 large", width: 820, height: 480, size: 14 }]
    }
    function test_nothing_overlaps_in_a_low_window_nor_with_large_text(data) {
        stage.setTextSize(data.size)
        stage.app.settings.language = "fr"
        const zone = createTemporaryObject(hero, test, { width: data.width, height: data.height })
        const well = findChild(zone, "well")
        tryVerify(() => well.height >= 124)
        verify(well.width <= 560)
        const bottom = zone.mapFromItem(well, 0, well.height).y
        verify(bottom <= data.height, bottom)
        const button = zone.mapFromItem(zone.button, 0, zone.button.height).y
        verify(button <= bottom - 7, button)
        const heading = findChild(zone, "heading")
        verify(zone.mapFromItem(heading, 0, 0).y >= 0)
        compare(zone.wellBottom, bottom)
    }
}
