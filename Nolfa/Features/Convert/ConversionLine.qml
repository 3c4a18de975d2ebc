import NolfaKit.DesignSystem
import QtQuick

/// From what to what, what that is worth, and what it needs.
Row {
    id: root

    required property string sourceName
    /// Raw values, in order.
    required property var targets
    required property string target
    required property string targetName
    /// Empty: no badge.
    required property string tier
    /// Empty: not needed.
    required property string macSentence
    required property string networkSentence
    readonly property Item picker: chooser.picker

    signal chosen(string target)

    height: Math.max(32, chooser.implicitHeight)
    spacing: 8

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.sourceName
        textFormat: Text.PlainText
        font: AppFont.body(14)
        color: Palette.slate
        Accessible.ignored: true
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: "→"
        textFormat: Text.PlainText
        font: AppFont.body(14)
        color: Palette.slate
        Accessible.ignored: true
    }
    TargetPicker {
        id: chooser
        objectName: "target"
        anchors.verticalCenter: parent.verticalCenter
        targets: root.targets
        target: root.target
        targetName: root.targetName
        onChosen: target => root.chosen(target)
    }
    Row {
        anchors.verticalCenter: parent.verticalCenter
        leftPadding: 4
        spacing: 6

        QualityBadge {
            objectName: "badge"
            visible: root.tier !== ""
            tier: root.tier || "excellent"
            Accessible.ignored: true
        }
        Chip {
            objectName: "mac"
            visible: toolTip !== ""
            text: "MAC"
            isRequirement: true
            toolTip: root.macSentence
        }
        Chip {
            objectName: "internet"
            visible: toolTip !== ""
            text: "INTERNET"
            isRequirement: true
            toolTip: root.networkSentence
        }
    }
}
