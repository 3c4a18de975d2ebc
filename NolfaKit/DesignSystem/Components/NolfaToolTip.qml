import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// A short explanation above what the pointer rests on.
T.ToolTip {
    id: root

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: -implicitHeight - 6
    implicitWidth: Math.min(320, Math.ceil(contentItem.implicitWidth)) + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    contentHeight: contentItem.implicitHeight
    margins: 6
    horizontalPadding: 10
    verticalPadding: 6
    delay: 500
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        font: AppFont.body(13)
        color: Palette.ink
        wrapMode: Text.Wrap
    }

    background: GlassFallback { radius: Metrics.radius.control }

    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Metrics.animDuration } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Metrics.animDuration } }
}
