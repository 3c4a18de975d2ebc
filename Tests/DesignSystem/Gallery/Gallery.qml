import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Layouts

/// Every component in every state, for people to look at.
Rectangle {
    id: root

    readonly property var states5: ["rest", "hover", "pressed", "focus", "disabled"]

    width: 1200
    height: page.implicitHeight + 64
    color: Palette.paper

    Column {
        id: page

        x: 40
        y: 32
        width: parent.width - 80

        Text {
            text: "Controls"
            font: AppFont.display(28, AppFont.Display.Medium, -0.2)
            color: Palette.ink
        }

        Heading { text: "Buttons" }
        GridLayout {
            width: parent.width
            columns: 6
            rowSpacing: 12
            columnSpacing: 16

            Caption { text: "" ; Layout.preferredWidth: 132 }
            Repeater { model: root.states5; Caption { required property string modelData; text: modelData; Layout.fillWidth: true; Layout.preferredWidth: 1 } }

            Caption { text: "primary, lg 48" }
            Repeater {
                model: root.states5
                NolfaButton {
                    required property string modelData
                    text: L10n.T("Compare", "Comparer")
                    buttonHeight: Metrics.buttonHeight.lg
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
            Caption { text: "primary, md 44" }
            Repeater {
                model: root.states5
                NolfaButton {
                    required property string modelData
                    text: L10n.T("Convert 6 files", "Convertir 6 fichiers")
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
            Caption { text: "secondary, sm 36" }
            Repeater {
                model: root.states5
                NolfaButton {
                    required property string modelData
                    text: L10n.T("Choose files…", "Choisir des fichiers…")
                    kind: NolfaButtonStyle.Kind.Secondary
                    buttonHeight: Metrics.buttonHeight.sm
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
            Caption { text: "ghost, md 44" }
            Repeater {
                model: root.states5
                NolfaButton {
                    required property string modelData
                    text: L10n.T("Clear", "Vider la liste")
                    kind: NolfaButtonStyle.Kind.Ghost
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
            Caption { text: "text, 32" }
            Repeater {
                model: root.states5
                TextButton {
                    required property string modelData
                    text: L10n.T("Open", "Ouvrir")
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
            Caption { text: "icon, 32" }
            Repeater {
                model: root.states5
                IconButton {
                    required property string modelData
                    symbol: "xmark"
                    text: L10n.T("Remove", "Retirer")
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    down: modelData === "pressed"
                    enabled: modelData !== "disabled"
                }
            }
        }

        RowLayout {
            width: parent.width
            spacing: 24

            Column {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignTop
                Heading { text: "Badges and chips" }
                RowLayout {
                    spacing: 16
                    Caption { text: "on surface" }
                    Card {
                        horizontalPadding: 12
                        verticalPadding: 10
                        Row { spacing: 8; QualityBadge { tier: "excellent" } QualityBadge { tier: "good" } QualityBadge { tier: "bestEffort" } }
                    }
                }
                Item { width: 1; height: 12 }
                RowLayout {
                    spacing: 16
                    Caption { text: "on paper  " }
                    Row { leftPadding: 13; spacing: 8; QualityBadge { tier: "excellent" } QualityBadge { tier: "good" } QualityBadge { tier: "bestEffort" } }
                }
                Item { width: 1; height: 12 }
                Row { spacing: 16; Chip { text: "GOOGLE SLIDES"; width: 104; height: 24 } Chip { text: "PDF" } Chip { text: "MAC"; isRequirement: true } Chip { text: "INTERNET"; isRequirement: true } }
            }
            Column {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignTop
                Heading { text: "Card, rules, spinner, glass" }
                RowLayout {
                    spacing: 16
                    Card { horizontalPadding: 18; verticalPadding: 14; TX { en: "Card, radius 12"; fr: "Carte, rayon 12" } }
                    Spinner { size: 16; lineWidth: 2.5 }
                    Spinner { reduceMotion: true }
                    Column { spacing: 6; width: 120; Hairline {} Caption { text: "hairline" } }
                    Hairline { axis: Qt.Vertical; Layout.preferredHeight: 40 }
                    Column { spacing: 6; width: 90; DatumRule { width: 40 } Caption { text: "datum 40 × 2" } }
                }
                Item { width: 1; height: 16 }
                RowLayout {
                    spacing: 16
                    Item { implicitWidth: 170; implicitHeight: 44; NolfaGlassBar { anchors.fill: parent } TX { en: "glass bar"; fr: en; x: 16; anchors.verticalCenter: parent.verticalCenter } }
                    Item { implicitWidth: 170; implicitHeight: 44; NolfaGlassPanel { anchors.fill: parent } TX { en: "glass panel"; fr: en; x: 16; anchors.verticalCenter: parent.verticalCenter } }
                    Item { implicitWidth: 170; implicitHeight: 44; NolfaGlassAccent { anchors.fill: parent } TX { en: "glass accent"; fr: en; x: 16; anchors.verticalCenter: parent.verticalCenter } }
                }
            }
        }

        Heading { text: "Choices, scrolling, tool tip" }
        RowLayout {
            spacing: 16
            SegmentedPicker { title: "Tool"; labels: [L10n.T("Convert", "Conversion"), L10n.T("Compare", "Comparaison"), L10n.T("Watermark", "Filigrane")] }
            SegmentedPicker { title: "Placement"; labels: [L10n.T("Centered", "Centré"), L10n.T("Tiled", "Mosaïque")]; currentIndex: 1; isSmall: true; Layout.preferredWidth: 200; looksFocused: true }
        }
        Item { width: 1; height: 12 }
        RowLayout {
            spacing: 16
            Repeater {
                model: ["rest", "hover", "open", "focus", "disabled"]
                PopUpPicker {
                    required property string modelData
                    title: "Target"
                    model: [{ text: "Markdown", value: "markdown" }]
                    looksHovered: modelData === "hover"
                    looksFocused: modelData === "focus"
                    looksOpen: modelData === "open"
                    enabled: modelData !== "disabled"
                }
            }
        }
        Item { width: 1; height: 12 }
        Row {
            spacing: 24
            Repeater {
                model: ["rest", "hover", "on", "on, hover", "on, focus", "off, disabled", "on, disabled"]
                NolfaCheckBox {
                    required property string modelData
                    text: modelData
                    checked: modelData.startsWith("on")
                    looksHovered: modelData.includes("hover")
                    looksFocused: modelData.includes("focus")
                    enabled: !modelData.includes("disabled")
                }
            }
        }
        Item { width: 1; height: 12 }
        Row {
            spacing: 24
            Item {
                width: 220
                height: 200
                PopUpPicker {
                    id: list1
                    title: "Target"
                    width: 220
                    model: [{ text: "Word", value: 1, section: "Documents" }, { text: "PDF", value: 2, section: "Documents" },
                        { text: "PowerPoint", value: 3, section: L10n.T("Presentations", "Présentations") }]
                    Timer { interval: 100; running: true; onTriggered: list1.popup.open() }
                }
            }
            Repeater {
                model: [false, true]
                ScrollingPane {
                    required property bool modelData
                    width: 260
                    height: 200
                    sideMargin: 16
                    topMargin: 12
                    bottomMargin: 12
                    spacing: 8
                    looksFocused: modelData
                    Note { width: parent.width; en: "A column that scrolls, with its bar."; fr: "Une colonne qui défile, avec sa barre." }
                    Repeater { model: 5; Card { width: 228; padding: 10; TX { en: "A row"; fr: "Une ligne" } } }
                }
            }
            Item {
                width: 180
                height: 80
                Chip {
                    y: 48
                    text: "MAC"
                    isRequirement: true
                    NolfaToolTip { visible: true; delay: 0; text: L10n.T("Needs a Mac app", "Nécessite une application Mac") }
                }
            }
        }

        Heading { text: "Mark, symbols, texts" }
        RowLayout {
            spacing: 24
            NolfaMark { size: 16 }
            NolfaMark { size: 24 }
            NolfaMark { size: 52 }
            NolfaWordmark {}
            NolfaWordmark { markSize: 48 }
            Column {
                TX { en: "Plain: convert **to** Markdown"; fr: "Tel quel : convertir **en** Markdown" }
                TXm { en: "Marked up: convert **to** Markdown"; fr: "Mis en forme : convertir **en** Markdown" }
                TXm { en: "[left as it is]: #"; fr: "[laissé tel quel]: #" }
                Text { text: "Documents ⇄ Markdown, PDF → Word"; font: AppFont.display(20, AppFont.Display.Medium); color: Palette.ink }
                Text { text: "Word → Markdown ⇄ PDF"; font: AppFont.body(14); color: Palette.ink }
            }
        }
        Item { width: 1; height: 12 }
        Row {
            spacing: 16
            Repeater {
                model: ["xmark", "xmark.circle.fill", "info.circle", "checkmark.circle.fill", "exclamationmark.triangle.fill",
                    "arrow.left.arrow.right", "arrow.right", "chevron.up.chevron.down", "chevron.down", "chevron.left", "chevron.right",
                    "magnifyingglass", "checkmark", "gearshape", "globe", "arrow.triangle.2.circlepath", "square.grid.2x2", "doc.text"]
                Symbol { required property string modelData; name: modelData; color: Palette.slate }
            }
        }

        Heading { text: "Wells" }
        Row {
            spacing: 24
            Bookplate { width: 340; height: 136 }
            Bookplate { width: 340; height: 136; targeted: true }
        }

        Heading { text: "Soft scroll edge" }
        Item {
            width: parent.width
            height: 72
            ListView {
                id: list
                anchors.fill: parent
                clip: true
                spacing: 8
                model: 5
                delegate: Card { width: list.width; padding: 10; TX { en: "A row"; fr: "Une ligne" } }
            }
            NolfaSoftScrollEdge { flickable: list }
        }

        Heading { text: "Palette" }
        Grid {
            columns: 7
            columnSpacing: 12
            rowSpacing: 12
            Repeater {
                model: ["paper", "surface", "mist", "ink", "slate", "stone", "line", "burgundy", "burgundyDark", "gold", "success", "warning", "info", "error"]
                Column {
                    required property string modelData
                    width: (page.width - 6 * 12) / 7
                    spacing: 2
                    Rectangle { width: parent.width; height: 44; radius: Metrics.radius.control; color: Palette[parent.modelData]; border.color: Palette.line }
                    Text { text: parent.modelData; font: AppFont.body(13, AppFont.Body.Medium); color: Palette.ink }
                    Caption { text: String(Palette[parent.modelData]).toUpperCase() }
                }
            }
        }
    }
}
