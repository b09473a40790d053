import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 500
    height: 360
    x: 60
    y: 60
    title: "Scene"

    Drawer {
        id: drawer
        width: 200
        height: main.height
        onOpened: places.opened(() => ({home, pick}), "drawer opened")
        onClosed: console.log("LOG drawer closed")
        Column {
            anchors.fill: parent
            ItemDelegate { id: home; width: 200; text: "Home"; onClicked: { console.log("LOG home"); drawer.close() } }
            ComboBox {
                id: pick
                width: 180
                model: ["Red", "Green", "Blue"]
                onActivated: console.log("LOG pick", currentText)
                popup.onOpened: places.opened(() => ({green: popup.contentItem.itemAtIndex(1)}), "pick opened")
            }
        }
    }
    Button { id: save; x: 300; y: 40; text: "Save"; onClicked: console.log("LOG save") }
    Button { id: opener; x: 300; y: 120; text: "Menu"; onClicked: drawer.open() }

    Places { id: places; of: ({save, opener}) }
}
