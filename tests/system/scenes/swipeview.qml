import QtQuick
import QtQuick.Controls

Scene {
    property string done: ""
    outcome: "page " + view.currentIndex + (view.contentItem.moving ? ", moving" : "") + done

    SwipeView {
        id: view
        anchors.fill: parent

        Repeater {
            model: 3
            Rectangle {
                required property int index
                color: ["mistyrose", "honeydew", "aliceblue"][index]

                Button {
                    x: 150; y: 100; width: 100; height: 30
                    text: "Page " + index
                    onClicked: done += ", did " + index
                }
            }
        }
    }
}
