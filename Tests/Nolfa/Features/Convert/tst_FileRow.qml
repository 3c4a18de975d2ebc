import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Convert

TestCase {
    id: test
    name: "FileRow"
    when: windowShown
    visible: true
    width: 820
    height: 480

    Component {
        id: row
        FileRow {
            width: 780
            name: "Report.docx"
            path: "/home/claire/Documents/Report.docx"
            sourceName: "Word"
            target: "markdown"
            targetName: "Markdown"
            targets: ["markdown", "pdf", "pptx", "xlsx"]
            itemState: "idle"
            message: ""
            tier: "excellent"
            tierLabel: "EXCELLENT"
            note: ""
            isMacOnly: false
            requiresNetwork: false
        }
    }
    SignalSpy { id: spy }

    function init() { stage.restart() }
    function cleanup() { stage.setTextSize(0) }

    function make(properties) { return createTemporaryObject(row, test, properties) }
    function spyOn(item, signal) {
        spy.clear()
        spy.target = item
        spy.signalName = signal
    }
    function isShown(item, name) { return findChild(item, name).visible }

    function test_status_and_second_line_by_state_data() {
        const note = "A note."
        return [
            { tag: "idle", spinner: false, icon: "", word: "", line: note, links: false },
            { tag: "running", spinner: true, icon: "", word: "", line: "", links: false },
            { tag: "done", spinner: false, icon: "checkmark.circle.fill", word: "Converted", line: note, links: true },
            { tag: "failed", spinner: false, icon: "exclamationmark.triangle.fill", word: "Failed", line: "It broke.", links: false },
        ]
    }
    function test_status_and_second_line_by_state(data) {
        const item = make({ itemState: data.tag, note: "A note.", message: data.tag === "failed" ? "It broke." : "" })
        compare(isShown(item, "spinner"), data.spinner)
        compare(findChild(item, "spinner").size, 16)
        compare(findChild(item, "spinner").lineWidth, 2.5)
        compare(isShown(item, "icon"), data.icon !== "")
        compare(isShown(item, "status"), data.word !== "")
        if (data.icon !== "") {
            compare(findChild(item, "icon").name, data.icon)
            compare(findChild(item, "status").text, data.word)
            verify(Qt.colorEqual(findChild(item, "icon").color, data.tag === "failed" ? Palette.error : Palette.success))
        }
        compare(findChild(item, "secondLine").text, data.line)
        verify(Qt.colorEqual(findChild(item, "secondLine").color, data.tag === "failed" ? Palette.error : Palette.slate))
        compare(isShown(item, "links"), data.links)
        verify(findChild(item, "picker").enabled, "the target may change in every state")
    }

    function test_the_words_of_the_states_in_french() {
        stage.app.settings.language = "fr"
        const item = make({ itemState: "done" })
        compare(findChild(item, "status").text, "Converti")
        compare(findChild(item, "reveal").text, "Afficher dans le Finder")
        compare(findChild(item, "open").text, "Ouvrir")
        compare(findChild(item, "remove").text, "Retirer")
        compare(findChild(item, "picker").title, "Convertir en")
        item.itemState = "failed"
        compare(findChild(item, "status").text, "Échec")
        compare(item.stateDescription, "Échec")
        item.itemState = "running"
        compare(item.stateDescription, "Conversion en cours")
    }

    function test_without_a_capability_there_is_no_badge() {
        verify(isShown(make({}), "badge"))
        const item = make({ tier: "", tierLabel: "" })
        verify(!isShown(item, "badge"))
        compare(item.accessibilitySummary, "Report.docx, Word → Markdown")
    }

    function test_requirements_have_chips_with_their_sentence() {
        const item = make({ isMacOnly: true, requiresNetwork: true })
        compare(findChild(item, "mac").text, "MAC")
        compare(findChild(item, "mac").toolTip, "Needs a Mac app")
        compare(findChild(item, "internet").text, "INTERNET")
        compare(findChild(item, "internet").toolTip, "Needs the internet")
        stage.app.settings.language = "fr"
        compare(findChild(item, "mac").toolTip, "Nécessite une application Mac")
        compare(findChild(item, "internet").toolTip, "Nécessite une connexion")
        const plain = make({})
        verify(!isShown(plain, "mac") && !isShown(plain, "internet"))
    }

    function test_one_route_is_plain_text() {
        const item = make({ targets: ["markdown"] })
        verify(!isShown(item, "picker"))
        verify(isShown(item, "plainTarget"))
        compare(findChild(item, "plainTarget").text, "Markdown")
        const none = make({ targets: [] })
        verify(!isShown(none, "picker"))
    }

    function test_targets_are_grouped_in_the_order_of_the_families_data() {
        return [{ tag: "en", titles: ["Documents", "Presentations", "Spreadsheets", "Text"] },
            { tag: "fr", titles: ["Documents", "Présentations", "Feuilles de calcul", "Texte"] }]
    }
    function test_targets_are_grouped_in_the_order_of_the_families(data) {
        const item = make({ targets: ["markdown", "docx", "pdf", "pptx", "xlsx", "pages", "key", "numbers", "gdoc", "gsheet", "gslides", "image"] })
        stage.app.settings.language = data.tag
        const picker = findChild(item, "picker")
        compare(picker.model.map(choice => choice.value), ["docx", "pdf", "pages", "gdoc", "image", "pptx", "key", "gslides",
            "xlsx", "numbers", "gsheet", "markdown"])
        compare(picker.model.map(choice => choice.section), [...Array(5).fill(data.titles[0]), ...Array(3).fill(data.titles[1]),
            ...Array(3).fill(data.titles[2]), data.titles[3]])
        compare(picker.currentValue, "markdown")
        compare(make({ targets: ["pdf", "markdown"] }).targets.length, 2)
    }

    function test_a_family_without_targets_is_left_out() {
        const picker = findChild(make({ targets: ["markdown", "pdf"] }), "picker")
        compare(picker.model.map(choice => choice.section), ["Documents", "Text"])
    }

    function test_a_choice_is_reported_and_the_model_has_the_last_word() {
        const item = make({})
        const picker = findChild(item, "picker")
        spyOn(item, "targetChosen")
        picker.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Up)
        compare(spy.count, 1)
        compare(spy.signalArguments[0][0], "xlsx")
        item.target = "pdf"
        compare(picker.currentValue, "pdf")
    }

    function test_buttons_call_back() {
        const item = make({ itemState: "done" })
        for (const [button, signal] of [["reveal", "revealRequested"], ["open", "openRequested"], ["remove", "removeRequested"]]) {
            spyOn(item, signal)
            mouseClick(findChild(item, button))
            compare(spy.count, 1, signal)
        }
    }

    function test_the_context_menu_holds_remove() {
        const item = make({})
        spyOn(item, "removeRequested")
        mouseClick(item, 400, 40, Qt.RightButton)
        const menu = findChild(item, "rowMenu")
        tryVerify(() => menu.opened)
        compare(menu.count, 1)
        compare(menu.itemAt(0).text, "Remove")
        mouseClick(menu.itemAt(0))
        compare(spy.count, 1)
        tryVerify(() => !menu.visible)
    }

    function test_the_remove_button_stands_out_while_the_pointer_is_over_the_row() {
        const item = make({ x: 20, y: 20 })
        const cross = findChild(item, "remove").contentItem.children[0]
        mouseMove(test, 1, 470)
        tryVerify(() => !item.hovering)
        verify(Qt.colorEqual(cross.color, Palette.slate))
        mouseMove(item, 300, 40)
        tryVerify(() => item.hovering)
        verify(Qt.colorEqual(cross.color, Palette.ink))
    }

    function test_a_long_name_is_cut_in_the_middle_but_whole_in_label_and_tip() {
        const name = "A very long name ".repeat(20) + "end.docx"
        const item = make({ name: name, path: "/home/claire/" + name, itemState: "done" })
        verify(findChild(item, "name").truncated)
        verify(item.accessibilitySummary.startsWith(name + ", "))
        compare(findChild(item, "pathTip").text, "/home/claire/" + name)
        mouseMove(findChild(item, "name"), 20, 8)
        tryVerify(() => findChild(item, "pathTip").tip && findChild(item, "pathTip").tip.opened)
        verify(findChild(item, "name").width < findChild(item, "rowStatus").x)
    }

    function test_the_summary_names_everything_in_order() {
        const item = make({ isMacOnly: true, requiresNetwork: true, itemState: "failed", message: "It broke." })
        compare(item.accessibilitySummary,
            "Report.docx, Word → Markdown, EXCELLENT, Needs a Mac app, Needs the internet, Failed")
        compare(item.Accessible.name, item.accessibilitySummary)
        compare(item.Accessible.role, Accessible.ListItem)
        item.itemState = "idle"
        verify(item.accessibilitySummary.endsWith("Needs the internet"))
    }

    function test_the_buttons_of_a_done_row_stand_where_there_is_room() {
        const item = make({ itemState: "done" })
        const links = findChild(item, "links")
        const badge = findChild(item, "badge")
        const middle = part => item.mapFromItem(part, 0, part.height / 2).y
        const isInline = () => Math.abs(middle(links) - middle(badge)) <= 1
        verify(isInline())
        item.width = 420
        verify(!isInline())
        verify(links.y + links.height <= item.body.implicitHeight + 7)
        item.width = 780
        item.note = "Something to know about this conversion. ".repeat(6)
        verify(!isInline())
        const line = findChild(item, "secondLine")
        verify(line.x + line.width < links.x)
        verify(line.width <= 640)
    }

    function test_hostile_names_and_messages_stay_text() {
        const item = make({ name: "<b>x</b>&amp;.md", itemState: "failed", message: "<img src='http://example.org/x'>" })
        compare(findChild(item, "name").textFormat, Text.PlainText)
        compare(findChild(item, "secondLine").textFormat, Text.PlainText)
        verify(item.accessibilitySummary.startsWith("<b>x</b>&amp;.md, "))
    }

    function test_large_text_grows_the_row() {
        const before = make({ note: "A note." }).implicitHeight
        stage.setTextSize(16)
        const item = make({ note: "A note." })
        tryVerify(() => item.implicitHeight > before)
    }
}
