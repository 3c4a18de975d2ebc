import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// Where one is in what scrolls. Gone when everything is in view. Attach it: `T.ScrollBar.vertical: NolfaScrollBar {}`.
T.ScrollBar {
    id: root

    property bool looksHovered: hovered

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset, implicitContentHeight + topPadding + bottomPadding)
    padding: 3
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    minimumSize: (orientation === Qt.Horizontal ? height / width : width / height) * 2
    hoverEnabled: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: root.pressed ? Palette.slate : root.looksHovered ? Palette.tint(Palette.slate, 0.7) : Palette.stone

        Behavior on color { ColorAnimation { duration: Metrics.animDuration } }
    }
}
