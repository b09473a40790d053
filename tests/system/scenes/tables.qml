import QtQuick
import QtQuick.Controls

Scene {
    property string picked: "none"
    outcome: "picked " + picked + ", scrolled " + (table.contentY > 0)

    TableView {
        id: table
        width: 180; height: 300
        model: 100
        clip: true
        delegate: Rectangle {
            required property int row
            implicitWidth: 170; implicitHeight: 30
            border.width: 1

            Text {
                anchors.centerIn: parent
                text: "Row " + row
            }
            TapHandler { onTapped: picked = "row " + row }
        }
    }
    TreeView {
        x: 200; width: 200; height: 300
        model: ListModel {
            ListElement { display: "Oak" }
            ListElement { display: "Elm" }
        }
        delegate: TreeViewDelegate {
            id: node
            implicitWidth: 200
            TapHandler { onTapped: picked = "tree " + node.model.display }
        }
    }
}
