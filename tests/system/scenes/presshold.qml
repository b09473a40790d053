import QtQuick

Scene {
    property int clicks: 0
    property int holds: 0
    property int doubles: 0
    property string buttons: ""
    outcome: "clicks " + clicks + ", holds " + holds + ", doubles " + doubles + buttons

    MouseArea {
        id: area
        x: 20; y: 20; width: 200; height: 200
        acceptedButtons: Qt.LeftButton | Qt.RightButton | Qt.MiddleButton
        onClicked: mouse => {
            ++clicks;
            buttons += ", " + mouse.button + (mouse.modifiers ? " with " + mouse.modifiers : "");
        }
        onPressAndHold: ++holds
        onDoubleClicked: ++doubles

        Rectangle {
            anchors.fill: parent
            color: "wheat"
        }
    }
}
