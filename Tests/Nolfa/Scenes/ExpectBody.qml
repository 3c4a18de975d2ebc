import NolfaKit.DesignSystem
import QtQuick
import Nolfa.Features.Expectations

/// The sheet with the keyboard on what scrolls.
Window {
    width: 820
    height: 560
    visible: true
    color: Palette.paper

    ExpectSheet {
        id: sheet

        visible: true
        onOpened: {
            sheet.view.doneButton.forceActiveFocus()
            sheet.view.body.forceActiveFocus(Qt.TabFocusReason)
            sheet.view.body.scrollBy(120)
        }
    }
}
