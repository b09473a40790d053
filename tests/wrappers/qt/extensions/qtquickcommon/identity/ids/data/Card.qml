import QtQuick
import QtQuick.Controls

Item {
    id: card

    property alias heading: title
    property Item accessory: Rectangle { width: 4; height: 4 }
    default property alias content: body.data

    width: 80
    height: 40

    Label {
        id: title
        text: "Card"
    }
    Label { text: "no id" }
    Item {
        id: body
        anchors.fill: parent
    }
    Component.onCompleted: accessory.parent = card
}
