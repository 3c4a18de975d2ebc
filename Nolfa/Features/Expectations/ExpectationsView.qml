import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Expectations

/// What the sheet holds: how well each format converts, before anything is converted.
FocusScope {
    id: root

    readonly property string title: L10n.T("What to expect", "À quoi s’attendre")
    /// So high that nothing would have to scroll.
    readonly property real naturalHeight: heading.height + body.implicitHeight + footer.height
    readonly property ExpectationsModel table: ExpectationsModel {}
    readonly property alias body: body
    readonly property alias doneButton: done
    readonly property int sideMargin: 32

    /// The user has read enough.
    signal dismissed()

    // The default action.
    Keys.onReturnPressed: dismissed()
    Keys.onEnterPressed: dismissed()

    Connections {
        target: Language
        function onChanged() { root.table.refresh() }
    }

    Item {
        id: heading

        width: parent.width
        height: titleText.y + titleText.height + 10 + 2 + 14

        Text {
            id: titleText
            objectName: "title"
            x: root.sideMargin
            y: 24
            width: parent.width - 2 * root.sideMargin
            height: implicitHeight + 6
            text: root.title
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            font: AppFont.display(26, AppFont.Display.Medium)
            color: Palette.ink
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        DatumRule {
            x: root.sideMargin
            y: titleText.y + titleText.height + 10
            width: 40
        }
    }

    ScrollingPane {
        id: body

        objectName: "body"
        y: heading.height
        width: parent.width
        height: parent.height - heading.height - footer.height
        focus: true
        title: root.title
        sideMargin: root.sideMargin
        topMargin: 4
        bottomMargin: 24

        TXm {
            objectName: "lead"
            width: parent.width
            // Marked-up text has the room of its lines above them.
            topPadding: -1
            bottomPadding: 13
            lineHeight: 20 * AppFont.textScale
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            en: "Markdown is the hub of every conversion. Going **to** Markdown depends on how structured the original is. Going **from** Markdown is consistently high quality."
            fr: "Markdown est le pivot de toutes les conversions. La conversion **vers** Markdown dépend du degré de structure de l’original. La conversion **depuis** Markdown est d’une qualité constante."
        }
        Note {
            objectName: "why"
            width: parent.width
            bottomPadding: 16
            en: "Why Markdown? A Markdown file is plain text, so it stays extremely light, opens anywhere, and never breaks. It is also what AI assistants read best: the same content uses far fewer tokens than a PDF or Word file, so conversations go further."
            fr: "Pourquoi Markdown\u00a0? Un fichier Markdown est du texte brut\u00a0: il reste extrêmement léger, s’ouvre partout et ne se corrompt pas. C’est aussi ce que les assistants d’IA lisent le mieux\u00a0: le même contenu consomme bien moins de jetons qu’un PDF ou qu’un fichier Word, et les conversations vont plus loin."
        }
        ExpectationTable {
            objectName: "table"
            width: parent.width
            rows: root.table.rows
        }
        TX {
            objectName: "directTitle"
            topPadding: 20
            bottomPadding: 6
            en: "DIRECT CONVERSIONS"
            fr: "CONVERSIONS DIRECTES"
            font: AppFont.mono(11, AppFont.Mono.Medium, 1.6)
            color: Palette.slate
            Accessible.role: Accessible.Heading
        }
        Text {
            objectName: "direct"
            width: parent.width
            topPadding: 2
            bottomPadding: 18
            // A line ends between two conversions, not within one.
            text: root.table.directConversions.replace(/ /g, "\u00a0").replace(/·\u00a0/g, "· ")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font: AppFont.mono(12)
            color: Palette.ink
            lineHeight: 20 * AppFont.textScale
            lineHeightMode: Text.FixedHeight
            Accessible.role: Accessible.StaticText
            Accessible.name: root.table.directConversions
        }
        Note {
            objectName: "appsNote"
            width: parent.width
            bottomPadding: 12
            en: "Pages, Keynote, and Numbers convert through those apps on your Mac, so they need to be installed. These conversions are macOS only."
            fr: "Pages, Keynote et Numbers sont convertis par ces applications sur votre Mac, qui doivent donc être installées. Ces conversions n’existent que sur macOS."
        }
        Note {
            objectName: "googleNote"
            width: parent.width
            en: "Google documents are fetched from Google Drive. A document shared by link opens without an account. A private document needs you to sign in, in Settings. Google formats are read-only sources: Nolfa converts from them, never into them."
            fr: "Les documents Google sont récupérés depuis Google Drive. Un document partagé par lien s’ouvre sans compte. Un document privé demande une connexion à votre compte, dans les Réglages. Les formats Google sont des sources en lecture seule\u00a0: Nolfa convertit depuis ces documents, jamais vers eux."
        }
    }

    Item {
        id: footer

        y: parent.height - height
        width: parent.width
        height: Math.max(68, done.implicitHeight + 32)
        // The fill has the sheet's corners below and none above.
        clip: true

        Rectangle {
            y: -radius
            width: parent.width
            height: parent.height + radius
            radius: Metrics.radius.panel
            color: Palette.surface
        }
        Hairline {}
        NolfaButton {
            id: done
            objectName: "done"
            x: parent.width - width - root.sideMargin
            anchors.verticalCenter: parent.verticalCenter
            buttonHeight: Metrics.buttonHeight.sm
            text: L10n.T("Done", "Terminé")
            onClicked: root.dismissed()
        }
    }
}
