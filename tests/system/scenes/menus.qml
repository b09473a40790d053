import QtQuick
import QtQuick.Controls

Scene {
    property string chosen: "nothing"
    outcome: chosen + (context.opened ? ", open" : "") + (more.opened ? ", more" : "") + ", wrap " + wrap.checked

    Rectangle {
        id: sheet
        anchors.fill: parent
        color: "white"

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.RightButton
            onClicked: mouse => context.popup(mouse.x, mouse.y)
        }
    }
    Menu {
        id: context

        MenuItem {
            text: "Cut"
            onTriggered: chosen = "cut"
        }
        MenuItem {
            id: wrap
            text: "Wrap"
            checkable: true
        }
        Menu {
            id: more
            title: "More"

            MenuItem {
                text: "Sort"
                onTriggered: chosen = "sort"
            }
        }
    }
}
