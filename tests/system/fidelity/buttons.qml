import QtQuick
import QtQuick.Controls

ApplicationWindow {
    visible: true
    width: 420
    height: 420
    x: 60
    y: 60
    title: "Scene"

    Button { id: plain; x: 20; y: 20; text: "Save"; onClicked: console.log("LOG save") }
    Button { id: toggle; x: 160; y: 20; text: "Bold"; checkable: true; onToggled: console.log("LOG bold", checked) }
    RoundButton { id: round; x: 20; y: 90; text: "+"; onClicked: console.log("LOG plus") }
    ToolButton { id: tool; x: 160; y: 90; text: "Find"; onClicked: console.log("LOG find") }
    DelayButton { id: delay; x: 20; y: 160; text: "Erase"; delay: 600; onActivated: console.log("LOG erased"); onCheckedChanged: console.log("NOW delay", checked) }
    Button { id: flat; x: 20; y: 240; flat: true; text: "Skip"; onClicked: console.log("LOG skip") }
    Button { id: highlighted; x: 160; y: 240; highlighted: true; text: "Next"; onDoubleClicked: console.log("LOG next twice"); onClicked: console.log("LOG next") }
    Button { id: repeat; x: 20; y: 320; text: "More"; autoRepeat: true; onClicked: console.log("NOW repeated true") }

    Places { of: ({plain, toggle, round, tool, delay, flat, highlighted, repeat}) }
}
