import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

Page {
    id: page

    width: 400
    height: 400

    header: ToolBar {
        RowLayout {
            anchors.fill: parent
            ToolButton { id: back; text: "Back" }
            ToolButton { text: "Forward" }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        TextField { id: search }
        TextField { placeholderText: "no id" }
        ComboBox { id: choice; model: ["a", "b"] }
        Slider {}
        Repeater {
            id: repeater
            model: 3
            delegate: Row {
                id: entry
                Button { id: pick; text: index }
                Button { text: "no id" }
            }
        }
        ListView {
            id: list
            Layout.fillWidth: true
            Layout.preferredHeight: 60
            model: 5
            delegate: ItemDelegate { id: line; text: index }
        }
        Loader {
            id: loader
            sourceComponent: Item {
                id: loaded
                Rectangle { id: inside; width: 5; height: 5 }
                Rectangle { width: 6; height: 6 }
            }
        }
        Card {
            id: first
            Label { id: guest; text: "in the card, of the page" }
        }
        Card { Label { text: "no id" } }
    }
}
