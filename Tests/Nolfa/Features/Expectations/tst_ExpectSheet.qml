import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Expectations

TestCase {
    id: test
    name: "ExpectSheet"
    when: windowShown
    visible: true
    width: 820
    height: 560

    // The window of the tests is as small as this item asks for; a sheet lives in its overlay.
    Component { id: sheetType; ExpectSheet {} }
    Component {
        id: underneath
        NolfaButton { text: "Below"; onClicked: ++clicks; property int clicks: 0 }
    }
    SignalSpy { id: closed; signalName: "closed" }

    readonly property var words: ({
        title: ["What to expect", "À quoi s’attendre"],
        lead: ["Markdown is the hub of every conversion. Going **to** Markdown depends on how structured the original is. Going **from** Markdown is consistently high quality.",
            "Markdown est le pivot de toutes les conversions. La conversion **vers** Markdown dépend du degré de structure de l’original. La conversion **depuis** Markdown est d’une qualité constante."],
        why: ["Why Markdown? A Markdown file is plain text, so it stays extremely light, opens anywhere, and never breaks. It is also what AI assistants read best: the same content uses far fewer tokens than a PDF or Word file, so conversations go further.",
            "Pourquoi Markdown\u00a0? Un fichier Markdown est du texte brut\u00a0: il reste extrêmement léger, s’ouvre partout et ne se corrompt pas. C’est aussi ce que les assistants d’IA lisent le mieux\u00a0: le même contenu consomme bien moins de jetons qu’un PDF ou qu’un fichier Word, et les conversations vont plus loin."],
        directTitle: ["DIRECT CONVERSIONS", "CONVERSIONS DIRECTES"],
        appsNote: ["Pages, Keynote, and Numbers convert through those apps on your Mac, so they need to be installed. These conversions are macOS only.",
            "Pages, Keynote et Numbers sont convertis par ces applications sur votre Mac, qui doivent donc être installées. Ces conversions n’existent que sur macOS."],
        googleNote: ["Google documents are fetched from Google Drive. A document shared by link opens without an account. A private document needs you to sign in, in Settings. Google formats are read-only sources: Nolfa converts from them, never into them.",
            "Les documents Google sont récupérés depuis Google Drive. Un document partagé par lien s’ouvre sans compte. Un document privé demande une connexion à votre compte, dans les Réglages. Les formats Google sont des sources en lecture seule\u00a0: Nolfa convertit depuis ces documents, jamais vers eux."],
        done: ["Done", "Terminé"],
    })
    readonly property string directLine: "Word ⇄ PDF · Excel ⇄ PDF · PDF → PowerPoint · Word ⇄ PowerPoint · Word ⇄ Excel · Word ⇄ Pages · Excel ⇄ Numbers · PowerPoint ⇄ Keynote · Pages → PDF · Numbers → PDF · Keynote → PDF · Google Doc → Word · Google Sheet → Excel · Google Slides → PowerPoint · Image → PDF · Image → Word · Google Doc → PDF · Google Sheet → PDF · Google Slides → PDF"

    function init() { Language.current = "en" }
    function cleanup() { mouseMove(test, 1, 1) }

    function openSheet(): ExpectSheet {
        const sheet = createTemporaryObject(sheetType, test)
        closed.target = sheet
        closed.clear()
        sheet.open()
        tryVerify(() => sheet.opened)
        return sheet
    }

    function all(item, name, found) {
        found = found || []
        if (item.objectName === name)
            found.push(item)
        for (let index = 0; index < item.children.length; ++index)
            all(item.children[index], name, found)
        return found
    }
    function part(sheet, name) { return findChild(sheet.contentItem, name) }
    function rows(sheet) { return all(sheet.contentItem, "row") }

    function test_texts_in_both_languages_data() {
        return [{ tag: "English", language: "en", index: 0 }, { tag: "French", language: "fr", index: 1 }]
    }
    function test_texts_in_both_languages(data) {
        const sheet = openSheet()
        Language.current = data.language
        for (const name in words)
            compare(part(sheet, name).text, words[name][data.index], name)
        compare(sheet.title, words.title[data.index])
        compare(all(sheet.contentItem, "header").map(header => header.text), ["FORMAT", "→ MARKDOWN", "MARKDOWN →"])
        const direct = part(sheet, "direct")
        compare(direct.Accessible.name, directLine)
        compare(direct.text.replace(/\u00a0/g, " "), directLine)
    }

    function test_emphasis_shows_as_bold() {
        const sheet = openSheet()
        const lead = part(sheet, "lead")
        compare(lead.textFormat, Text.MarkdownText)
        verify(!lead.Accessible.name.includes("*"))
        compare(lead.Accessible.name, words.lead[0].replace(/\*/g, ""))
    }

    function test_the_table_shows_each_format_with_its_chips_and_tiers() {
        const sheet = openSheet()
        const shown = rows(sheet).map(row => [findChild(row, "name").text,
            findChild(row, "mac").visible ? "MAC" : findChild(row, "internet").visible ? "INTERNET" : "",
            cell(row, "toMarkdown"), cell(row, "fromMarkdown")])
        compare(shown, [["Word", "", "EXCELLENT", "EXCELLENT"], ["PDF", "", "GOOD", "EXCELLENT"],
            ["PowerPoint", "", "GOOD", "EXCELLENT"], ["Excel", "", "GOOD", "GOOD"], ["Pages", "MAC", "GOOD", "GOOD"],
            ["Keynote", "MAC", "GOOD", "GOOD"], ["Numbers", "MAC", "GOOD", "GOOD"],
            ["Google Doc", "INTERNET", "GOOD", "–"], ["Google Sheet", "INTERNET", "GOOD", "–"],
            ["Google Slides", "INTERNET", "GOOD", "–"], ["Image", "", "BEST-EFFORT", "–"]])
    }

    function cell(row, name) {
        const cell = findChild(row, name)
        const badge = findChild(cell, "badge")
        const dash = findChild(cell, "dash")
        verify(badge.visible !== dash.visible)
        return badge.visible ? badge.label : dash.text
    }

    function test_a_dash_is_set_in_the_mono_font_at_size_11() {
        const sheet = openSheet()
        const dash = findChild(findChild(rows(sheet)[7], "fromMarkdown"), "dash")
        compare(dash.font.family, "IBM Plex Mono")
        compare(dash.font.pixelSize, 11)
    }

    function test_a_change_of_language_rebuilds_the_sheet_with_the_same_table() {
        const sheet = openSheet()
        Language.current = "fr"
        compare(rows(sheet).map(row => cell(row, "toMarkdown")),
            ["EXCELLENT", "BON", "BON", "BON", "BON", "BON", "BON", "BON", "BON", "BON", "AU MIEUX"])
        compare(rows(sheet)[4].Accessible.name, "Pages, Nécessite une application Mac, → Markdown BON, Markdown → BON")
        Language.current = "en"
        compare(rows(sheet)[4].Accessible.name, "Pages, Needs a Mac app, → Markdown GOOD, Markdown → GOOD")
        compare(rows(sheet)[4].Accessible.role, Accessible.ListItem)
    }

    function test_a_chip_tells_what_it_means_data() {
        return [{ tag: "app", row: 4, chip: "mac", text: "MAC", en: "Needs a Mac app", fr: "Nécessite une application Mac" },
            { tag: "network", row: 7, chip: "internet", text: "INTERNET", en: "Needs the internet", fr: "Nécessite une connexion" }]
    }
    function test_a_chip_tells_what_it_means(data) {
        const sheet = openSheet()
        const chip = findChild(rows(sheet)[data.row], data.chip)
        compare(chip.text, data.text)
        compare(chip.toolTip, data.en)
        Language.current = "fr"
        const again = findChild(rows(sheet)[data.row], data.chip)
        compare(again.toolTip, data.fr)
        sheet.view.body.scrollBy(150)
        waitForRendering(sheet.view.body)
        mouseMove(again, 5, 5)
        const loader = findChild(again, "toolTipLoader")
        tryVerify(() => loader.item !== null && loader.item.opened)
        compare(loader.item.text, data.fr)
    }

    function test_the_sheet_has_its_width_and_leaves_24_above_and_below() {
        const sheet = openSheet()
        const room = sheet.parent
        verify(sheet.width >= 520 && sheet.width <= 580)
        compare(sheet.height, Math.min(room.height - 48, sheet.view.naturalHeight))
        compare(sheet.x, Math.round((room.width - sheet.width) / 2))
        tryCompare(sheet, "lift", 0)
        compare(sheet.y, Math.round((room.height - sheet.height) / 2))
    }

    function test_only_the_middle_scrolls() {
        const sheet = openSheet()
        const body = sheet.view.body
        verify(body.overflows)
        const doneAt = part(sheet, "done").mapToItem(null, 0, 0)
        const titleAt = part(sheet, "title").mapToItem(null, 0, 0)
        body.scrollBy(1e6)
        compare(body.flickable.contentY, body.flickable.contentHeight - body.height)
        compare(part(sheet, "done").mapToItem(null, 0, 0), doneAt)
        compare(part(sheet, "title").mapToItem(null, 0, 0), titleAt)
    }

    function test_the_button_closes_the_sheet() {
        const sheet = openSheet()
        mouseClick(part(sheet, "done"))
        tryCompare(closed, "count", 1)
        verify(!sheet.visible)
    }

    function test_return_enter_and_escape_close_the_sheet_wherever_the_focus_is_data() {
        const data = []
        for (const key of [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Escape]) {
            for (const onButton of [false, true])
                data.push({ tag: key.toString(16) + (onButton ? " on the button" : " on the text"), key: key, onButton: onButton })
        }
        return data
    }
    function test_return_enter_and_escape_close_the_sheet_wherever_the_focus_is(data) {
        const sheet = openSheet()
        verify(sheet.view.body.activeFocus)
        if (data.onButton)
            part(sheet, "done").forceActiveFocus(Qt.TabFocusReason)
        keyClick(data.key)
        tryCompare(closed, "count", 1)
    }

    function test_the_keyboard_alone_reads_the_sheet_and_leaves_it() {
        const sheet = openSheet()
        const body = sheet.view.body
        const done = part(sheet, "done")
        verify(!body.looksFocused)
        keyClick(Qt.Key_Down)
        compare(body.flickable.contentY, 40)
        keyClick(Qt.Key_Up)
        compare(body.flickable.contentY, 0)
        keyClick(Qt.Key_PageDown)
        compare(body.flickable.contentY, body.height - 40)
        keyClick(Qt.Key_End)
        compare(body.flickable.contentY, body.flickable.contentHeight - body.height)
        keyClick(Qt.Key_Home)
        compare(body.flickable.contentY, 0)
        keyClick(Qt.Key_Tab)
        verify(done.activeFocus && done.looksFocused)
        keyClick(Qt.Key_Tab)
        verify(body.activeFocus && body.looksFocused)
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
        verify(done.activeFocus)
        keyClick(Qt.Key_Space)
        tryCompare(closed, "count", 1)
    }

    function test_the_focus_returns_and_nothing_below_is_reached_meanwhile() {
        const button = createTemporaryObject(underneath, test, { x: 2, y: 2 })
        button.forceActiveFocus(Qt.TabFocusReason)
        const sheet = openSheet()
        verify(!button.activeFocus)
        mouseClick(button)
        compare(button.clicks, 0)
        verify(sheet.opened)
        keyClick(Qt.Key_Escape)
        tryCompare(closed, "count", 1)
        tryVerify(() => button.activeFocus)
        verify(button.looksFocused)
    }

    function test_it_can_be_shown_by_a_binding_again_and_again() {
        const sheet = createTemporaryObject(bound, test)
        for (let turn = 0; turn < 2; ++turn) {
            sheet.wanted = true
            tryVerify(() => sheet.opened)
            keyClick(Qt.Key_Escape)
            tryCompare(sheet, "wanted", false)
            tryVerify(() => !sheet.visible)
        }
    }
    Component {
        id: bound
        ExpectSheet {
            property bool wanted: false
            visible: wanted
            onClosed: wanted = false
        }
    }

    function test_roles_and_names() {
        const sheet = openSheet()
        compare(sheet.contentItem.parent.Accessible.name, "What to expect")
        compare(part(sheet, "title").Accessible.role, Accessible.Heading)
        compare(part(sheet, "directTitle").Accessible.role, Accessible.Heading)
        compare(part(sheet, "done").Accessible.role, Accessible.Button)
        compare(part(sheet, "done").Accessible.name, "Done")
        compare(part(sheet, "table").Accessible.role, Accessible.List)
        compare(part(sheet, "why").Accessible.name, words.why[0])
    }
}
