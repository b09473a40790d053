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

    GridView {
        id: grid
        anchors.fill: parent
        cellWidth: 80; cellHeight: 80
        model: 200
        clip: true
        focus: true
        onCurrentIndexChanged: console.log("NOW current", currentIndex)
        delegate: Rectangle {
            required property int index
            width: 76; height: 76
            color: Qt.hsla((index % 20) / 20, 0.6, 0.7, 1)
            MouseArea { anchors.fill: parent; onClicked: { grid.currentIndex = parent.index; console.log("LOG tile", parent.index) } }
        }
    }
    Places { of: ({grid}) }
}
