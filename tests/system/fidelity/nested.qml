import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 420
    x: 60
    y: 60
    title: "Scene"

    Flickable {
        id: outer
        anchors.fill: parent
        contentWidth: 460
        contentHeight: 2400
        onContentYChanged: console.log("NOW outer", Math.round(contentY))
        Column {
            Repeater {
                model: 12
                Rectangle {
                    width: 460
                    height: 200
                    color: index % 2 ? "lightgray" : "white"
                    ListView {
                        id: inner
                        x: 30; y: 30; width: 300; height: 140; clip: true
                        model: 5
                        readonly property int number: index
                        onContentYChanged: console.log("NOW inner" + number, Math.round(contentY))
                        delegate: ItemDelegate { width: 300; text: "List " + inner.number + " entry " + index; onClicked: console.log("LOG", text) }
                    }
                }
            }
        }
    }
    Places { of: ({outer}) }
}
