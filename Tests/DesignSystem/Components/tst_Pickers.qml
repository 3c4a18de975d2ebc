import NolfaKit.DesignSystem
import QtQuick
import QtTest

TestCase {
    id: test
    name: "Pickers"
    when: windowShown
    visible: true
    width: 500
    height: 400

    Component { id: segments; SegmentedPicker { title: "Tool"; labels: ["Convert", "Compare", "Watermark"] } }
    Component {
        id: popUp
        PopUpPicker {
            title: "Convert to"
            model: [{ text: "Word", value: "docx", section: "Documents" }, { text: "PDF", value: "pdf", section: "Documents" },
                { text: "PowerPoint", value: "pptx", section: "Presentations" }]
        }
    }
    SignalSpy { id: spy; signalName: "activated" }

    function test_a_click_and_the_arrows_choose_a_segment() {
        const picker = createTemporaryObject(segments, test)
        spy.target = picker
        spy.clear()
        compare(picker.height, 36)
        mouseClick(picker, picker.width / 2, 18)
        compare(picker.currentIndex, 1)
        compare(spy.count, 1)
        mouseClick(picker, picker.width / 2, 18)
        compare(spy.count, 1)
        verify(!picker.background.children[0].visible)
        picker.focus = false
        picker.forceActiveFocus(Qt.TabFocusReason)
        verify(picker.background.children[0].visible)
        keyClick(Qt.Key_Right)
        compare(picker.currentIndex, 2)
        keyClick(Qt.Key_Right)
        compare(picker.currentIndex, 2)
        keyClick(Qt.Key_Left)
        compare(picker.currentIndex, 1)
        compare(picker.Accessible.name, "Tool")
    }

    function test_segments_fill_a_set_width() {
        const picker = createTemporaryObject(segments, test, { width: 450, isSmall: true })
        compare(picker.height, 32)
        mouseClick(picker, 445, 16)
        compare(picker.currentIndex, 2)
    }

    function test_the_keyboard_opens_the_list_and_chooses() {
        const picker = createTemporaryObject(popUp, test)
        spy.target = picker
        spy.clear()
        verify(picker.width >= 124 && picker.height >= 32)
        compare(picker.displayText, "Word")
        compare(picker.Accessible.name, "Convert to")
        compare(picker.Accessible.role, Accessible.ComboBox)
        picker.forceActiveFocus(Qt.TabFocusReason)
        verify(picker.background.children[0].visible)
        keyClick(Qt.Key_Space)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryVerify(() => !picker.popup.visible)
        compare(picker.currentValue, "pdf")
        compare(spy.count, 1)
    }

    function test_the_list_opens_two_below_its_field_or_above_where_there_is_no_room() {
        const picker = createTemporaryObject(popUp, test, { y: 10 })
        picker.popup.open()
        tryVerify(() => picker.popup.opened)
        compare(picker.popup.y, picker.height + 2)
        picker.popup.close()
        picker.y = 360
        picker.popup.open()
        tryVerify(() => picker.popup.y < 0)
    }

    function test_sections_stand_above_their_first_entry_only() {
        const picker = createTemporaryObject(popUp, test, { y: 10 })
        picker.popup.open()
        tryVerify(() => picker.popup.opened)
        const list = picker.popup.contentItem
        compare([0, 1, 2].map(index => list.itemAtIndex(index).opensSection), [true, false, true])
        compare(list.itemAtIndex(1).height, 32)
        verify(list.itemAtIndex(2).height > 32)
        compare(list.itemAtIndex(2).Accessible.name, "Presentations, PowerPoint")
    }
}
