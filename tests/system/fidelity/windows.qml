import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 420
    height: 400
    x: 60
    y: 60
    title: "Scene"
    property int notes: 0
    onClosing: console.log("LOG closing")
    onWidthChanged: console.log("NOW size", width, height)
    onHeightChanged: console.log("NOW size", width, height)
    onVisibilityChanged: (state) => console.log("NOW visibility", state)

    Button { id: openTools; x: 20; y: 20; text: "Tools"; onClicked: tools.show() }
    Button { id: openModal; x: 20; y: 80; text: "Ask"; onClicked: modal.show() }
    Button { id: openMore; x: 20; y: 140; text: "More"; onClicked: note.createObject(null, {number: ++main.notes}).show() }
    Button { id: shift; x: 20; y: 200; text: "Shift"; onClicked: { main.x += 160; main.y += 110; console.log("LOG shift") } }
    Button { id: grow; x: 20; y: 260; text: "Grow"; onClicked: { main.width += 60; main.height += 40; console.log("LOG grow") } }
    Button { id: popup; x: 20; y: 320; text: "Choose"; onClicked: { chooser.x = main.x + 160; chooser.y = main.y + 320; chooser.show() } }
    Button { id: full; x: 160; y: 20; text: "Full"; checkable: true; onToggled: { main.visibility = checked ? Window.FullScreen : Window.Windowed; console.log("LOG full", checked) } }
    Button { id: largest; x: 160; y: 80; text: "Largest"; checkable: true; onToggled: { main.visibility = checked ? Window.Maximized : Window.Windowed; console.log("LOG largest", checked) } }
    Button { id: plain; x: 160; y: 140; text: "Plain"; onClicked: console.log("LOG plain") }
    Button { id: rename; x: 160; y: 200; text: "Rename"; onClicked: { tools.title = "Tools – changed"; console.log("LOG renamed") } }

    Window {
        id: tools
        title: "Tools"
        width: 300; height: 200; x: 700; y: 60
        transientParent: null
        onVisibleChanged: console.log("LOG tools", visible)
        onWidthChanged: console.log("NOW tools size", width, height)
        onHeightChanged: console.log("NOW tools size", width, height)
        Button { x: 20; y: 20; text: "Hammer"; onClicked: console.log("LOG hammer") }
        TextField { x: 20; y: 80; placeholderText: "Size"; onTextChanged: console.log("NOW size text", text) }
        Button { x: 20; y: 140; text: "Done"; onClicked: tools.close() }
    }
    Window {
        id: modal
        title: "Question"
        modality: Qt.ApplicationModal
        flags: Qt.Dialog
        width: 260; height: 140; x: 700; y: 340
        onVisibleChanged: console.log("LOG modal", visible)
        CheckBox { x: 20; y: 20; text: "Always"; onToggled: console.log("LOG always", checked) }
        Button { x: 20; y: 80; text: "Yes"; onClicked: modal.close() }
    }
    Window {
        id: chooser
        title: "Chooser"
        flags: Qt.Popup
        width: 160; height: 100
        onVisibleChanged: console.log("LOG chooser", visible)
        Column { Repeater { model: ["Red", "Blue"]; ItemDelegate { width: 160; text: modelData; onClicked: { console.log("LOG chosen", text); chooser.close() } } } }
    }
    Component {
        id: note
        Window {
            id: paper
            property int number
            title: "Note " + number
            width: 200; height: 120; x: 700 + 30 * number; y: 500 + 60 * number
            Button { x: 20; y: 20; text: "Shred"; onClicked: { console.log("LOG shred", paper.number); paper.close() } }
            onClosing: console.log("LOG note closed", number)
        }
    }
    Places { of: ({openTools, openModal, openMore, shift, grow, popup, full, largest, plain, rename}) }
}
