import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 600
    height: 460
    x: 60
    y: 60
    title: "Scene"

    Button { id: openModal; x: 20; y: 20; text: "Rename"; onClicked: modal.open() }
    Button { id: openFree; x: 160; y: 20; text: "Notes"; onClicked: free.open() }
    Button { id: behind; x: 20; y: 400; text: "Behind"; onClicked: console.log("LOG behind") }
    Dialog {
        id: modal
        title: "Rename"
        modal: true
        x: 150; y: 120; width: 300
        standardButtons: Dialog.Ok | Dialog.Cancel
        onOpened: places.opened(() => ({ok: standardButton(Dialog.Ok), cancel: standardButton(Dialog.Cancel), name: field}), "modal opened")
        onAccepted: console.log("LOG renamed", field.text)
        onRejected: console.log("LOG kept")
        contentItem: TextField { id: field; placeholderText: "New name" }
    }
    Dialog {
        id: free
        title: "Notes"
        modal: false
        closePolicy: Popup.CloseOnEscape
        x: 150; y: 120; width: 300
        standardButtons: Dialog.Close
        onOpened: places.opened(() => ({close: standardButton(Dialog.Close), tick}), "free opened")
        onClosed: console.log("LOG free closed")
        contentItem: CheckBox { id: tick; text: "Keep"; onToggled: console.log("LOG keep", checked) }
    }

    Places { id: places; of: ({openModal, openFree, behind}) }
}
