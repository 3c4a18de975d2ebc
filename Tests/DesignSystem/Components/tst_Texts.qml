import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Texts"
    when: windowShown
    visible: true
    width: 400
    height: 200

    Component { id: plain; TX { en: "Convert **to** Markdown"; fr: "Convertir **en** Markdown" } }
    Component { id: marked; TXm { en: "Convert **to** Markdown"; fr: "Convertir **en** Markdown" } }
    Component { id: undone; TXm { en: "[nothing is left]: #"; fr: "" } }

    function init() { Language.current = "en" }

    function test_TX_shows_the_text_as_it_stands_in_both_languages() {
        const item = createTemporaryObject(plain, test)
        compare(item.textFormat, Text.PlainText)
        compare(item.text, "Convert **to** Markdown")
        compare(item.Accessible.name, item.text)
        Language.current = "fr"
        compare(item.text, "Convertir **en** Markdown")
        compare(item.Accessible.name, item.text)
    }

    function test_TXm_reads_Markdown() {
        const item = createTemporaryObject(marked, test)
        compare(item.textFormat, Text.MarkdownText)
        compare(item.Accessible.name, "Convert to Markdown")
        const raw = createTemporaryObject(plain, test)
        verify(item.implicitWidth < raw.implicitWidth)
        compare(item.implicitHeight, raw.implicitHeight)
        Language.current = "fr"
        compare(item.Accessible.name, "Convertir en Markdown")
    }

    function test_TXm_with_a_string_that_does_not_parse_shows_it_raw() {
        const item = createTemporaryObject(undone, test)
        compare(item.textFormat, Text.PlainText)
        compare(item.text, "[nothing is left]: #")
        verify(item.implicitWidth > 0)
    }
}
