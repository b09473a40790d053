import QtQuick
import QtQuick.Controls

Scene {
    property string keys: ""
    outcome: "keys" + keys + ", pushed " + pushed + ", focus " + (activeFocusItem ? activeFocusItem.objectName : "none")
    property int pushed: 0

    Shortcut {
        sequence: "Ctrl+Shift+K"
        onActivated: keys += " chord"
    }
    Shortcut {
        sequence: "F5"
        onActivated: keys += " refresh"
    }
    Item {
        objectName: "reader"
        focus: true
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Up)
                keys += " up";
            else if (event.key === Qt.Key_PageDown)
                keys += " down";
            else if (event.text === "q")
                keys += " q";
        }
        KeyNavigation.tab: first
    }
    Button {
        id: first
        objectName: "first"
        x: 10; y: 10
        text: "First"
        onClicked: ++pushed
        KeyNavigation.tab: last
    }
    Button {
        id: last
        objectName: "last"
        x: 120; y: 10
        text: "Last"
        onClicked: pushed += 10
    }
}
