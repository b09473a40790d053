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

    Drawer { width: 150; height: main.height }
    ToolBar { id: bar; width: parent.width; Row { ToolButton { id: help; text: "Help"; onClicked: console.log("LOG help"); ToolTip.visible: hovered; ToolTip.text: "Shows help" } ToolButton { id: info; icon.name: "info"; onClicked: console.log("LOG info"); ToolTip.visible: hovered; ToolTip.delay: 300; ToolTip.text: "About" } } }
    Button { id: save; x: 20; y: 100; text: "Save"; onClicked: { console.log("LOG save"); toast.open() } }
    Popup { id: toast; x: 200; y: 240; modal: false; closePolicy: Popup.NoAutoClose; Label { text: "Saved" } }
    ListView { id: list; x: 200; y: 80; width: 200; height: 140; clip: true; model: ["Ada", "Bob", "Cid"]; delegate: ItemDelegate { width: 200; text: modelData; onClicked: console.log("LOG", text) } }
    Places { of: ({help, info, save, list}) }
}
