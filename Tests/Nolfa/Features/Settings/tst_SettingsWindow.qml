import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Settings

TestCase {
    id: test
    name: "SettingsWindow"
    when: windowShown
    visible: true
    width: 100
    height: 100

    Component { id: windowType; SettingsWindow {} }

    property var settings: null
    property SettingsWindow shown: null

    function init() {
        surroundings.renew()
        settings = surroundings.settings
        settings.language = "en"
        shown = createTemporaryObject(windowType, test, { settings: settings })
        shown.present()
        tryVerify(() => shown.active)
    }
    function cleanup() {
        shown.close()
        tryVerify(() => !shown.visible)
    }

    function part(name) { return findChild(shown.contentItem, name) }
    function all(item, name, found) {
        found = found || []
        if (item.objectName === name)
            found.push(item)
        for (let index = 0; index < item.children.length; ++index)
            all(item.children[index], name, found)
        return found
    }
    function tabs() { return all(shown.contentItem, "tab") }
    function picker(name) { return findChild(part(name), "picker") }
    function focused() { return shown.contentItem.Window.activeFocusItem }

    function test_the_window_has_its_size_and_keeps_it() {
        compare([shown.width, shown.height], [600, 560])
        compare([shown.minimumWidth, shown.maximumWidth, shown.minimumHeight, shown.maximumHeight], [600, 600, 560, 560])
        compare(shown.color, Palette.paper)
    }

    function test_tabs_name_their_panes_in_both_languages_data() {
        return [{ tag: "English", language: "en", title: "Settings", labels: ["General", "About"] },
            { tag: "French", language: "fr", title: "Réglages", labels: ["Général", "À propos"] }]
    }
    function test_tabs_name_their_panes_in_both_languages(data) {
        settings.language = data.language
        compare(shown.title, data.title)
        compare(tabs().map(tab => tab.Accessible.name), data.labels)
        compare(tabs().map(tab => tab.pane.symbol), ["gearshape", "info.circle"])
        compare(part("tabs").Accessible.name, data.title)
    }

    function test_roles_tell_tabs_from_panes() {
        compare(part("tabs").Accessible.role, Accessible.PageTabList)
        compare(tabs().map(tab => tab.Accessible.role), [Accessible.PageTab, Accessible.PageTab])
        compare(tabs().map(tab => tab.Accessible.selected), [true, false])
        compare(tabs()[0].pane.Accessible.name, "General")
        compare(findChild(part("languageSection"), "heading").Accessible.role, Accessible.Heading)
        compare(part("languageSection").Accessible.role, Accessible.Grouping)
    }

    function test_a_click_chooses_a_tab() {
        mouseClick(tabs()[1])
        compare(shown.currentIndex, 1)
        verify(tabs()[1].pane.visible)
        verify(!tabs()[0].pane.visible)
        verify(!tabs()[1].looksFocused)
        compare(tabs().map(tab => tab.checked), [false, true])
        compare(tabs().map(tab => tab.Accessible.selected), [false, true])
    }

    function test_a_tab_is_large_enough() {
        for (const tab of tabs())
            verify(tab.width >= 88 && tab.height >= 60)
    }

    function test_a_tab_answers_the_pointer() {
        const [first, second] = tabs()
        tryCompare(first.background, "color", Palette.mist)
        mouseMove(second, 20, 20)
        tryVerify(() => second.background.color.a > 0.4)
        compare(second.foreground, Palette.ink)
        mouseMove(shown.contentItem, 300, 500)
        tryVerify(() => second.background.color.a === 0)
    }

    function test_arrows_move_the_choice_and_stop_at_the_ends() {
        keyClick(Qt.Key_Right)
        compare(shown.currentIndex, 1)
        compare(focused(), tabs()[1])
        verify(tabs()[1].looksFocused)
        keyClick(Qt.Key_Right)
        compare(shown.currentIndex, 1)
        keyClick(Qt.Key_Left)
        compare(shown.currentIndex, 0)
        keyClick(Qt.Key_Left)
        compare(shown.currentIndex, 0)
        keyClick(Qt.Key_End)
        compare(shown.currentIndex, 1)
        keyClick(Qt.Key_Home)
        compare(shown.currentIndex, 0)
    }

    function test_escape_closes_the_window() {
        keyClick(Qt.Key_Escape)
        tryVerify(() => !shown.visible)
    }

    function test_the_desktops_own_key_closes_the_window() {
        keySequence(StandardKey.Close)
        tryVerify(() => !shown.visible)
    }

    function test_escape_closes_an_open_list_first() {
        picker("language").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryVerify(() => picker("language").popup.opened)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !picker("language").popup.visible)
        verify(shown.visible)
        compare(settings.language, "en")
    }

    function test_tab_walks_through_the_controls_of_the_pane_on_show() {
        settings.outputMode = "custom"
        const expected = [picker("language"), picker("outputMode"), part("chooseFolder"), part("reveal"), tabs()[0]]
        compare(focused(), tabs()[0])
        for (const item of expected) {
            keyClick(Qt.Key_Tab)
            compare(focused(), item)
            verify(item.looksFocused)
        }
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
        compare(focused(), part("reveal"))
    }

    function test_a_pane_that_is_not_on_show_is_not_reached() {
        surroundings.settings.outputMode = "besideOriginal"
        keyClick(Qt.Key_Right)
        keyClick(Qt.Key_Tab)
        // Nothing on this pane takes the keyboard as long as there is no link.
        compare(focused(), tabs()[1])
    }
}
