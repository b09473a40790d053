import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 400
    x: 60
    y: 60
    title: "Scene"

    component Target: Rectangle {
        id: target
        property string called
        width: 140; height: 100
        color: area.containsDrag ? "gold" : "lightgray"
        DropArea { id: area; anchors.fill: parent
            onEntered: console.log("LOG entered", target.called)
            onDropped: (drop) => { console.log("LOG dropped", target.called, drop.text || drop.source.what); drop.accept() } }
    }
    Target { id: left; x: 220; y: 20; called: "left" }
    Target { id: right; x: 420; y: 20; called: "right" }
    Rectangle { id: chip; property string what: "chip"; x: 40; y: 40; width: 60; height: 60; color: "tomato"; z: 1
        Drag.active: chipTaker.drag.active; Drag.hotSpot: Qt.point(30, 30)
        MouseArea { id: chipTaker; anchors.fill: parent; drag.target: parent; onReleased: { const action = parent.Drag.drop(); console.log("LOG action", action); parent.x = 40; parent.y = 40 } } }
    Rectangle { id: paper; x: 40; y: 200; width: 60; height: 60; color: "white"; border.width: 1
        Drag.active: paperTaker.drag.active; Drag.dragType: Drag.Automatic; Drag.supportedActions: Qt.CopyAction; Drag.mimeData: ({"text/plain": "paper"})
        Drag.onDragFinished: (action) => console.log("LOG finished", action)
        MouseArea { id: paperTaker; anchors.fill: parent; drag.target: paperGhost }
        Item { id: paperGhost } }
    ListView {
        id: order
        x: 220; y: 160; width: 200; height: 220
        model: ListModel { id: orders; ListElement { name: "One" } ListElement { name: "Two" } ListElement { name: "Three" } ListElement { name: "Four" } }
        delegate: DropArea {
            id: slot
            required property int index
            required property string name
            width: 200; height: 44
            onEntered: (drag) => { const from = drag.source.place; if (from !== slot.index) orders.move(from, slot.index, 1) }
            Rectangle { id: bar; property int place: slot.index; width: 200; height: 40; color: grip.drag.active ? "gold" : "khaki"
                Drag.active: grip.drag.active; Drag.source: bar; Drag.hotSpot.y: 20
                Text { anchors.centerIn: parent; text: slot.name }
                MouseArea { id: grip; anchors.fill: parent; drag.target: bar; drag.axis: Drag.YAxis
                    onReleased: { const names = []; for (let i = 0; i < orders.count; ++i) names.push(orders.get(i).name); console.log("LOG order", names); bar.y = 0 } } }
        }
    }
    Places { of: ({left, right, chip, paper, order}) }
}
