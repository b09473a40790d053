import QtQuick
import QtQuick.Controls

ApplicationWindow {
    visible: true
    width: 420
    height: 400
    x: 60
    y: 60
    title: "Scene"

    CheckBox { id: agree; x: 20; y: 20; text: "I agree"; onToggled: console.log("LOG agree", checked) }
    CheckBox { id: third; x: 220; y: 20; text: "Partly"; tristate: true; onCheckStateChanged: console.log("LOG partly", checkState) }
    ButtonGroup { id: group; onClicked: (button) => console.log("LOG chosen", button.text) }
    RadioButton { id: small; x: 20; y: 90; text: "Small"; ButtonGroup.group: group; checked: true }
    RadioButton { id: large; x: 220; y: 90; text: "Large"; ButtonGroup.group: group }
    Switch { id: wifi; x: 20; y: 160; text: "Wi-Fi"; onToggled: console.log("LOG wifi", checked) }
    Switch { id: sound; x: 220; y: 160; text: "Sound"; onToggled: console.log("LOG sound", checked) }
    CheckBox { x: 20; y: 230; text: "Twin"; onToggled: console.log("LOG twin one", checked) }
    CheckBox { id: twin; x: 220; y: 230; text: "Other twin"; onToggled: console.log("LOG twin two", checked) }
    Label { id: label; x: 20; y: 320; text: "Quiet:" }
    CheckBox { id: locked; x: 220; y: 300; text: "Locked"; enabled: false; onToggled: console.log("LOG locked") }

    Places { of: ({agree, third, small, large, wifi, sound, twin, locked}) }
}
