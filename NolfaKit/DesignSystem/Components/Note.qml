import NolfaKit.DesignSystem
import QtQuick

/// A remark in small, quiet letters, as wide as it is given room.
TX {
    font: AppFont.body(13)
    color: Palette.slate
    wrapMode: Text.Wrap
    lineHeight: 18 * AppFont.textScale
    lineHeightMode: Text.FixedHeight
}
