import QtQuick

Scene {
    outcome: "down " + (tall.moving ? "moving" : tall.contentY > 0) + ", right "
             + (wide.moving ? "moving" : wide.contentX > 0)

    Flickable {
        id: tall
        width: 180; height: 300
        contentHeight: 3000
        clip: true

        Repeater {
            model: 60
            Rectangle {
                required property int index
                y: 50 * index
                width: 180; height: 50
                color: index % 2 ? "steelblue" : "lightblue"
            }
        }
    }
    Flickable {
        id: wide
        x: 200; width: 200; height: 150
        contentWidth: 3000
        clip: true

        Repeater {
            model: 60
            Rectangle {
                required property int index
                x: 50 * index
                width: 50; height: 150
                color: index % 2 ? "seagreen" : "lightgreen"
            }
        }
    }
}
