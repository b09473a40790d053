import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    Button { id: opener; x: 20; y: 20; text: "Open"; onClicked: popup.open() }
    Button { id: dimmer; x: 160; y: 20; text: "Modal"; onClicked: modal.open() }
    Button { id: behind; x: 20; y: 400; text: "Behind"; onClicked: console.log("LOG behind") }
    Button { id: tipped; x: 300; y: 20; text: "Tip"; hoverEnabled: true; ToolTip.visible: hovered; ToolTip.text: "A long tip"; onClicked: console.log("LOG tip") }
    Popup { id: popup; focus: true; x: 150; y: 100; width: 300; height: 220
        onOpened: places.opened(() => ({slider, deep, popupBox: box}), "popup")
        onClosed: console.log("LOG closed")
        Column { spacing: 10
            Slider { id: slider; width: 200; from: 0; to: 100; onValueChanged: console.log("NOW slider", Math.round(value)) }
            ComboBox { id: box; width: 200; model: ["Tea", "Coffee", "Water"]; onActivated: console.log("LOG drink", currentText); popup.onOpened: places.opened(() => ({coffee: box.popup.contentItem.itemAtIndex(1)}), "drinks") }
            Button { id: deep; text: "Deeper"; onClicked: inner.open() } }
        Popup { id: inner; x: 40; y: 40; width: 200; height: 120; modal: true; onOpened: places.opened(() => ({innermost}), "inner"); onClosed: console.log("LOG inner closed")
            Button { id: innermost; text: "Innermost"; onClicked: { console.log("LOG innermost"); inner.close() } } } }
    Popup { id: modal; modal: true; dim: true; x: 150; y: 100; width: 300; height: 220; closePolicy: Popup.NoAutoClose
        onOpened: places.opened(() => ({done}), "modal")
        onClosed: console.log("LOG modal closed")
        Button { id: done; text: "Done"; onClicked: modal.close() } }
    Places { id: places; of: ({opener, dimmer, behind, tipped}) }
}
