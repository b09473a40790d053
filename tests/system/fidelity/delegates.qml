import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 460
    x: 60
    y: 60
    title: "Scene"

    Column {
        anchors.fill: parent
        ItemDelegate { id: item; width: 400; text: "Plain"; onClicked: console.log("LOG plain") }
        CheckDelegate { id: check; width: 400; text: "Check"; onToggled: console.log("LOG check", checked) }
        RadioDelegate { id: radioOne; width: 400; text: "One"; checked: true }
        RadioDelegate { id: radioTwo; width: 400; text: "Two"; onClicked: console.log("LOG two", checked) }
        SwitchDelegate { id: toggle; width: 400; text: "Switch"; onToggled: console.log("LOG switch", checked) }
        SwipeDelegate {
            id: swipe
            width: 400
            text: "Swipe"
            onClicked: console.log("LOG swipe clicked")
            readonly property bool opened: swipe.swipe.complete
            onOpenedChanged: { console.log("LOG opened", opened); if (swipe.swipe.rightItem) places.tell("remove", swipe.swipe.rightItem) }
            swipe.right: Button { id: remove; text: "Delete"; anchors.right: parent.right; height: parent.height; onClicked: { console.log("LOG delete"); swipe.swipe.close() } }
        }
    }

    Places { id: places; of: ({item, check, radioTwo, toggle, swipe}) }
}
