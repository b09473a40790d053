import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    function take(what) { console.log("LOG", what) }

    Button { id: underItem; x: 20; y: 20; text: "Join"; onClicked: take("join") }
    Item { id: emptyItem; x: 0; y: 0; width: 200; height: 80 }

    Button { id: underGradient; x: 220; y: 20; text: "Shine"; onClicked: take("shine") }
    Rectangle { x: 220; y: 20; width: 150; height: 40; gradient: Gradient { GradientStop { position: 0; color: "#80ffffff" } GradientStop { position: 1; color: "transparent" } } }

    Button { id: underFrame; x: 420; y: 20; text: "Focus"; onClicked: take("focus") }
    Rectangle { id: frame; x: 416; y: 16; width: 150; height: 50; color: "transparent"; border { width: 2; color: "blue" } radius: 4 }

    Button { id: underDeclining; x: 20; y: 110; text: "Through"; onClicked: take("through") }
    MouseArea { x: 20; y: 110; width: 150; height: 40; onPressed: (mouse) => { console.log("LOG declined"); mouse.accepted = false } }

    Button { id: underHover; x: 220; y: 110; text: "Hovered"; onClicked: take("hovered") }
    MouseArea { x: 220; y: 110; width: 150; height: 40; hoverEnabled: true; acceptedButtons: Qt.NoButton; onEntered: console.log("LOG entered") }

    Button { id: underDisabled; x: 420; y: 110; text: "Enabled"; onClicked: take("enabled") }
    MouseArea { x: 420; y: 110; width: 150; height: 40; enabled: false; onClicked: take("never") }

    Button { id: underHandler; x: 20; y: 200; text: "Handled"; onClicked: take("handled") }
    Item { x: 20; y: 200; width: 150; height: 40; HoverHandler { } PointHandler { onActiveChanged: console.log("LOG point", active) } }

    Button { id: underImage; x: 220; y: 200; text: "Pictured"; onClicked: take("pictured") }
    BorderImage { x: 220; y: 200; width: 150; height: 40; border { left: 4; top: 4; right: 4; bottom: 4 } }

    TextField { id: underLabel; x: 420; y: 200; width: 160; onTextChanged: console.log("NOW text", text) }
    Label { x: 430; y: 205; text: "Floating label"; opacity: 0.4 }

    Rectangle { id: inside; x: 20; y: 290; width: 150; height: 60; color: "khaki"
        TapHandler { onTapped: take("tapped") }
        Text { anchors.centerIn: parent; text: "Decorated"; z: 1 }
        Rectangle { anchors.fill: parent; anchors.margins: 10; color: "#40ff0000" } }

    MouseArea { id: composed; x: 220; y: 290; width: 150; height: 60; onClicked: take("below")
        Rectangle { anchors.fill: parent; color: "plum" } }
    MouseArea { x: 220; y: 290; width: 150; height: 60; propagateComposedEvents: true; onClicked: (mouse) => { take("above"); mouse.accepted = false } }

    Button { id: covered; x: 420; y: 290; text: "Covered"; onClicked: take("covered") }
    Rectangle { x: 420; y: 290; width: 150; height: 60; color: "#60000000"; MouseArea { id: blocker; anchors.fill: parent; onClicked: take("blocker") } }

    Rectangle { id: plain; x: 20; y: 380; width: 150; height: 60; color: "lightgreen" }
    Button { id: last; x: 220; y: 390; text: "Last"; onClicked: take("last") }

    Item { id: veil; anchors.fill: parent; z: 10; Rectangle { anchors.fill: parent; color: "#08000000" } }

    Places { of: ({underItem, underGradient, underFrame, underDeclining, underHover, underDisabled, underHandler, underImage, underLabel, inside, composed, covered, plain, last}) }
}
