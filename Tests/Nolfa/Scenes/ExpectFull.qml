import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Expectations

/// The whole sheet at once, in a window that has room for more.
Window {
    width: 608
    height: 1180
    visible: true
    color: Palette.stone

    ExpectSheet { visible: true }
}
