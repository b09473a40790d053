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

    ListView {
        id: list
        width: 460; height: 200
        model: ["Ada", "Bob", "Cid", "Dan"]
        delegate: ItemDelegate {
            id: row
            required property string modelData
            width: 460
            text: modelData
            FocusScope {
                x: 150; y: 4; width: 250; height: 32
                Rectangle { anchors.fill: parent; color: inner.activeFocus ? "gold" : "khaki" }
                Item {
                    id: inner
                    anchors.fill: parent
                    focus: true
                    property string letters
                    Keys.onPressed: (event) => { if (event.text) { letters += event.text; console.log("NOW letters" + row.modelData, letters); event.accepted = true } }
                    Text { text: inner.letters }
                    TapHandler { onTapped: inner.forceActiveFocus() }
                }
            }
        }
    }
    FocusScope { id: scope; y: 220; width: 460; height: 60; TextField { id: search; focus: true; width: 200; placeholderText: "Search"; onTextChanged: console.log("NOW search", text) } }
    Button { id: go; y: 300; text: "Go"; onClicked: { scope.forceActiveFocus(); console.log("LOG go") } }
    Places { of: ({list, scope, search, go}) }
}
