import NolfaKit.DesignSystem
import QtQuick

/// A text in the language in force, shown as it stands.
Text {
    required property string en
    required property string fr

    text: L10n.T(en, fr)
    textFormat: Text.PlainText
    font: AppFont.body(14)
    color: Palette.ink
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
