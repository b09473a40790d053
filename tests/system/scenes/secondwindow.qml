import QtQuick
import QtQuick.Controls
import QtQuick.Window

Scene {
    property int here: 0
    property string there: ""
    outcome: "here " + here + ", there " + there + (second.visible ? ", two windows" : ", one window")

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Here"
        onClicked: {
            ++here;
            second.show();
        }
    }
    Window {
        id: second
        title: "Second"
        width: 250; height: 150

        TextField {
            x: 10; y: 10; width: 150; height: 30
            onTextChanged: there = text
        }
        Button {
            x: 10; y: 60; width: 100; height: 30
            text: "There"
            onClicked: there += " clicked"
        }
    }
}
