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

    Column {
        Repeater {
            model: ["Ada", "Bob", "Cid", "Bob"]
            Row {
                required property string modelData
                required property int index
                Label { text: parent.modelData; width: 120; height: 40; verticalAlignment: Text.AlignVCenter }
                Button { text: "Call"; onClicked: console.log("LOG call", parent.index) }
                Button { icon.name: "edit-delete"; onClicked: console.log("LOG delete", parent.index) }
                CheckBox { onToggled: console.log("LOG check", parent.index, checked) }
            }
        }
    }
    Places { of: ({}) }
}
