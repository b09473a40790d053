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

    Shortcut { sequence: "Ctrl+S"; onActivated: console.log("LOG save") }
    Shortcut { sequence: "F5"; onActivated: console.log("LOG refresh") }
    Shortcut { sequence: "Ctrl+K, Ctrl+B"; onActivated: console.log("LOG two keys") }
    Shortcut { sequence: "G, I"; onActivated: console.log("LOG go to inbox") }
    Shortcut { sequences: ["Ctrl+Shift+P", "F1"]; onActivated: console.log("LOG palette") }
    Rectangle { id: board; x: 20; y: 20; width: 200; height: 120; color: activeFocus ? "gold" : "khaki"; focus: true
        property int repeats
        // In which order a hand lets go of Ctrl and S is nobody's concern.
        function modifies(key) { return key >= Qt.Key_Shift && key <= Qt.Key_Alt }
        Keys.onPressed: (event) => {
            if (event.isAutoRepeat)
                console.log("NOW repeated", ++repeats > 3)
            else if (!modifies(event.key))
                console.log("LOG pressed", event.key, event.modifiers, JSON.stringify(event.text))
        }
        Keys.onReleased: (event) => { if (!event.isAutoRepeat && !modifies(event.key)) console.log("LOG released", event.key) }
        TapHandler { onTapped: board.forceActiveFocus() } }
    TextField { id: field; x: 20; y: 160; width: 200; onTextChanged: console.log("NOW field", text) }
    Button { id: button; x: 20; y: 220; text: "Button"; onClicked: console.log("LOG button"); onPressed: console.log("LOG down"); onReleased: console.log("LOG up") }
    Rectangle { id: modifiers; x: 240; y: 20; width: 200; height: 120; color: activeFocus ? "gold" : "khaki"
        Keys.onPressed: (event) => console.log("LOG pressed", event.key, event.modifiers)
        Keys.onReleased: (event) => console.log("LOG released", event.key)
        TapHandler { onTapped: modifiers.forceActiveFocus() } }
    Places { of: ({board, modifiers, field, button}) }
}
