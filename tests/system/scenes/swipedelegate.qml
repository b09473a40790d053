import QtQuick
import QtQuick.Controls

Scene {
    property string log: ""
    outcome: "position " + row.swipe.position.toFixed(1) + log

    SwipeDelegate {
        id: row
        width: 400; height: 50
        text: "Swipe me"
        onClicked: log += ", clicked"
        swipe.right: Rectangle {
            width: 100; height: parent.height
            anchors.right: parent.right
            color: "tomato"
            SwipeDelegate.onClicked: log += ", deleted"
        }
    }
}
