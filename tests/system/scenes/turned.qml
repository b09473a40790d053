import QtQuick
import QtQuick.Controls

Scene {
    property string place: "none"
    outcome: "clicked " + place + ", level " + level.value.toFixed(0)

    Rectangle {
        x: 20; y: 20; width: 100; height: 40
        rotation: 30
        color: "pink"

        MouseArea {
            anchors.fill: parent
            onClicked: mouse => place = "turned " + Math.round(mouse.x / 20) + " " + Math.round(mouse.y / 20)
        }
    }
    Rectangle {
        x: 200; y: 20; width: 60; height: 40
        scale: 2
        transformOrigin: Item.TopLeft
        color: "lightgreen"

        MouseArea {
            anchors.fill: parent
            onClicked: mouse => place = "scaled " + Math.round(mouse.x / 10) + " " + Math.round(mouse.y / 10)
        }
    }
    Slider {
        id: level
        x: 100; y: 150; width: 200; height: 30
        rotation: 90
        from: 0
        to: 100
    }
}
