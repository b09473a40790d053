import QtQuick
import QtQuick.Controls

Scene {
    property string answer: "none"
    outcome: answer + (dialog.opened ? ", open" : "")

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Ask"
        onClicked: dialog.open()
    }
    Dialog {
        id: dialog
        x: 50; y: 60; width: 300; height: 180
        title: "Sure?"
        modal: true
        footer: Row {
            Button {
                width: 100; height: 40
                text: "Yes"
                onClicked: dialog.accept()
            }
            Button {
                width: 100; height: 40
                text: "No"
                onClicked: dialog.reject()
            }
        }
        onAccepted: answer = "accepted " + reason.text
        onRejected: answer = "rejected"

        TextField {
            id: reason
            width: 200
            focus: true
        }
    }
}
