// What makes items hard to tell apart: repeated ones, equal texts, pages that
// are not shown, popups, loaders, and windows that look alike.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: window
    title: "Everything \"at\" once\\"
    width: 640; height: 480; visible: true

    header: ToolBar {
        RowLayout {
            Repeater { model: 3; ToolButton { text: "Same" } }
            ToolButton { id: opener; text: "Open"; onClicked: popup.open() }
            ToolButton { text: "Menu"; onClicked: menu.open() }
        }
    }

    StackLayout {
        id: pages
        anchors.fill: parent
        currentIndex: 0

        Page {
            title: "First"
            ListView {
                id: list
                anchors.fill: parent
                model: 200
                delegate: ItemDelegate { width: 200; text: "Entry " + (index % 5) }
            }
        }
        Page {
            title: "Hidden"
            Column {
                Repeater {
                    model: 5
                    Column {
                        Repeater { model: 4; Label { text: "line\nbreak 'and' \"quotes\"" } }
                        CheckBox { objectName: "twin" }
                    }
                }
            }
        }
        GridLayout {
            columns: 3
            Repeater { model: 9; TextField { placeholderText: index % 2 ? "Odd" : "Even" } }
            Loader { active: false; sourceComponent: Button { text: "Never" } }
            Loader { sourceComponent: Button { text: "Loaded" } }
        }
    }

    Popup {
        id: popup
        objectName: "popup"
        x: 50; y: 50; modal: true
        Column { Repeater { model: 3; Button { text: "Same" } } }
    }
    Menu {
        id: menu
        MenuItem { text: "E&xit" }
        MenuItem { text: "E&xit" }
        Menu { title: "More"; MenuItem { text: "Deep" } }
    }
    Dialog { id: dialog; title: "Ask"; standardButtons: Dialog.Ok | Dialog.Cancel }

    Window {
        title: "Second"; width: 100; height: 100; visible: true
        Rectangle { anchors.fill: parent; Text { text: "Same" } }
    }
    Window {
        title: "Third"; width: 100; height: 100; visible: false
        Rectangle { anchors.fill: parent; Text { text: "Same" } }
    }

    function showPage(number) { pages.currentIndex = number }
    function openAll() { popup.open(); dialog.open(); menu.open() }
}
