import NolfaKit.DesignSystem
import QtQuick

/// What one way of a format is worth, or a dash where there is no such way.
Item {
    id: root

    /// The raw value of a tier; empty for none.
    property string tier
    readonly property bool hasTier: tier !== ""

    implicitHeight: hasTier ? badge.implicitHeight : dash.implicitHeight

    QualityBadge {
        id: badge
        objectName: "badge"
        visible: root.hasTier
        anchors.verticalCenter: parent.verticalCenter
        tier: root.hasTier ? root.tier : "excellent"
        // Very large text must not reach into the next column.
        scale: Math.min(1, root.width / width)
        transformOrigin: Item.Left
        Accessible.ignored: true
    }
    Text {
        id: dash
        objectName: "dash"
        visible: !root.hasTier
        x: badge.padding
        anchors.verticalCenter: parent.verticalCenter
        text: "–"
        textFormat: Text.PlainText
        font: AppFont.mono(11)
        color: Palette.slate
        Accessible.ignored: true
    }
}
