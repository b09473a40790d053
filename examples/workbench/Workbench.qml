import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: workbench

    width: 640
    height: 480
    visible: true
    title: "Workbench"

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 8

        RowLayout {
            Button {
                id: countButton
                text: "Count " + status.count
                onClicked: status.count += 1
            }
            Button {
                objectName: "resetButton"
                text: "Reset"
                onClicked: status.count = 0
            }
            Button {
                text: "About…"
                onClicked: about.open()
            }
            Button {
                text: "Locked"
                enabled: false
            }
        }

        TextField {
            id: nameField
            Layout.fillWidth: true
            placeholderText: "Name"
        }

        Rectangle {
            id: canvas
            objectName: "canvas"
            Layout.fillWidth: true
            Layout.preferredHeight: 120
            color: "#dfe7ef"

            Rectangle {
                id: token
                x: 20
                y: 20
                width: 60
                height: 60
                radius: 8
                color: "#4477aa"

                MouseArea {
                    id: tokenArea
                    anchors.fill: parent
                    acceptedButtons: Qt.LeftButton | Qt.RightButton
                    drag.target: token
                    onClicked: mouse => status.last = mouse.button === Qt.RightButton ? "right" : "left"
                    onDoubleClicked: status.last = "double"
                    onPressAndHold: status.last = "held"
                }
            }
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: 100
            delegate: ItemDelegate {
                required property int index

                width: ListView.view.width
                objectName: "row" + index
                text: "Row " + index
                onClicked: status.last = objectName
            }
        }

        Label {
            id: status

            property int count: 0
            property string last: ""

            text: "Count " + count + ", last " + last
        }
    }

    Dialog {
        id: about

        anchors.centerIn: parent
        modal: true
        title: "About"
        standardButtons: Dialog.Ok

        Label {
            text: "A small program to be recorded."
        }
    }
}
