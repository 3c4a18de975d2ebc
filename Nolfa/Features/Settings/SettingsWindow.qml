import NolfaKit.DesignSystem
import QtQuick
import QtQuick.Layouts
import Nolfa.Features.Settings

/// The settings, pane by pane. A further pane is a further child of `stack`.
Window {
    id: root

    required property AppSettings settings
    property alias currentIndex: tabs.currentIndex

    /// Of the last pane, whatever others there are.
    readonly property int aboutIndex: stack.children.length - 1

    /// Shows the window, in front of the others.
    function present() {
        show()
        raise()
        requestActivate()
    }

    width: 600
    height: 560
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    title: L10n.T("Settings", "Réglages")
    color: Palette.paper

    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: root.close()
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: root.close()

        SettingsTabs {
            id: tabs

            objectName: "tabs"
            width: parent.width
            focus: true
            panes: Array.from(stack.children)
        }
        Hairline { y: tabs.height - height }
        StackLayout {
            id: stack

            y: tabs.height
            width: parent.width
            height: parent.height - y
            currentIndex: tabs.currentIndex

            GeneralTab { settings: root.settings }
            AboutTab {}
        }
    }
}
