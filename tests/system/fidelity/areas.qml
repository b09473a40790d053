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

    component Field: Rectangle {
        property alias area: taker
        width: 160; height: 80
        color: taker.containsMouse ? "gold" : "khaki"
        MouseArea { id: taker; anchors.fill: parent; acceptedButtons: Qt.LeftButton | Qt.RightButton | Qt.MiddleButton }
    }
    Field { id: buttons; x: 20; y: 20; area.onClicked: (mouse) => console.log("LOG clicked", mouse.button, mouse.modifiers, Math.round(mouse.x), Math.round(mouse.y)) }
    Field { id: twice; x: 220; y: 20; area.onClicked: console.log("LOG once"); area.onDoubleClicked: console.log("LOG twice") }
    Field { id: held; x: 420; y: 20; area.onClicked: console.log("LOG short"); area.onPressAndHold: console.log("LOG held"); area.onReleased: console.log("LOG let go") }
    Field { id: slow; x: 20; y: 140; area.pressAndHoldInterval: 2200; area.onPressAndHold: console.log("LOG held slowly"); area.onClicked: console.log("LOG slow short") }
    Field { id: turned; x: 260; y: 140; rotation: 90; scale: 0.8; area.onClicked: (mouse) => console.log("LOG turned", Math.round(mouse.x / 10), Math.round(mouse.y / 10)) }
    Field { id: canceled; x: 420; y: 140; area.onCanceled: console.log("LOG canceled"); area.onClicked: console.log("LOG not canceled") }
    Field { id: lefty; x: 20; y: 260; area.acceptedButtons: Qt.RightButton; area.onClicked: console.log("LOG right only") }
    Rectangle { x: 220; y: 260; width: 160; height: 80; color: "plum"; MouseArea { id: hoverer; anchors.fill: parent; hoverEnabled: true; onContainsMouseChanged: console.log("LOG hover", containsMouse); onClicked: console.log("LOG hover clicked") } }
    Places { of: ({buttons, twice, held, slow, turned, canceled, lefty, hoverer}) }
}
