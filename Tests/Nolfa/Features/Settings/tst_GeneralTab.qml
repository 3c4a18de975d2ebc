import NolfaKit.DesignSystem
import QtQuick
import QtTest
import Nolfa.Features.Settings

TestCase {
    id: test
    name: "GeneralTab"
    when: windowShown
    visible: true
    width: 600
    height: 484

    Component { id: paneType; GeneralTab { width: 600; height: 484 } }

    property var settings: null
    property GeneralTab pane: null

    function init() {
        surroundings.renew()
        settings = surroundings.settings
        settings.language = "en"
        pane = createTemporaryObject(paneType, test, { settings: settings })
    }
    function cleanup() { mouseMove(test, 1, 1) }

    function part(name) { return findChild(pane, name) }
    function picker(name) { return findChild(part(name), "picker") }

    function test_texts_in_both_languages_data() {
        return [{ tag: "English", language: "en", label: "General", language_: "Language", interface_: "Interface language",
                languages: ["System", "English", "Français"], note: "The language Nolfa uses, whatever your Mac is set to.",
                files: "Converted files", save: "Save converted files", modes: ["Next to the original", "In a folder I choose"],
                choose: "Choose folder…", reveal: "Show the file in the Finder after converting",
                message: "Choose the folder converted files are saved in.", prompt: "Choose" },
            { tag: "French", language: "fr", label: "Général", language_: "Langue", interface_: "Langue de l’interface",
                languages: ["Système", "English", "Français"], note: "La langue de Nolfa, quelle que soit celle de votre Mac.",
                files: "Fichiers convertis", save: "Enregistrer les fichiers convertis",
                modes: ["À côté de l’original", "Dans un dossier de mon choix"], choose: "Choisir un dossier…",
                reveal: "Afficher le fichier dans le Finder après la conversion",
                message: "Choisissez le dossier où les fichiers convertis sont enregistrés.", prompt: "Choisir" }]
    }
    function test_texts_in_both_languages(data) {
        settings.language = data.language
        compare(pane.label, data.label)
        compare(part("languageSection").title, data.language_)
        compare(findChild(part("language"), "label").text, data.interface_)
        compare(picker("language").Accessible.name, data.interface_)
        compare(picker("language").model.map(choice => choice.text), data.languages)
        compare(part("languageNote").text, data.note)
        compare(part("filesSection").title, data.files)
        compare(findChild(part("outputMode"), "label").text, data.save)
        compare(picker("outputMode").Accessible.name, data.save)
        compare(picker("outputMode").model.map(choice => choice.text), data.modes)
        compare(part("chooseFolder").text, data.choose)
        compare(part("reveal").text, data.reveal)
        compare(part("reveal").Accessible.name, data.reveal)
        compare(part("reveal").Accessible.role, Accessible.CheckBox)
        const panel = findChild(pane, "folderPanel")
        compare(panel.title, data.message)
        compare(panel.acceptLabel, data.prompt)
    }

    function test_pickers_show_what_is_set() {
        compare(picker("language").currentValue, "en")
        compare(picker("outputMode").currentValue, "besideOriginal")
        settings.language = "fr"
        settings.outputMode = "custom"
        compare(picker("language").displayText, "Français")
        compare(picker("outputMode").displayText, "Dans un dossier de mon choix")
        settings.language = "system"
        compare(picker("language").currentValue, "system")
        compare(picker("outputMode").currentValue, "custom")
    }

    function test_the_keyboard_chooses_the_language_and_all_texts_follow() {
        picker("language").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryVerify(() => picker("language").popup.opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryCompare(settings, "language", "fr")
        compare(surroundings.stored("nolfa.language"), "fr")
        compare(picker("language").displayText, "Français")
        compare(part("languageSection").title, "Langue")
        tryVerify(() => !picker("language").popup.visible)
        verify(picker("language").activeFocus)
        keyClick(Qt.Key_Up)
        tryCompare(settings, "language", "en")
        compare(part("languageSection").title, "Language")
        compare(picker("language").displayText, "English")
    }

    function test_the_pointer_chooses_where_files_go() {
        verify(!part("outputFolder").visible)
        mouseClick(picker("outputMode"))
        tryVerify(() => picker("outputMode").popup.opened)
        waitForRendering(picker("outputMode").popup.contentItem)
        mouseClick(picker("outputMode").popup.contentItem.itemAtIndex(1))
        tryCompare(settings, "outputMode", "custom")
        compare(surroundings.stored("nolfa.outputMode"), "custom")
        verify(part("outputFolder").visible)
        verify(!findChild(part("outputFolder"), "folder").visible)
    }

    function test_the_chosen_folder_is_shown_and_called_by_its_whole_path() {
        settings.outputMode = "custom"
        settings.customOutputDirectoryPath = "/srv/a folder/é"
        const folder = findChild(part("outputFolder"), "folder")
        verify(folder.visible)
        compare(findChild(folder, "path").text, "/srv/a folder/é")
        compare(folder.Accessible.name, "/srv/a folder/é")
        settings.outputMode = "besideOriginal"
        verify(!folder.visible)
    }

    function test_a_long_path_gives_way_in_its_middle() {
        settings.outputMode = "custom"
        settings.customOutputDirectoryPath = "/srv" + "/a folder with a long name".repeat(8)
        const path = findChild(part("outputFolder"), "path")
        verify(path.truncated)
        const button = part("chooseFolder")
        verify(path.mapToItem(pane, path.width, 0).x <= button.mapToItem(pane, 0, 0).x)
        verify(button.mapToItem(pane, button.width, 0).x <= pane.width - 40)
    }

    function test_the_check_box_stores_by_pointer_and_keyboard() {
        const box = part("reveal")
        compare(box.checked, false)
        mouseClick(box)
        compare(settings.revealAfterConvert, true)
        compare(String(surroundings.stored("nolfa.revealAfterConvert")), "true")
        box.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(settings.revealAfterConvert, false)
        settings.revealAfterConvert = true
        compare(box.checked, true)
    }

    function openPanel() {
        settings.outputMode = "custom"
        mouseClick(part("chooseFolder"))
        const panel = findChild(pane, "folderPanel")
        tryVerify(() => panel.visible)
        return panel
    }

    function test_choosing_a_folder_switches_the_mode_to_custom() {
        const chosen = surroundings.makeFolder("chosen")
        const panel = openPanel()
        settings.outputMode = "besideOriginal"
        panel.selectedFolder = chosen
        panel.accept()
        tryCompare(settings, "customOutputDirectoryPath", surroundings.folder + "/chosen")
        compare(settings.outputMode, "custom")
    }

    function test_cancelling_the_folder_panel_leaves_mode_and_path_as_they_were() {
        settings.customOutputDirectoryPath = surroundings.folder
        const panel = openPanel()
        panel.selectedFolder = surroundings.makeFolder("other")
        panel.reject()
        tryVerify(() => !panel.visible)
        compare(settings.customOutputDirectoryPath, surroundings.folder)
        compare(settings.outputMode, "custom")
    }

    function test_a_folder_that_is_gone_can_be_replaced() {
        settings.customOutputDirectoryPath = surroundings.folder + "/gone"
        const panel = openPanel()
        panel.selectedFolder = surroundings.makeFolder("new")
        panel.accept()
        tryCompare(settings, "customOutputDirectoryPath", surroundings.folder + "/new")
    }

    function test_the_folder_panel_opens_on_the_folder_that_is_set() {
        const set = surroundings.makeFolder("set")
        settings.customOutputDirectoryPath = surroundings.folder + "/set"
        const panel = openPanel()
        compare(panel.currentFolder.toString(), set.toString())
        panel.reject()
        tryVerify(() => !panel.visible)
    }
}
