import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 360
    x: 60
    y: 60
    title: "Scene"

    SpinBox { id: count; x: 20; y: 20; onValueModified: console.log("LOG count", value) }
    SpinBox { id: size; x: 20; y: 90; editable: true; to: 999; onValueModified: console.log("LOG size", value) }
    Button { id: opener; x: 20; y: 200; text: "Page"; onClicked: popup.open() }
    Popup {
        id: popup
        x: 220; y: 60; width: 220; height: 140
        onOpened: places.opened(() => ({pageUp: page.up.indicator, pageText: page.contentItem}), "opened")
        SpinBox { id: page; editable: true; value: 7; to: 999; onValueModified: console.log("LOG page", value) }
    }

    Places { id: places; of: ({count, up: count.up.indicator, down: count.down.indicator, sizeUp: size.up.indicator, sizeText: size.contentItem, opener}) }
}
