import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.App

TestCase {
    id: test
    name: "RootView"
    when: windowShown
    visible: true
    width: 820
    height: 560

    Component {
        id: root
        RootView {
            anchors.fill: parent
            app: stage.app
            // The panel itself needs a desktop, or shows one of Qt's own.
            opensPanel: false
        }
    }
    SignalSpy { id: panel; signalName: "openPanelRequested" }
    SignalSpy { id: settings; signalName: "settingsRequested" }
    SignalSpy { id: about; signalName: "aboutRequested" }
    property RootView view: null

    function init() {
        stage.restart()
        view = createTemporaryObject(root, test)
        view.forceActiveFocus()
        panel.target = stage.app
        settings.target = view
        about.target = view
        for (const spy of [panel, settings, about])
            spy.clear()
    }
    function cleanup() { stage.setTextSize(0) }

    function part(name) { return findChild(view, name) }
    function menuTexts(index) {
        const menu = part("menus").menuAt(index)
        const texts = []
        for (let i = 0; i < menu.count; ++i)
            texts.push(menu.itemAt(i).Accessible.name)
        return texts
    }

    function test_opens_on_the_convert_tool() {
        verify(part("convertView").visible)
        compare(part("tools").currentIndex, 0)
        compare(part("tools").title, "Tool")
    }

    function test_the_menus_data() {
        return [
            { tag: "en", file: ["Open…", "Settings", "Quit"], tools: ["Convert", "Compare", "Watermark"], help: ["What to expect", "About Nolfa"], bar: ["File", "Tools", "Help"] },
            { tag: "fr", file: ["Ouvrir…", "Réglages", "Quitter"], tools: ["Conversion", "Comparaison", "Filigrane"], help: ["À quoi s’attendre", "À propos de Nolfa"], bar: ["Fichier", "Outils", "Aide"] },
        ]
    }
    function test_the_menus(data) {
        stage.app.settings.language = data.tag
        compare(menuTexts(0), data.file)
        compare(menuTexts(1), data.tools)
        compare(menuTexts(2), data.help)
        compare([0, 1, 2].map(i => part("menus").itemAt(i).Accessible.name), data.bar)
        compare(part("tools").labels, data.tools)
        compare(part("expectations").text, data.help[0])
        compare(part("settings").text, data.file[1])
    }

    function test_keys_choose_the_tool() {
        for (const [key, index] of [[Qt.Key_2, 1], [Qt.Key_3, 2], [Qt.Key_1, 0]]) {
            keyClick(key, Qt.ControlModifier)
            compare(stage.app.tool, index)
            compare(part("tools").currentIndex, index)
            compare(part("convertView").visible, index === 0)
        }
    }

    function test_the_switcher_chooses_the_tool_and_follows_it() {
        mouseClick(part("tools"), part("tools").width - 20, 18)
        compare(stage.app.tool, 2)
        compare(part("comingView").item.title, "Watermark")
        part("tools").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Left)
        compare(stage.app.tool, 1)
        compare(part("comingView").item.title, "Compare")
        stage.app.tool = 0
        compare(part("tools").currentIndex, 0)
    }

    function test_a_switch_of_tools_keeps_the_list() {
        stage.add(["a.md", "b.md"])
        stage.app.tool = 1
        stage.app.tool = 0
        compare(part("list").count, 2)
    }

    function test_control_o_asks_for_files_from_every_tool() {
        keyClick(Qt.Key_O, Qt.ControlModifier)
        compare(panel.count, 1)
        stage.app.tool = 1
        keyClick(Qt.Key_O, Qt.ControlModifier)
        compare(panel.count, 2)
        compare(stage.app.tool, 1, "as long as nothing is chosen")
        stage.app.filesChosen(stage.urls(["a.md"]))
        compare(stage.app.tool, 0)
        compare(part("list").count, 1)
        mouseClick(part("choose"))
        compare(panel.count, 3)
    }

    function test_buttons_and_keys_ask_for_settings_and_sheet() {
        mouseClick(part("settings"))
        keyClick(Qt.Key_Comma, Qt.ControlModifier)
        compare(settings.count, 2)
        verify(!stage.app.showExpectations)
        mouseClick(part("expectations"))
        verify(stage.app.showExpectations)
        tryVerify(() => part("sheet").item.opened)
        keyClick(Qt.Key_Return)
        tryVerify(() => !part("sheet").item.visible)
        verify(!stage.app.showExpectations)
        stage.app.showExpectations = true
        tryVerify(() => part("sheet").item.opened)
        stage.app.showExpectations = false
        tryVerify(() => !part("sheet").item.visible)
    }

    function test_under_the_sheet_nothing_is_done() {
        stage.add(["a.md"])
        stage.app.showExpectations = true
        tryVerify(() => part("sheet").item.opened)
        keyClick(Qt.Key_Delete, Qt.ControlModifier)
        keyClick(Qt.Key_2, Qt.ControlModifier)
        compare(part("list").count, 1)
        compare(stage.app.tool, 0)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !part("sheet").item.visible)
        compare(stage.calls, [])
    }

    function test_menus_open_by_pointer_and_by_keyboard() {
        const bar = part("menus")
        mouseClick(bar.itemAt(2))
        tryVerify(() => bar.menuAt(2).opened)
        mouseClick(bar.menuAt(2).itemAt(1))
        compare(about.count, 1)
        tryVerify(() => !bar.menuAt(2).visible)
        keyClick(Qt.Key_T, Qt.AltModifier)
        tryVerify(() => bar.menuAt(1).opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryCompare(stage.app, "tool", 1)
        tryVerify(() => !bar.menuAt(1).visible)
        keyClick(Qt.Key_F10)
        tryVerify(() => bar.menuAt(0).opened)
        keyClick(Qt.Key_Right)
        tryVerify(() => bar.menuAt(1).opened)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !bar.menuAt(1).visible)
    }

    function test_return_in_an_open_menu_converts_nothing() {
        stage.add(["a.md"])
        keyClick(Qt.Key_F10)
        tryVerify(() => part("menus").menuAt(0).opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryVerify(() => !part("menus").menuAt(0).visible)
        compare(stage.calls, [])
    }

    function test_the_bars_fit_data() {
        return [{ tag: "en 820", language: "en", width: 820, size: 0 }, { tag: "fr 720", language: "fr", width: 720, size: 0 },
            { tag: "fr 720 large", language: "fr", width: 720, size: 13 }]
    }
    function test_the_bars_fit(data) {
        stage.setTextSize(data.size)
        stage.app.settings.language = data.language
        view.anchors.fill = undefined
        view.width = data.width
        view.height = 420
        const picker = part("tools")
        const actions = part("expectations").parent
        verify(picker.x >= 12)
        verify(picker.x + picker.width + 16 <= actions.x + 0.5, picker.x + " " + picker.width + " " + actions.x)
    }

    function test_tab_begins_with_the_switcher() {
        part("tools").forceActiveFocus(Qt.TabFocusReason)
        const seen = []
        for (let i = 0; i < 3; ++i) {
            keyClick(Qt.Key_Tab)
            seen.push(view.Window.activeFocusItem.objectName)
        }
        compare(seen, ["expectations", "settings", "choose"])
    }
}
