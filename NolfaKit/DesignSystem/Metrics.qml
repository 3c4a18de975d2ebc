pragma Singleton
import QtQuick

/// Every measure that more than one screen shares; lengths in points. Doesn't import its own module: singletons that
/// import one another keep the engine from ever coming up.
QtObject {
    component Radius: QtObject {
        readonly property int chip: 6
        readonly property int control: 8
        readonly property int card: 12
        readonly property int panel: 16
        readonly property int hero: 22
    }
    component ButtonHeight: QtObject {
        readonly property int sm: 36
        readonly property int md: 44
        readonly property int lg: 48
    }
    component Shadow: QtObject {
        property color color
        property int radius
        property int x
        property int y
    }

    readonly property Radius radius: Radius {}
    readonly property ButtonHeight buttonHeight: ButtonHeight {}

    /// The length of every short transition, in seconds.
    readonly property real anim: 0.15
    /// The same in milliseconds, as animations want it.
    readonly property int animDuration: Math.round(anim * 1000)

    // `Palette.burgundyDark`, at an opacity.
    readonly property Shadow cardShadow: Shadow {
        color: Qt.rgba(0x51 / 255, 0x1a / 255, 0x26 / 255, 0.07)
        radius: 3
        x: 0
        y: 1
    }
    readonly property Shadow panelShadow: Shadow {
        color: Qt.rgba(0x51 / 255, 0x1a / 255, 0x26 / 255, 0.16)
        radius: 18
        x: 0
        y: 6
    }
}
