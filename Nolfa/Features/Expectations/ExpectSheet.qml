import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Templates as T

/// The sheet of expectations, over the whole window. Open it with `open()` or by binding `visible`; `closed` tells
/// that the user has done with it. The focus then returns to where it was.
T.Dialog {
    id: root

    readonly property alias view: view
    /// How far the sheet still is below its place while it comes.
    property real lift: 0
    /// Who had the keyboard before, and whether it showed.
    property Item before: null
    property bool beforeShowed: false

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) + lift : 0
    width: Math.min(560, parent ? parent.width - 48 : 560)
    height: parent ? Math.min(parent.height - 48, view.naturalHeight) : view.naturalHeight
    title: view.title
    padding: 0
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    // The template gives its item a role, but no name.
    Component.onCompleted: contentItem.parent.Accessible.name = Qt.binding(() => title)
    onAboutToShow: {
        before = parent.Window.activeFocusItem
        beforeShowed = before !== null && before.visualFocus === true
    }
    onClosed: {
        if (before)
            before.forceActiveFocus(beforeShowed ? Qt.TabFocusReason : Qt.PopupFocusReason)
        before = null
    }

    contentItem: ExpectationsView {
        id: view
        focus: true
        onDismissed: root.close()
    }

    background: Item {
        Shadow {
            x: Metrics.panelShadow.x
            y: Metrics.panelShadow.y
            width: parent.width
            height: parent.height
            radius: Metrics.radius.panel
            blur: Metrics.panelShadow.radius
            color: Metrics.panelShadow.color
        }
        Rectangle {
            anchors.fill: parent
            radius: Metrics.radius.panel
            color: Palette.paper
        }
    }

    T.Overlay.modal: Rectangle {
        color: Palette.tint(Palette.ink, 0.34)

        Behavior on opacity { NumberAnimation { duration: Metrics.animDuration } }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Metrics.animDuration; easing.type: Easing.OutQuad }
        NumberAnimation { property: "lift"; from: Motion.reduced ? 0 : 8; to: 0; duration: Metrics.animDuration; easing.type: Easing.OutQuad }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Metrics.animDuration; easing.type: Easing.OutQuad }
    }
}
