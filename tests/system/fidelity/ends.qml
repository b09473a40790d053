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

    Button { id: quit; x: 20; y: 20; text: "Quit"; onClicked: { console.log("LOG quit"); Qt.quit() } }
    Button { id: fail; x: 20; y: 80; text: "Fail"; onClicked: { console.log("LOG fail"); Qt.exit(7) } }
    Button { id: plain; x: 20; y: 140; text: "Plain"; onClicked: console.log("LOG plain") }
    TextField { id: third; x: 20; y: 200; onTextEdited: { console.log("LOG letters", text.length); if (text.length === 3) Qt.exit(3) } }
    Button { id: disabled; x: 200; y: 20; text: "Disabled"; enabled: false; onClicked: console.log("LOG never") }
    Item { x: 200; y: 80; width: 200; height: 60; enabled: false; Button { id: within; text: "Within"; onClicked: console.log("LOG never") } }
    Places { of: ({quit, fail, plain, third, disabled, within}) }
}
