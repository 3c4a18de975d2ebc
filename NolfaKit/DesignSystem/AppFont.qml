pragma Singleton
import NolfaKit.DesignSystem
import QtQuick

/// The three families. Each function makes a font of a size in points, which grows with the system's text size.
/// Tracking, in points too, stands between the letters.
QtObject {
    enum Display { Regular, Medium, Semibold }
    enum Body { Regular, Medium, Semibold, Bold }
    enum Mono { Regular, Medium, Semibold }

    /// The system's text size, in points of 1/72 inch.
    readonly property real systemSize: Typeface.systemSize

    /// What the desktops begin with lies at or below this; only more counts as a wish for larger text.
    readonly property real ordinarySize: 11
    readonly property real largestScale: 2

    /// How much larger than usual running text is, at most twice.
    readonly property real textScale: Math.min(largestScale, Math.max(1, systemSize / ordinarySize))

    // The sizes of the text styles at the ordinary text size.
    readonly property real title2: 17
    readonly property real bodyStyle: 13
    readonly property real caption: 10

    /// Every style grows by as many points as running text does: titles less in proportion, captions more.
    function scaled(size: real, style: real): real {
        return size * (1 + (textScale - 1) * bodyStyle / style)
    }

    function display(size: real, weight: int, tracking: real): font {
        return Typeface.font("Newsreader 24pt", [400, 500, 600][weight ?? AppFont.Display.Regular],
            scaled(size, title2), tracking || 0)
    }

    function body(size: real, weight: int, tracking: real): font {
        return Typeface.font("Hanken Grotesk", [400, 500, 600, 700][weight ?? AppFont.Body.Regular],
            scaled(size, bodyStyle), tracking || 0)
    }

    function mono(size: real, weight: int, tracking: real): font {
        return Typeface.font("IBM Plex Mono", [400, 500, 600][weight ?? AppFont.Mono.Regular],
            scaled(size, caption), tracking || 0)
    }
}
