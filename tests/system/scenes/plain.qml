import QtQuick

// No window of its own: the program makes one around it.
Rectangle {
    id: root
    property int clicks: 0
    property string keys: ""
    property string outcome: "clicks " + clicks + ", keys " + keys
    readonly property bool shown: Window.active

    width: 400; height: 300
    color: "white"
    onOutcomeChanged: console.log("STATE " + outcome)
    onShownChanged: if (shown) console.log("STATE " + outcome)
    focus: true
    Keys.onPressed: event => keys += event.text

    Rectangle {
        x: 20; y: 20; width: 100; height: 50
        color: "red"
        MouseArea {
            anchors.fill: parent
            onClicked: ++root.clicks
        }
    }
    Rectangle {
        x: 150; y: 20; width: 100; height: 50
        color: "blue"
        MouseArea {
            anchors.fill: parent
            onClicked: root.clicks += 10
        }
    }
}
