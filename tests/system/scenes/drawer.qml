import QtQuick
import QtQuick.Controls

Scene {
    property int items: 0
    outcome: (drawer.opened ? "open" : drawer.visible ? "moving" : "closed") + ", items " + items

    Drawer {
        id: drawer
        width: 200
        height: parent.height

        Button {
            x: 20; y: 20; width: 100; height: 30
            text: "Inside"
            onClicked: ++items
        }
    }
}
