import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Settings

/// What this is, how to support it, and whose work it stands on.
SettingsPane {
    id: root

    property AboutInfo info: AboutInfo {}

    label: L10n.T("About", "À propos")
    symbol: "info.circle"

    SettingsSection {
        objectName: "aboutSection"
        title: L10n.T("About", "À propos")

        TX {
            objectName: "version"
            width: parent.width
            height: 20 * AppFont.textScale
            verticalAlignment: Text.AlignVCenter
            en: "Nolfa " + root.info.version
            fr: en
            font: AppFont.body(14, AppFont.Body.Semibold)
        }
        TX {
            objectName: "motto"
            width: parent.width
            wrapMode: Text.Wrap
            lineHeight: 20 * AppFont.textScale
            lineHeightMode: Text.FixedHeight
            en: "Documents ⇄ Markdown. Built on the Tesmar design system."
            fr: "Documents ⇄ Markdown. Construit sur le système de design Tesmar."
        }
    }

    SettingsSection {
        objectName: "supportSection"
        title: L10n.T("Support", "Soutien")

        SupportView {
            objectName: "support"
            width: parent.width
            donationURL: root.info.donationURL
            hasRealDonationLink: root.info.hasRealDonationLink
        }
    }

    LegalText {
        objectName: "legal"
        width: parent.width
    }
}
