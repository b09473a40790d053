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

    menuBar: MenuBar { id: bar
        Menu { title: "File"; onOpened: places.opened(() => ({recent: itemAt(0)}), "file")
            Menu { title: "Recent"; onOpened: places.opened(() => ({diary: itemAt(0), letter: itemAt(1)}), "recent"); MenuItem { text: "Diary"; onTriggered: console.log("LOG diary") } MenuItem { text: "Letter"; onTriggered: console.log("LOG letter") } }
            MenuItem { text: "Quit" } } }
    ListView { id: list; y: 20; width: 400; height: 200; model: ["Mail", "News", "Chat"]
        delegate: ItemDelegate { id: row; required property string modelData; width: 400; text: modelData; hoverEnabled: true; onClicked: console.log("LOG", text)
            Button { anchors.right: parent.right; height: parent.height; text: "Delete"; visible: row.hovered || hovered; onClicked: console.log("LOG delete", row.text) } } }
    Button { id: menuButton; x: 20; y: 260; text: "More"; onClicked: console.log("LOG more"); ToolTip.visible: hovered; ToolTip.text: "All the rest" }
    Places { id: places; of: () => ({list, file: bar.itemAt(0), menuButton}) }
}
