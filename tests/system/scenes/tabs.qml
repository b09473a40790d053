import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

Scene {
    property string done: ""
    outcome: "tab " + bar.currentIndex + done

    TabBar {
        id: bar
        width: 300

        TabButton { text: "One" }
        TabButton { text: "Two" }
        TabButton { text: "Three" }
    }
    StackLayout {
        y: 60; width: 300; height: 100
        currentIndex: bar.currentIndex

        Repeater {
            model: 3
            Item {
                required property int index
                Button {
                    x: 10; y: 10; width: 100; height: 30
                    text: "Do"
                    onClicked: done += ", did " + index
                }
            }
        }
    }
}
