import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Settings

TestCase {
    id: test
    name: "AboutTab"
    when: windowShown
    visible: true
    width: 600
    height: 484

    Component { id: paneType; AboutTab { width: 600; height: 484 } }

    function init() {
        surroundings.renew()
        Language.current = "en"
    }

    function make(values) {
        return createTemporaryObject(paneType, test, { info: surroundings.about(values || {}) })
    }

    readonly property string page: "https://example.org/tip"

    function test_texts_in_both_languages_data() {
        return [{ tag: "English", language: "en", label: "About", motto: "Documents ⇄ Markdown. Built on the Tesmar design system.",
                support: "Support", title: "Support Nolfa",
                reason: "Nolfa is free. If it saved you time, you can leave something. It is optional, it unlocks nothing, and Nolfa stays exactly the same.",
                tip: "Leave a tip", tipNote: "Opens a secure payment page in your browser. Nolfa stays free for everyone.",
                soon: "A support link will appear here soon.",
                legal: "Conversions use bundled open-source tools (pandoc, GPL) run as separate processes." },
            { tag: "French", language: "fr", label: "À propos", motto: "Documents ⇄ Markdown. Construit sur le système de design Tesmar.",
                support: "Soutien", title: "Soutenir Nolfa",
                reason: "Nolfa est gratuit. S’il vous a fait gagner du temps, vous pouvez laisser quelque chose. C’est facultatif, cela ne débloque rien, et Nolfa reste exactement le même.",
                tip: "Faire un don", tipNote: "Ouvre une page de paiement sécurisée dans votre navigateur. Nolfa reste gratuit pour tout le monde.",
                soon: "Un lien de soutien apparaîtra ici prochainement.",
                legal: "Les conversions utilisent des outils libres fournis avec l’application (pandoc, sous licence GPL), exécutés comme des processus distincts." }]
    }
    function test_texts_in_both_languages(data) {
        const pane = make({ CFBundleShortVersionString: "2.5.1", NolfaDonationURL: page })
        Language.current = data.language
        compare(pane.label, data.label)
        compare(findChild(pane, "aboutSection").title, data.label)
        compare(findChild(pane, "version").text, "Nolfa 2.5.1")
        compare(findChild(pane, "motto").text, data.motto)
        compare(findChild(pane, "supportSection").title, data.support)
        const support = findChild(pane, "support")
        compare(findChild(support, "title").text, data.title)
        compare(findChild(support, "reason").text, data.reason)
        compare(findChild(support, "tip").text, data.tip)
        compare(findChild(support, "tipNote").text, data.tipNote)
        compare(findChild(support, "soonNote").text, data.soon)
        compare(findChild(pane, "legal").text, data.legal)
        compare(findChild(pane, "legal").Accessible.name, data.legal)
    }

    function test_the_link_is_offered_only_when_there_is_one_data() {
        return [{ tag: "an address", values: { NolfaDonationURL: page }, isReal: true },
            { tag: "none", values: {}, isReal: false },
            { tag: "a placeholder", values: { NolfaDonationURL: "https://example.org/REPLACE_WITH_PAGE" }, isReal: false }]
    }
    function test_the_link_is_offered_only_when_there_is_one(data) {
        const support = findChild(make(data.values), "support")
        compare(findChild(support, "tip").visible, data.isReal)
        compare(findChild(support, "tipNote").visible, data.isReal)
        compare(findChild(support, "soonNote").visible, !data.isReal)
        verify(findChild(support, "mark").visible)
    }

    function test_the_button_opens_the_payment_page_by_pointer_and_keyboard() {
        const tip = findChild(make({ NolfaDonationURL: page }), "tip")
        mouseClick(tip)
        compare(surroundings.opened, [page])
        tip.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(surroundings.opened, [page, page])
    }

    function test_nothing_is_wider_than_its_pane_data() {
        return [{ tag: "en" }, { tag: "fr" }]
    }
    function test_nothing_is_wider_than_its_pane(data) {
        const pane = make({ CFBundleShortVersionString: "0.1.0", NolfaDonationURL: page })
        Language.current = data.tag
        for (const name of ["motto", "reason", "tipNote", "legal"]) {
            const item = findChild(pane, name)
            verify(item.contentWidth <= item.width, name)
            verify(item.mapToItem(pane, item.width, 0).x <= pane.width - 40, name)
        }
    }

    function test_the_applications_own_bundle_is_the_default() {
        const pane = createTemporaryObject(paneType, test)
        verify(/^Nolfa \d+\.\d+/.test(findChild(pane, "version").text))
    }
}
