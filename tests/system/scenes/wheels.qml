import QtQuick
import QtQuick.Controls

Scene {
    property int zoom: 100
    property int turns: 0
    outcome: "turns " + turns + ", zoom " + zoom + ", scrolled " + (view.contentItem.contentY > 0)

    MouseArea {
        width: 150; height: 150
        onWheel: wheel => {
            if (wheel.modifiers & Qt.ControlModifier)
                zoom += wheel.angleDelta.y / 12;
            else
                turns += wheel.angleDelta.y / 120 + wheel.angleDelta.x / 12;
        }
        Rectangle {
            anchors.fill: parent
            color: "wheat"
        }
    }
    ScrollView {
        id: view
        x: 200; width: 200; height: 300
        contentHeight: 2000

        Rectangle {
            width: 200; height: 2000
            color: "lavender"
        }
    }
}
