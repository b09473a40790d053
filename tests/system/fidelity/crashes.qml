import QtQuick
import QtQuick.Controls
import Fidelity

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 300
    x: 60
    y: 60
    title: "Scene"

    Ending { id: ending }
    Button { id: plain; x: 20; y: 20; text: "Plain"; onClicked: console.log("LOG plain") }
    Button { id: crash; x: 20; y: 80; text: "Crash"; onClicked: ending.crash() }
    Button { id: exit; x: 160; y: 80; text: "Exit"; onClicked: ending.exitAtOnce(0) }
    Button { id: press; x: 300; y: 80; text: "Press"; onPressed: ending.crash() }
    TextField { id: third; x: 20; y: 140; onTextEdited: { console.log("LOG letters", text.length); if (text.length === 3) ending.abort() } }
    CheckBox { id: twice; x: 20; y: 200; text: "Twice"; nextCheckState: () => { if (checked) ending.crash(); return Qt.Checked } }
    Places { of: ({plain, crash, exit, press, third, twice}) }
}
