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

    function took(what) { console.log("LOG", what) }

    Button { x: 20; y: 20; objectName: "byObjectName"; text: "Same"; onClicked: took("by object name") }
    Button { x: 160; y: 20; text: "Same"; onClicked: took("same") }
    Button { x: 300; y: 20; text: "By text"; onClicked: took("by text") }
    ToolButton { x: 440; y: 20; icon.name: "edit-copy"; onClicked: took("by icon") }
    ToolButton { x: 500; y: 20; icon.name: "edit-paste"; onClicked: took("by other icon") }
    Button { x: 20; y: 80; Accessible.name: "Accessible one"; onClicked: took("by accessible name") }
    Button { x: 160; y: 80; Accessible.name: "Accessible two"; onClicked: took("by other accessible name") }
    ToolButton { x: 300; y: 80; ToolTip.text: "Tip one"; ToolTip.visible: false; onClicked: took("by tool tip") }
    ToolButton { x: 360; y: 80; ToolTip.text: "Tip two"; ToolTip.visible: false; onClicked: took("by other tool tip") }
    ToolButton { x: 440; y: 80; icon.source: "one.png"; onClicked: took("by icon file") }
    ToolButton { x: 500; y: 80; icon.source: "two.png"; onClicked: took("by other icon file") }
    TextField { x: 20; y: 140; width: 120; placeholderText: "First name"; onTextChanged: console.log("NOW first", text) }
    TextField { x: 160; y: 140; width: 120; placeholderText: "Last name"; onTextChanged: console.log("NOW last", text) }
    TextField { x: 300; y: 140; width: 120; readOnly: true; text: "Fixed text"; onPressed: took("fixed") }
    Column {
        x: 20; y: 200
        Row { Label { text: "Street"; width: 80 } TextField { width: 120; onTextChanged: console.log("NOW street", text) } }
        Row { Label { text: "Town"; width: 80 } TextField { width: 120; onTextChanged: console.log("NOW town", text) } }
    }
    Repeater {
        model: ["north", "south"]
        Rectangle { required property string modelData; required property int index; x: 300 + index * 140; y: 200; width: 120; height: 60; color: "khaki"
            Text { text: parent.modelData } MouseArea { anchors.fill: parent; anchors.topMargin: 20; onClicked: took(parent.modelData) } }
    }
    Frame { x: 20; y: 300; objectName: "frame one"; Button { text: "Inside"; onClicked: took("inside one") } }
    Frame { x: 160; y: 300; objectName: "frame two"; Button { text: "Inside"; onClicked: took("inside two") } }
    GroupBox { x: 300; y: 280; title: "Group one"; CheckBox { text: "On"; onToggled: took("group one") } }
    GroupBox { x: 440; y: 280; title: "Group two"; CheckBox { text: "On"; onToggled: took("group two") } }
    Label { x: 20; y: 400; text: "two\nlines"; MouseArea { anchors.fill: parent; onClicked: took("two lines") } }
    Button { x: 160; y: 400; text: "line\u2028separator"; onClicked: took("separator") }
    Button { x: 320; y: 400; text: "say \"hello\" \\ back"; onClicked: took("quotes") }
    Image { x: 500; y: 400; width: 40; height: 40; source: "picture.png"; MouseArea { anchors.fill: parent; onClicked: took("picture") } }
    Places { }
}
