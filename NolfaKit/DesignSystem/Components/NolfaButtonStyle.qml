import NolfaKit.DesignSystem
import QtQuick

/// The colours of a `NolfaButton` in its states.
QtObject {
    id: root

    enum Kind { Primary, Secondary, Ghost }

    property int kind: NolfaButtonStyle.Kind.Primary
    property bool enabled: true
    property bool hovered: false
    property bool pressed: false

    readonly property bool isPrimary: kind === NolfaButtonStyle.Kind.Primary
    readonly property bool isSecondary: kind === NolfaButtonStyle.Kind.Secondary

    readonly property color fill: isPrimary ? primaryFill : quietFill
    readonly property color text: isPrimary ? primaryText : isSecondary ? secondaryText : ghostText
    readonly property color border: !isSecondary ? "transparent" : !enabled ? Palette.line
        : hovered && !pressed ? Palette.tint(Palette.slate, 0.7) : Palette.stone

    readonly property color primaryFill: !enabled ? Palette.line : pressed ? Palette.burgundyDark
        : hovered ? Qt.tint(Palette.burgundy, Palette.tint(Palette.paper, 0.1)) : Palette.burgundy
    // No fill is mist that can't be seen, so that it fades in without a detour through black.
    readonly property color quietFill: Palette.tint(Palette.mist,
        !enabled ? 0 : pressed ? 1 : !hovered ? 0 : isSecondary ? 0.5 : 0.6)

    readonly property color primaryText: enabled ? Palette.paper : Palette.slate
    readonly property color secondaryText: enabled ? Palette.ink : Palette.tint(Palette.slate, 0.62)
    readonly property color ghostText: !enabled ? Palette.tint(Palette.slate, 0.5)
        : hovered && !pressed ? Palette.ink : Palette.slate
}
