import QtQuick
import QtQuick.Controls

Scene {
    outcome: "depth " + stack.depth + (stack.busy ? ", busy" : "")

    StackView {
        id: stack
        anchors.fill: parent
        initialItem: page
    }
    Component {
        id: page
        Rectangle {
            color: "white"

            Button {
                x: 10; y: 10; width: 100; height: 30
                text: "Deeper"
                onClicked: stack.push(page)
            }
            Button {
                x: 120; y: 10; width: 100; height: 30
                text: "Back"
                onClicked: stack.pop()
            }
        }
    }
}
