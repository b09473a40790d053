import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 500
    height: 460
    x: 60
    y: 60
    title: "Scene"

    TextField { id: user; x: 20; y: 20; width: 300; placeholderText: "Name"; onTextChanged: console.log("NOW user", text) }
    TextField { id: password; x: 20; y: 90; width: 300; echoMode: TextInput.Password; onTextChanged: console.log("NOW password", text); onAccepted: console.log("LOG accepted") }
    TextField { id: number; x: 20; y: 160; width: 300; validator: IntValidator { bottom: 0; top: 999 } onTextChanged: console.log("NOW number", text) }
    TextArea { id: area; x: 20; y: 240; width: 400; height: 180; placeholderText: "Notes"; wrapMode: TextEdit.Wrap; onTextChanged: console.log("NOW area", JSON.stringify(text)); onSelectedTextChanged: console.log("NOW selected", selectedText) }

    Places { of: ({user, password, number, area}) }
}
