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

    menuBar: MenuBar {
        id: bar
        Menu {
            title: "File"
            onOpened: places.opened(() => ({open}), "menu opened")
            MenuItem { id: open; text: "Open"; onTriggered: console.log("LOG open") }
            MenuItem { text: "Close"; onTriggered: console.log("LOG close") }
        }
        Menu { title: "Edit"; MenuItem { text: "Undo"; onTriggered: console.log("LOG undo") } }
    }
    Button { id: erase; x: 20; y: 20; text: "Erase"; onClicked: console.log("LOG erase"); onCanceled: console.log("LOG canceled"); onReleased: console.log("LOG released") }
    CheckBox { id: agree; x: 200; y: 20; text: "Agree"; onToggled: console.log("LOG agree", checked) }
    Rectangle { id: spot; x: 20; y: 100; width: 100; height: 60; color: "gold"; TapHandler { onTapped: console.log("LOG tapped"); onPressedChanged: console.log("LOG tap pressed", pressed) } }
    Rectangle { id: field; x: 200; y: 100; width: 100; height: 60; color: "plum"; MouseArea { anchors.fill: parent; onClicked: console.log("LOG area clicked"); onReleased: (mouse) => console.log("LOG area released", containsMouse) } }

    Places { id: places; of: () => ({erase, agree, spot, field, file: bar.itemAt(0)}) }
}
