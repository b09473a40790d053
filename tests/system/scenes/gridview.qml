import QtQuick

Scene {
    property string picked: "none"
    outcome: "picked " + picked + ", current " + grid.currentIndex

    GridView {
        id: grid
        width: 400; height: 300
        cellWidth: 100; cellHeight: 60
        model: 60
        focus: true
        clip: true
        keyNavigationEnabled: true
        delegate: Rectangle {
            required property int index
            width: 90; height: 50
            color: GridView.isCurrentItem ? "gold" : "lightgray"

            Text {
                anchors.centerIn: parent
                text: "Cell " + index
            }
            MouseArea {
                anchors.fill: parent
                onClicked: {
                    picked = index;
                    grid.currentIndex = index;
                }
            }
        }
    }
}
