import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 460
    x: 60
    y: 60
    title: "Scene"

    ListModel { id: people; Component.onCompleted: { for (let i = 0; i < 120; ++i) append({name: "Person " + i, team: "Team " + Math.floor(i / 20)}) } }
    ListView {
        id: list
        anchors.fill: parent
        anchors.rightMargin: 160
        model: people
        clip: true
        focus: true
        reuseItems: true
        section.property: "team"
        section.delegate: Label { required property string section; text: section; font.bold: true }
        highlight: Rectangle { color: "lightblue" }
        ScrollBar.vertical: ScrollBar { policy: ScrollBar.AlwaysOn }
        onCurrentIndexChanged: console.log("NOW current", currentIndex)
        delegate: ItemDelegate {
            id: row
            required property int index
            required property string name
            width: list.width - 20
            text: name
            onClicked: { list.currentIndex = index; list.forceActiveFocus(); console.log("LOG clicked", name) }
            Button { anchors.right: parent.right; text: "Drop"; height: parent.height; onClicked: { console.log("LOG drop", row.name); people.remove(row.index) } }
        }
    }
    Places { of: ({list}) }
}
