import QtQuick

Scene {
    property bool lifted: false
    outcome: "tile " + Math.round(tile.x) + " " + Math.round(tile.y) + ", lifted " + lifted

    Rectangle {
        id: tile
        x: 20; y: 20; width: 80; height: 80
        color: lifted ? "orange" : "tan"

        MouseArea {
            anchors.fill: parent
            drag.target: lifted ? tile : null
            pressAndHoldInterval: 500
            onPressAndHold: lifted = true
        }
    }
}
