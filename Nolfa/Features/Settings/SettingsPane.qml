import NolfaKit.DesignSystem
import QtQuick

/// One pane of the Settings window: a column of sections, and how its tab looks.
ScrollingPane {
    property string label
    property string symbol

    title: label
    sideMargin: 40
    topMargin: 24
    bottomMargin: 24
    spacing: 24
}
