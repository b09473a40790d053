import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 360
    x: 60
    y: 60
    title: "Scene"

    SwipeView {
        id: swipe
        anchors.fill: parent
        anchors.bottomMargin: 60
        onCurrentIndexChanged: console.log("NOW page", currentIndex)
        Repeater {
            model: 4
            Item { Button { anchors.centerIn: parent; text: "On page " + index; onClicked: console.log("LOG", text) } }
        }
    }
    PageIndicator { id: dots; x: 180; y: 320; count: 4; currentIndex: swipe.currentIndex; interactive: true; onCurrentIndexChanged: swipe.currentIndex = currentIndex }
    Places { of: ({swipe, dots}) }
}
