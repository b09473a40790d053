import QtQuick

Scene {
    property string landed: "nothing"
    outcome: "dropped " + landed

    Rectangle {
        id: card
        x: 20; y: 20; width: 60; height: 60
        color: "tomato"
        Drag.active: grip.drag.active
        Drag.hotSpot: Qt.point(30, 30)

        MouseArea {
            id: grip
            anchors.fill: parent
            drag.target: card
            onReleased: card.Drag.drop()
        }
    }
    Rectangle {
        x: 250; y: 100; width: 100; height: 100
        color: area.containsDrag ? "palegreen" : "gainsboro"

        DropArea {
            id: area
            anchors.fill: parent
            onDropped: drop => landed = "at " + Math.round(card.x) + ", " + Math.round(card.y)
        }
    }
}
