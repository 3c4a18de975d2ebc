import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Dialogs
import Nolfa.Features.Settings

/// The settings that are stored.
SettingsPane {
    id: root

    required property AppSettings settings
    readonly property bool hasCustomFolder: settings.outputMode === "custom"

    /// Lets the user choose where converted files go.
    function chooseFolder() {
        if (settings.customOutputDirectoryPath !== "")
            folderPanel.currentFolder = settings.customOutputDirectoryURL
        folderPanel.open()
    }

    label: L10n.T("General", "Général")
    symbol: "gearshape"

    SettingsSection {
        objectName: "languageSection"
        title: L10n.T("Language", "Langue")

        SettingsPicker {
            objectName: "language"
            title: L10n.T("Interface language", "Langue de l’interface")
            choices: root.settings.languages
            value: root.settings.language
            onPicked: value => root.settings.language = value
        }
        Note {
            objectName: "languageNote"
            width: parent.width
            topPadding: 8
            en: "The language Nolfa uses, whatever your Mac is set to."
            fr: "La langue de Nolfa, quelle que soit celle de votre Mac."
        }
    }

    SettingsSection {
        objectName: "filesSection"
        title: L10n.T("Converted files", "Fichiers convertis")

        SettingsPicker {
            objectName: "outputMode"
            title: L10n.T("Save converted files", "Enregistrer les fichiers convertis")
            choices: root.settings.outputModes
            value: root.settings.outputMode
            onPicked: value => root.settings.outputMode = value
        }
        Item { width: 1; height: 12 }
        OutputFolderRow {
            objectName: "outputFolder"
            visible: root.hasCustomFolder
            shortPath: root.settings.shortCustomOutputDirectory
            path: root.settings.customOutputDirectoryPath
            onChooseRequested: root.chooseFolder()
        }
        Item { width: 1; height: 12; visible: root.hasCustomFolder }
        NolfaCheckBox {
            objectName: "reveal"
            width: Math.min(implicitWidth, parent.width)
            text: L10n.T("Show the file in the Finder after converting", "Afficher le fichier dans le Finder après la conversion")
            checked: root.settings.revealAfterConvert
            onToggled: root.settings.revealAfterConvert = checked
        }
    }

    FolderDialog {
        id: folderPanel

        objectName: "folderPanel"
        title: L10n.T("Choose the folder converted files are saved in.", "Choisissez le dossier où les fichiers convertis sont enregistrés.")
        acceptLabel: L10n.T("Choose", "Choisir")
        onAccepted: root.settings.outputFolderChosen(selectedFolder)
    }
}
