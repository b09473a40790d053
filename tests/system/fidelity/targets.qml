import QtQuick

Window {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    component Card: Rectangle {
        width: 80
        height: 80
        onXChanged: console.log("NOW", objectName + "X", Math.round(x))
        onYChanged: console.log("NOW", objectName + "Y", Math.round(y))
    }

    Card { id: area; objectName: "area"; x: 20; y: 20; color: "tomato"
        MouseArea { id: areaTaker; anchors.fill: parent; drag.target: parent; onReleased: { console.log("LOG area released"); places.tell("area", area) } } }
    Card { id: handler; objectName: "handler"; x: 20; y: 140; color: "gold"
        DragHandler { onActiveChanged: { console.log("LOG handler", active); places.tell("handler", handler) } } }
    Card { id: across; objectName: "across"; x: 20; y: 260; color: "lightgreen"
        MouseArea { anchors.fill: parent; drag { target: parent; axis: Drag.XAxis; minimumX: 0; maximumX: 500 } onReleased: places.tell("across", across) } }
    Card { id: immediate; objectName: "immediate"; x: 20; y: 360; color: "lightblue"
        MouseArea { anchors.fill: parent; drag { target: parent; threshold: 0; smoothed: false } } }
    Card { id: byHand; objectName: "byHand"; x: 120; y: 360; color: "plum"
        MouseArea {
            property point start
            anchors.fill: parent
            onPressed: (mouse) => start = Qt.point(mouse.x, mouse.y)
            onPositionChanged: (mouse) => { parent.x += mouse.x - start.x; parent.y += mouse.y - start.y }
        } }

    Places { id: places; of: ({area, handler, across, immediate, byHand}) }
}
