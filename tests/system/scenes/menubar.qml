import QtQuick
import QtQuick.Controls

Scene {
    property string chosen: "nothing"
    outcome: chosen + (fileMenu.opened ? ", file" : "") + (editMenu.opened ? ", edit" : "")

    menuBar: MenuBar {
        Menu {
            id: fileMenu
            title: "&File"

            Action {
                text: "&Open"
                shortcut: "Ctrl+O"
                onTriggered: chosen = "open"
            }
            Action {
                text: "&Save"
                onTriggered: chosen = "save"
            }
        }
        Menu {
            id: editMenu
            title: "&Edit"

            Action {
                text: "&Find"
                onTriggered: chosen = "find"
            }
        }
    }
}
