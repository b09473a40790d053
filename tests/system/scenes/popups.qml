import QtQuick
import QtQuick.Controls

Scene {
    property int inside: 0
    property int outside: 0
    outcome: (popup.opened ? "open" : popup.visible ? "moving" : "closed") + ", inside " + inside + ", outside " + outside

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Show"
        onClicked: popup.open()
    }
    Button {
        x: 10; y: 200; width: 100; height: 30
        text: "Outside"
        onClicked: ++outside
    }
    Popup {
        id: popup
        x: 150; y: 60; width: 200; height: 120

        Button {
            x: 10; y: 10; width: 100; height: 30
            text: "Inside"
            onClicked: ++inside
        }
    }
}
