import QtQuick

Scene {
    property int taps: 0
    property int doubles: 0
    property int longs: 0
    property int rights: 0
    property int hovers: 0
    outcome: "taps " + taps + ", doubles " + doubles + ", longs " + longs + ", rights " + rights + ", hovers " + hovers
             + ", card " + Math.round(card.x) + " " + Math.round(card.y) + ", wheel " + Math.round(wheel.x)

    Rectangle {
        width: 150; height: 100
        color: "khaki"

        TapHandler {
            onTapped: ++taps
            onDoubleTapped: ++doubles
            onLongPressed: ++longs
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: ++rights
        }
    }
    Rectangle {
        x: 200; width: 100; height: 100
        color: "plum"

        HoverHandler { onHoveredChanged: if (hovered) ++hovers }
    }
    Rectangle {
        id: card
        x: 20; y: 150; width: 60; height: 60
        color: "salmon"

        DragHandler { }
    }
    Rectangle {
        x: 200; y: 150; width: 150; height: 100
        color: "lightblue"

        Item { id: wheel }
        WheelHandler {
            target: wheel
            property: "x"
        }
    }
}
