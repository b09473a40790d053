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

    component Entry: MenuItem {
        onTriggered: console.log("LOG", text, checkable ? checked : "")
    }

    menuBar: MenuBar {
        id: bar
        Menu {
            id: file
            title: "&File"
            onOpened: places.opened(() => ({new: newEntry, recent: file.itemAt(1), wrap}), "file opened")
            Entry { id: newEntry; text: "&New" }
            Menu {
                id: recent
                title: "&Recent"
                onOpened: places.opened(() => ({letter}), "recent opened")
                Entry { text: "Diary" }
                Entry { id: letter; text: "Letter" }
            }
            MenuSeparator { }
            Entry { id: wrap; text: "&Wrap"; checkable: true }
        }
        Menu {
            id: edit
            title: "&Edit"
            onOpened: places.opened(() => ({copy}), "edit opened")
            Entry { id: copy; text: "&Copy" }
            Entry { text: "&Paste"; enabled: false }
        }
    }
    MouseArea {
        id: area
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: (mouse) => context.popup(mouse.x, mouse.y)
    }
    Menu {
        id: context
        onOpened: places.opened(() => ({cut, more: context.itemAt(1)}), "context opened")
        Entry { id: cut; text: "Cut out" }
        Menu {
            title: "More"
            onOpened: places.opened(() => ({deep}), "more opened")
            Entry { id: deep; text: "Deep" }
        }
    }

    Places { id: places; of: ({file: bar.itemAt(0), edit: bar.itemAt(1), area}) }
}
