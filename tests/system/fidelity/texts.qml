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

    TextField { id: plain; x: 20; y: 20; width: 300; selectByMouse: true; onTextChanged: console.log("NOW plain", JSON.stringify(text)); onCursorPositionChanged: console.log("NOW cursor", cursorPosition) }
    TextField { id: other; x: 20; y: 80; width: 300; text: "some words here"; selectByMouse: true; onTextChanged: console.log("NOW other", text); onSelectedTextChanged: console.log("NOW selected", selectedText) }
    TextArea { id: area; x: 20; y: 140; width: 400; height: 120; text: "first line\nsecond line\nthird"; selectByMouse: true; onTextChanged: console.log("NOW area", JSON.stringify(text)); onSelectedTextChanged: console.log("NOW selected", selectedText.trim()) }
    TextInput { id: bare; x: 20; y: 280; width: 200; height: 30; onTextChanged: console.log("NOW bare", text) }
    TextField { id: fixed; x: 20; y: 330; width: 300; readOnly: true; text: "Cannot be changed"; onPressed: console.log("LOG fixed pressed") }
    TextField { id: upper; x: 20; y: 390; width: 140; maximumLength: 5; font.capitalization: Font.AllUppercase; onTextChanged: console.log("NOW upper", text) }
    Label { x: 240; y: 395; id: link; text: "See <a href='there'>there</a>"; onLinkActivated: (target) => console.log("LOG link", target) }

    Places { of: ({plain, other, area, bare, fixed, upper, link}) }
}
