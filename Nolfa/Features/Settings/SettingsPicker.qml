import NolfaKit.DesignSystem
import QtQuick

/// A question and the choice of its answer, side by side.
Item {
    id: root

    property string title
    /// What there is to choose from: objects with `value` and `text`.
    property var choices: []
    /// The value in force.
    property var value

    signal picked(var value)

    readonly property int labelWidth: 220

    width: parent ? parent.width : 0
    implicitHeight: Math.max(picker.implicitHeight, label.implicitHeight)

    Text {
        id: label
        objectName: "label"
        width: root.labelWidth
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: AppFont.body(14)
        color: Palette.ink
        // The field is called by the same words.
        Accessible.ignored: true
    }
    PopUpPicker {
        id: picker

        // New words are a new list, which would begin with its first entry.
        function showValue() { currentIndex = root.choices.findIndex(choice => choice.value === root.value) }

        objectName: "picker"
        x: root.labelWidth + 16
        width: root.width - x
        anchors.verticalCenter: parent.verticalCenter
        title: root.title
        model: root.choices
        onActivated: root.picked(currentValue)
        onModelChanged: showValue()
        Component.onCompleted: showValue()

        Connections {
            target: root
            function onValueChanged() { picker.showValue() }
        }
    }
}
