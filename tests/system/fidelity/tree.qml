import QtQuick
import QtQuick.Controls
import Fidelity

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 420
    x: 60
    y: 60
    title: "Scene"

    TreeView {
        id: tree
        anchors.fill: parent
        model: Forest { }
        clip: true
        onContentYChanged: console.log("NOW y", Math.round(contentY))
        onRowsChanged: console.log("NOW rows", rows)
        delegate: TreeViewDelegate { implicitWidth: 440; onClicked: console.log("LOG clicked", model.display) }
    }
    Places { of: ({tree}) }
}
