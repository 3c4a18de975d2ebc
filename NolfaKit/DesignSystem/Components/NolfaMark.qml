import NolfaKit.DesignSystem
import QtQuick

/// The glyph, in a square of the side `size`.
Image {
    property real size: 52

    width: size
    height: size
    sourceSize: Qt.size(size, size)
    source: Qt.resolvedUrl("../NolfaGlyph.svg")
    smooth: true
    mipmap: true
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
