import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Layouts

/// A choice of one among a few words, side by side. Arrow keys move the choice. No control of Qt's, since these keep
/// their own role among what assistive technology sees.
Item {
    id: root

    /// The words, in order.
    property var labels: []
    property int currentIndex: 0
    /// What the choice is about, for assistive technology.
    property string title
    property bool isSmall: false
    /// The keyboard brought the focus.
    readonly property bool visualFocus: activeFocus && !pressedIn
    property bool looksFocused: visualFocus
    property bool pressedIn: false
    readonly property alias background: background

    signal activated(int index)

    function choose(index: int) {
        const wanted = Math.max(0, Math.min(labels.length - 1, index))
        if (wanted !== currentIndex) {
            currentIndex = wanted
            activated(wanted)
        }
    }

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Math.max(isSmall ? 32 : 36, row.implicitHeight + 4)
    activeFocusOnTab: true
    onActiveFocusChanged: if (!activeFocus) pressedIn = false
    Accessible.role: Accessible.PageTabList
    Accessible.name: title
    Keys.onPressed: pressedIn = false
    Keys.onLeftPressed: choose(currentIndex - 1)
    Keys.onRightPressed: choose(currentIndex + 1)

    Rectangle {
        id: background
        anchors.fill: parent
        radius: Metrics.radius.control
        color: Palette.mist
        border.width: 1
        border.color: Palette.stone

        FocusRing { visible: root.looksFocused; targetRadius: parent.radius }
    }

    Item {
        anchors.fill: parent

        RowLayout {
            id: row

            anchors.fill: parent
            anchors.margins: 2
            spacing: 0

            Repeater {
                model: root.labels

                Rectangle {
                    id: segment

                    required property string modelData
                    required property int index
                    readonly property bool isChosen: index === root.currentIndex

                    implicitWidth: Math.ceil(widest.implicitWidth) + (root.isSmall ? 16 : 32)
                    implicitHeight: word.implicitHeight + 6
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    radius: Metrics.radius.chip
                    color: Palette.tint(Palette.surface, isChosen ? 1 : 0)
                    border.width: isChosen ? 1 : 0
                    border.color: Palette.line
                    Accessible.role: Accessible.PageTab
                    Accessible.name: modelData
                    Accessible.selectable: true
                    Accessible.selected: isChosen
                    Accessible.onPressAction: root.choose(index)

                    // The choice is set heavier; no width changes by that.
                    Text {
                        id: widest
                        visible: false
                        text: segment.modelData
                        textFormat: Text.PlainText
                        font: AppFont.body(root.isSmall ? 13 : 14, AppFont.Body.Semibold)
                    }
                    Text {
                        id: word
                        anchors.centerIn: parent
                        text: segment.modelData
                        textFormat: Text.PlainText
                        font: AppFont.body(root.isSmall ? 13 : 14,
                            segment.isChosen ? AppFont.Body.Semibold : AppFont.Body.Medium)
                        color: segment.isChosen ? Palette.burgundy : pointer.hovered ? Palette.ink : Palette.slate
                        Accessible.ignored: true
                    }
                    HoverHandler { id: pointer }
                    TapHandler {
                        onTapped: {
                            root.pressedIn = true
                            root.forceActiveFocus(Qt.MouseFocusReason)
                            root.choose(segment.index)
                        }
                    }
                }
            }
        }
    }
}
