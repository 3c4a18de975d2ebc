import NolfaKit.DesignSystem
import QtQuick

Text {
    font: AppFont.mono(11, AppFont.Mono.Medium, 0.4)
    color: Palette.slate
}
