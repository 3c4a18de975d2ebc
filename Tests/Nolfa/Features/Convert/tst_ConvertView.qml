import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Convert

TestCase {
    id: test
    name: "ConvertView"
    when: windowShown
    visible: true
    width: 820
    height: 480

    Component {
        id: screen
        ConvertView {
            anchors.fill: parent
            focus: true
            convert: stage.app.convert
        }
    }
    SignalSpy { id: chosen; signalName: "chooseRequested" }
    property ConvertView view: null

    function init() {
        stage.restart()
        view = createTemporaryObject(screen, test)
        view.forceActiveFocus()
    }

    function part(name) { return findChild(view, name) }
    function row(index) {
        let item = null
        tryVerify(() => { view.list.forceLayout(); item = view.list.itemAtIndex(index); return item !== null })
        return item
    }
    function stateIs(index, state) { tryVerify(() => row(index).itemState === state, 5000, "row " + index + " " + state) }

    function test_starts_with_the_hero_zone_alone() {
        verify(part("zone").isHero)
        verify(!part("footer").visible)
        verify(!view.list.visible)
        verify(!part("noticeLine").visible)
    }

    function test_dropped_files_become_rows() {
        verify(stage.drop(view, 400, 300, stage.urls(["a.docx", "b.md"])))
        verify(!part("zone").isHero)
        verify(part("footer").visible)
        compare(view.list.count, 2)
        compare(row(0).name, "a.docx")
        compare(row(0).path, "/home/claire/Documents/a.docx")
        compare(row(1).name, "b.md")
        compare(row(1).y - row(0).y - row(0).height, 10)
        compare(stage.calls, [], "nothing starts by itself")
    }

    function test_files_may_be_dropped_on_the_list_and_the_footer() {
        stage.add(["a.md"])
        verify(stage.drop(view, 400, 460, stage.urls(["b.md"])))
        verify(stage.drop(view, 400, 200, stage.urls(["c.md"])))
        compare(view.list.count, 3)
    }

    function test_removing_the_last_row_brings_the_hero_back() {
        stage.add(["a.md"])
        mouseClick(findChild(row(0), "remove"))
        verify(part("zone").isHero)
        verify(!part("footer").visible)
    }

    function test_the_primary_button_counts_data() {
        return [{ tag: "en", one: "Convert", two: "Convert 2 files", clear: "Clear" },
            { tag: "fr", one: "Convertir", two: "Convertir 2 fichiers", clear: "Vider la liste" }]
    }
    function test_the_primary_button_counts(data) {
        stage.app.settings.language = data.tag
        stage.add(["a.md"])
        compare(part("convert").text, data.one)
        stage.add(["b.md"])
        compare(part("convert").text, data.two)
        compare(part("clear").text, data.clear)
    }

    function test_a_batch_from_press_to_end() {
        stage.add(["a.docx", "b.docx", "c.docx"])
        verify(!part("progress").visible)
        mouseClick(part("convert"))
        stateIs(0, "running")
        tryCompare(stage, "calls", ["a.docx > markdown", "b.docx > markdown"])
        verify(!part("convert").enabled)
        verify(part("clear").enabled)
        tryCompare(part("progress"), "text", "Converting 1 of 3")
        verify(part("progress").visible)
        stage.succeed("a.docx", "a.md")
        stateIs(0, "done")
        tryCompare(part("progress"), "text", "Converting 2 of 3")
        stage.failLocked("b.docx")
        stateIs(1, "failed")
        verify(findChild(row(1), "secondLine").text.endsWith(
            " is password-protected. Remove the password in the app that made it, then convert it again."))
        stage.app.settings.language = "fr"
        compare(part("progress").text, "Conversion 3 sur 3")
        verify(findChild(row(1), "secondLine").text.includes("mot de passe"))
        stage.succeed("c.docx", "c.md")
        stateIs(2, "done")
        verify(part("convert").enabled)
        verify(!part("progress").visible)
    }
    function test_rows_dropped_during_a_batch_wait_for_the_next() {
        stage.add(["a.docx"])
        mouseClick(part("convert"))
        stateIs(0, "running")
        verify(stage.drop(part("zone"), 100, 20, stage.urls(["b.docx"])))
        stateIs(1, "idle")
        verify(!part("convert").enabled)
        stage.succeed("a.docx", "a.md")
        stateIs(0, "done")
        verify(part("convert").enabled)
        stateIs(1, "idle")
    }

    function test_notices_data() {
        return [
            { tag: "one skipped", files: ["a.exe"], en: "One file was skipped. Nolfa cannot open that format.", fr: "Un fichier a été ignoré. Nolfa ne sait pas ouvrir ce format." },
            { tag: "two skipped", files: ["a.exe", "b.exe"], en: "2 files were skipped. Nolfa cannot open those formats.", fr: "2 fichiers ont été ignorés. Nolfa ne sait pas ouvrir ces formats." },
            { tag: "a duplicate", files: ["x.md"], en: "Already in the list.", fr: "Déjà dans la liste." },
            { tag: "both", files: ["a.exe", "b.exe", "x.md"], en: "2 files were skipped. Nolfa cannot open those formats. Already in the list.", fr: "2 fichiers ont été ignorés. Nolfa ne sait pas ouvrir ces formats. Déjà dans la liste." },
        ]
    }
    function test_notices(data) {
        stage.add(["x.md"])
        stage.add(data.files)
        compare(part("notice").text, data.en)
        compare(part("noticeLine").Accessible.name, data.en)
        stage.app.settings.language = "fr"
        compare(part("notice").text, data.fr)
        tryVerify(() => part("noticeLine").opacity === 1)
        compare(part("notice").lineCount, 1)
    }

    function test_a_notice_goes_after_its_time_and_keeps_its_words_while_it_fades() {
        stage.add(["a.exe"])
        verify(part("zone").isHero)
        tryCompare(part("noticeLine"), "opacity", 1)
        fuzzyCompare(part("noticeLine").y, part("zone").wellBottom + 10, 0.01)
        stage.advance(3900)
        verify(part("noticeLine").shown)
        stage.advance(3000)
        verify(!part("noticeLine").shown)
        compare(part("notice").text, "One file was skipped. Nolfa cannot open that format.")
        tryVerify(() => !part("noticeLine").visible)
    }

    function test_show_and_open_reach_the_desktop() {
        stage.add(["a.docx"])
        stage.succeed("a.docx", "a 2.md")
        mouseClick(part("convert"))
        stateIs(0, "done")
        mouseClick(findChild(row(0), "reveal"))
        mouseClick(findChild(row(0), "open"))
        compare(stage.revealed, ["a 2.md"])
        compare(stage.opened, ["a 2.md"])
    }

    function test_a_new_target_resets_its_row() {
        stage.add(["a.docx"])
        stage.succeed("a.docx", "a.md")
        mouseClick(part("convert"))
        stateIs(0, "done")
        const picker = findChild(row(0), "picker")
        picker.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Home)
        keyClick(Qt.Key_Return)
        tryVerify(() => !picker.popup.visible)
        stateIs(0, "idle")
        compare(row(0).target, "pdf")
        compare(stage.calls.length, 1, "Return chose, and converted nothing")
    }

    function test_return_converts_wherever_the_keyboard_is() {
        stage.add(["a.docx", "b.docx"])
        keyClick(Qt.Key_Return)
        stateIs(0, "running")
        keyClick(Qt.Key_Return)
        stage.succeed("a.docx", "a.md")
        stage.succeed("b.docx", "b.md")
        stateIs(1, "done")
        compare(stage.calls.length, 2)
        stage.add(["c.docx"])
        findChild(row(2), "picker").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Enter)
        stateIs(2, "running")
    }

    function test_a_tool_tip_takes_no_keys() {
        stage.add(["a.docx"])
        const tip = findChild(row(0), "pathTip")
        mouseMove(findChild(row(0), "name"), 20, 8)
        tryVerify(() => tip.tip && tip.tip.opened)
        keyClick(Qt.Key_Return)
        stateIs(0, "running")
        keyClick(Qt.Key_Delete, Qt.ControlModifier)
        compare(view.list.count, 0)
    }

    function test_control_delete_clears_also_while_running_data() {
        return [{ tag: "Delete", key: Qt.Key_Delete }, { tag: "Backspace", key: Qt.Key_Backspace }]
    }
    function test_control_delete_clears_also_while_running(data) {
        stage.add(["a.docx", "b.docx"])
        mouseClick(part("convert"))
        stateIs(0, "running")
        keyClick(data.key, Qt.ControlModifier)
        verify(part("zone").isHero)
        compare(view.list.count, 0)
    }

    function test_a_running_row_can_be_removed() {
        stage.add(["a.docx", "b.docx"])
        mouseClick(part("convert"))
        stateIs(0, "running")
        mouseClick(findChild(row(0), "remove"))
        compare(view.list.count, 1)
        compare(row(0).name, "b.docx")
        stage.succeed("b.docx", "b.md")
        stateIs(0, "done")
        verify(part("convert").enabled)
    }

    function focusName() {
        const item = view.Window.activeFocusItem
        return item.objectName
    }

    function test_tab_goes_through_everything_in_order_and_back() {
        stage.add(["a.docx", "deck.pptx"])
        stage.succeed("a.docx", "a.md")
        stage.succeed("deck.pptx", "deck.md")
        mouseClick(part("convert"))
        stateIs(1, "done")
        part("zone").button.forceActiveFocus(Qt.TabFocusReason)
        const stops = ["choose", "picker", "reveal", "open", "remove", "reveal", "open", "remove", "clear", "convert"]
        const seen = [focusName()]
        for (let i = 1; i < stops.length; ++i) {
            keyClick(Qt.Key_Tab)
            seen.push(focusName())
        }
        compare(seen, stops)
        const back = [focusName()]
        for (let i = 1; i < stops.length; ++i) {
            keyClick(Qt.Key_Backtab)
            back.push(focusName())
        }
        compare(back, stops.slice().reverse())
    }

    function test_tab_reaches_rows_far_below_and_scrolls_to_them() {
        const names = []
        for (let i = 0; i < 60; ++i)
            names.push("file" + i + ".docx")
        stage.add(names)
        part("zone").button.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Tab)
        for (let i = 0; i < 59; ++i) {
            keyClick(Qt.Key_Tab)
            keyClick(Qt.Key_Tab)
            compare(view.focusedRow, i + 1)
        }
        const item = view.list.itemAtIndex(59)
        verify(item.mapToItem(view.list, 0, 0).y >= 0)
        verify(item.mapToItem(view.list, 0, item.height).y <= view.list.height)
        keyClick(Qt.Key_Tab)
        keyClick(Qt.Key_Tab)
        compare(focusName(), "clear")
        for (let i = 59; i >= 0; --i) {
            keyClick(Qt.Key_Backtab)
            compare(view.focusedRow, i)
            keyClick(Qt.Key_Backtab)
        }
        keyClick(Qt.Key_Backtab)
        compare(focusName(), "choose")
    }

    function test_the_keyboard_stays_in_the_list_when_its_row_is_removed() {
        stage.add(["a.docx", "b.docx", "c.docx"])
        row(1).enter(false)
        keyClick(Qt.Key_Space)
        compare(view.list.count, 2)
        compare(view.focusedRow, 1)
        compare(row(1).name, "c.docx")
        keyClick(Qt.Key_Space)
        compare(view.focusedRow, 0)
        keyClick(Qt.Key_Space)
        compare(focusName(), "choose")
    }

    function test_the_button_of_the_zone_asks_for_files() {
        chosen.target = view
        chosen.clear()
        mouseClick(part("zone").button)
        compare(chosen.count, 1)
        stage.add(["a.md"])
        mouseClick(part("zone").button)
        compare(chosen.count, 2)
    }

    function test_the_list_fades_while_there_is_more_below() {
        stage.add(["a.docx"])
        const edge = part("edge")
        tryCompare(edge, "opacity", 0)
        stage.add(["b.docx", "c.docx", "d.docx", "e.docx", "f.docx"])
        tryCompare(edge, "opacity", 1)
        view.list.positionViewAtEnd()
        tryCompare(edge, "opacity", 0)
    }

    function test_ten_thousand_rows_make_only_what_is_seen() {
        const names = []
        for (let i = 0; i < 10000; ++i)
            names.push("file" + i + ".docx")
        stage.add(names)
        compare(view.list.count, 10000)
        compare(part("convert").text, "Convert 10000 files")
        verify(view.list.contentItem.children.length < 40, view.list.contentItem.children.length)
    }

    function test_a_change_of_language_reaches_every_row_and_loses_nothing() {
        stage.add(["a.docx", "b.gsheet"])
        stage.app.settings.language = "fr"
        compare(view.list.count, 2)
        compare(findChild(row(0), "remove").text, "Retirer")
        compare(row(1).networkSentence, "Nécessite une connexion")
        verify(row(1).note.includes("Google Drive"))
        compare(part("zone").prompt, "Déposez d’autres documents")
        stage.app.settings.language = "en"
        compare(findChild(row(0), "remove").text, "Remove")
    }
}
