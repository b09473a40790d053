import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 360
    x: 60
    y: 60
    title: "Scene"

    GridLayout {
        id: form
        columns: 2
        width: 400
        Label { text: "Name" }
        TextField { Layout.fillWidth: true; onTextChanged: console.log("NOW name", text) }
        Label { text: "Town" }
        TextField { Layout.fillWidth: true; onTextChanged: console.log("NOW town", text) }
        Label { text: "Member" }
        CheckBox { id: box; onToggled: console.log("NOW member", checked) }
        Item { Layout.fillWidth: true }
        Button { id: ok; text: "OK"; onClicked: console.log("LOG ok") }
    }
    Places { of: () => ({name: form.children[1], box, ok}) }
}
