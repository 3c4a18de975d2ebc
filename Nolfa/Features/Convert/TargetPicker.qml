import NolfaKit.DesignSystem
import Nolfa.Features.Convert
import QtQuick

/// What a file becomes: a choice where there is one, otherwise plain text.
Item {
    id: root

    /// Raw values, in order.
    property var targets: []
    property string target
    property string targetName
    readonly property bool hasChoice: targets.length > 1
    readonly property string title: L10n.T("Convert to", "Convertir en")
    readonly property var choices: {
        L10n.T // the titles of the parts follow the language
        return hasChoice ? ConvertTexts.choices(targets) : []
    }
    readonly property alias picker: picker

    signal chosen(string target)

    implicitWidth: hasChoice ? picker.implicitWidth : plain.implicitWidth
    implicitHeight: hasChoice ? picker.implicitHeight : plain.implicitHeight

    /// The user's choice is written over the index: the model's target has the last word.
    function showTarget() { picker.currentIndex = picker.model.findIndex(choice => choice.value === target) }

    onTargetChanged: showTarget()

    Text {
        id: plain
        objectName: "plainTarget"
        visible: !root.hasChoice
        anchors.verticalCenter: parent.verticalCenter
        text: root.targetName
        textFormat: Text.PlainText
        font: AppFont.body(14, AppFont.Body.Medium)
        color: Palette.ink
        Accessible.ignored: true
    }
    PopUpPicker {
        id: picker
        objectName: "picker"
        visible: root.hasChoice
        title: root.title
        model: root.choices
        onModelChanged: root.showTarget()
        onActivated: root.chosen(currentValue)

        HoverTip {
            shown: picker.hovered && !picker.popup.visible
            text: root.title
        }
    }
}
