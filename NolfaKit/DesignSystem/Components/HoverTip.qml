import NolfaKit.DesignSystem
import QtQuick

/// A tool tip for its parent, which costs nothing until it is shown.
Item {
    id: root

    property string text
    /// Usually bound to what says that the pointer rests on the parent.
    property bool shown: false
    readonly property var tip: loader.item

    anchors.fill: parent
    Accessible.ignored: true

    Loader {
        id: loader
        anchors.fill: parent
        active: root.shown && root.text !== ""
        sourceComponent: NolfaToolTip { visible: true; text: root.text }
    }
}
