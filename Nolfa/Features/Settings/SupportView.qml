import NolfaKit.DesignSystem
import QtQuick

/// What a user may leave, and where.
Card {
    id: root

    /// The payment page.
    property url donationURL
    /// Whether there is one.
    property bool hasRealDonationLink: false

    // The border lies inside the card.
    topPadding: 17
    bottomPadding: 19
    horizontalPadding: 21

    Item {
        id: content

        width: root.availableWidth
        implicitHeight: Math.max(mark.height, words.implicitHeight)

        NolfaMark { id: mark; objectName: "mark"; size: 40 }
        Column {
            id: words

            x: mark.width + 16
            width: content.width - x

            TX {
                objectName: "title"
                width: parent.width
                topPadding: 3
                bottomPadding: 8
                en: "Support Nolfa"
                fr: "Soutenir Nolfa"
                font: AppFont.display(17, AppFont.Display.Semibold)
                Accessible.role: Accessible.Heading
            }
            TX {
                objectName: "reason"
                width: parent.width
                bottomPadding: 14
                wrapMode: Text.Wrap
                lineHeight: 20 * AppFont.textScale
                lineHeightMode: Text.FixedHeight
                en: "Nolfa is free. If it saved you time, you can leave something. It is optional, it unlocks nothing, and Nolfa stays exactly the same."
                fr: "Nolfa est gratuit. S’il vous a fait gagner du temps, vous pouvez laisser quelque chose. C’est facultatif, cela ne débloque rien, et Nolfa reste exactement le même."
            }
            NolfaButton {
                objectName: "tip"
                visible: root.hasRealDonationLink
                kind: NolfaButtonStyle.Kind.Secondary
                buttonHeight: Metrics.buttonHeight.sm
                text: L10n.T("Leave a tip", "Faire un don")
                onClicked: Qt.openUrlExternally(root.donationURL)
            }
            Note {
                objectName: "tipNote"
                visible: root.hasRealDonationLink
                width: parent.width
                topPadding: 10
                en: "Opens a secure payment page in your browser. Nolfa stays free for everyone."
                fr: "Ouvre une page de paiement sécurisée dans votre navigateur. Nolfa reste gratuit pour tout le monde."
            }
            Note {
                objectName: "soonNote"
                visible: !root.hasRealDonationLink
                width: parent.width
                en: "A support link will appear here soon."
                fr: "Un lien de soutien apparaîtra ici prochainement."
            }
        }
    }
}
