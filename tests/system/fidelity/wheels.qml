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

    Flickable { id: flickable; x: 10; y: 10; width: 180; height: 200; contentWidth: 180; contentHeight: 4000; clip: true; onContentYChanged: console.log("NOW flickable", Math.round(contentY))
        Rectangle { width: 180; height: 4000; gradient: Gradient { GradientStop { position: 0; color: "white" } GradientStop { position: 1; color: "navy" } } } }
    ListView { id: list; x: 210; y: 10; width: 180; height: 200; clip: true; model: 300; onContentYChanged: console.log("NOW list", Math.round(contentY))
        delegate: ItemDelegate { width: 180; text: "Entry " + index; onClicked: console.log("LOG", text) } }
    Flickable { id: wide; x: 410; y: 10; width: 180; height: 200; contentWidth: 3000; contentHeight: 200; clip: true; onContentXChanged: console.log("NOW wide", Math.round(contentX))
        Rectangle { width: 3000; height: 200; gradient: Gradient { orientation: Gradient.Horizontal; GradientStop { position: 0; color: "white" } GradientStop { position: 1; color: "green" } } } }
    Slider { id: slider; x: 10; y: 230; width: 180; from: 0; to: 100; wheelEnabled: true; onValueChanged: console.log("NOW slider", Math.round(value)) }
    SpinBox { id: spin; x: 210; y: 230; wheelEnabled: true; onValueChanged: console.log("NOW spin", value) }
    ComboBox { id: combo; x: 410; y: 230; wheelEnabled: true; model: 20; onCurrentIndexChanged: console.log("NOW combo", currentIndex) }
    Rectangle { id: area; x: 10; y: 300; width: 180; height: 60; color: "khaki"; MouseArea { property int turned; anchors.fill: parent; onWheel: (wheel) => { turned += wheel.angleDelta.y; console.log("NOW area", turned, wheel.modifiers) } } }
    Rectangle { id: handled; x: 210; y: 300; width: 180; height: 60; color: "plum"; property real turn: 0; onTurnChanged: console.log("NOW handled", turn); WheelHandler { property: "turn" } }
    ScrollView { id: notes; x: 410; y: 290; width: 180; height: 150
        TextArea { text: "line\n".repeat(80) } }
    Connections { target: notes.contentItem; function onContentYChanged() { console.log("NOW notes", Math.round(notes.contentItem.contentY)) } }
    Places { of: ({flickable, list, wide, slider, spin, combo, area, handled, notes}) }
}
