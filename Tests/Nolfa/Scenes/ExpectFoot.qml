import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Expectations

/// The sheet scrolled to its end, in the least window, with the keyboard on its button.
Window {
    width: 720
    height: 420
    visible: true
    color: Palette.paper

    ExpectSheet {
        id: sheet

        visible: true
        onOpened: {
            sheet.view.body.scrollBy(10000)
            sheet.view.doneButton.forceActiveFocus(Qt.TabFocusReason)
        }
    }
}
