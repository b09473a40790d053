import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window

    property Item chosen: plain
    property Item chosenWithoutId
    property Card card: Card { objectName: "held by a property of its own type" }
    property Card derived
    property var anything
    property QtObject anyObject
    property Flickable flickable: Flickable {}
    property list<Item> several: [ Item {}, Item {} ]
    property alias renamed: aliased

    width: 300
    height: 300
    visible: true

    footer: ToolBar { Label { text: "footer" } }

    Item { id: plain }
    Item { id: aliased }
    Item { objectName: "chosen" }
    Item { objectName: "anything" }
    Item { objectName: "anyObject" }
    TextField { objectName: "focused"; focus: true }
    Loader { source: "Controls.qml"; anchors.fill: parent }
    Column {
        Repeater { model: 4; Rectangle { width: 1; height: 1 } }
    }
    component FancyCard: Card { property int extra }
    FancyCard { objectName: "derived" }

    Component.onCompleted: {
        for (let i = 0; i < contentItem.children.length; ++i) {
            const child = contentItem.children[i]
            if (child.objectName === "chosen")
                chosenWithoutId = child
            else if (child.objectName === "anything")
                anything = child
            else if (child.objectName === "anyObject")
                anyObject = child
            else if (child.objectName === "derived")
                derived = child
        }
        card.parent = contentItem
        flickable.parent = contentItem
        several[0].parent = contentItem
        several[1].parent = contentItem
    }
}
