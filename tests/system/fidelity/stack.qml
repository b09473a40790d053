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

    StackView {
        id: stack
        anchors.fill: parent
        initialItem: page
        onDepthChanged: console.log("NOW depth", depth)
    }
    Component {
        id: page
        Page {
            id: self
            readonly property int level: StackView.index
            title: "Level " + level
            header: ToolBar { Row { ToolButton { text: "‹"; enabled: self.level > 0; onClicked: stack.pop() } Label { text: self.title } } }
            Button { anchors.centerIn: parent; text: "Deeper"; onClicked: { console.log("LOG deeper from", self.level); stack.push(page) } }
        }
    }
    Places { of: ({stack}) }
}
