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

    ScrollView {
        id: view
        anchors.fill: parent
        contentWidth: availableWidth
        ScrollBar.vertical.policy: ScrollBar.AlwaysOn
        Column {
            Repeater {
                model: 60
                Button { text: "Row " + index; onClicked: console.log("LOG", text) }
            }
        }
    }
    Connections { target: view.contentItem; function onContentYChanged() { console.log("NOW y", Math.round(view.contentItem.contentY)) } }

    Places { of: ({view, bar: view.ScrollBar.vertical, grip: view.ScrollBar.vertical.contentItem}) }
}
