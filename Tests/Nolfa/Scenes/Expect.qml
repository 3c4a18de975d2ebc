import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Expectations

/// The sheet over a window of the usual size.
Window {
    width: 820
    height: 560
    visible: true
    color: Palette.paper

    Column {
        x: 20
        y: 92
        spacing: 10

        Repeater {
            model: 4

            Card {
                width: 780
                Item { implicitHeight: 54; TX { en: "A row below the sheet"; fr: "Une ligne sous la feuille" } }
            }
        }
    }
    ExpectSheet { visible: true }
}
