import NolfaKit.DesignSystem
import QtQuick

/// A text in the language in force, read as Markdown; one of which nothing is left then stands as it is written.
/// For texts of ours only: Markdown can name pictures to be fetched.
TX {
    id: root

    readonly property bool isReadable: MarkdownText.isReadable(text)

    textFormat: isReadable ? Text.MarkdownText : Text.PlainText
    linkColor: Palette.burgundy
    // Who listens hears the words, not the signs around them.
    Accessible.name: isReadable ? MarkdownText.words(text) : text
}
