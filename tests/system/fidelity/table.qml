import QtQuick
import QtQuick.Controls
import Qt.labs.qmlmodels

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 420
    x: 60
    y: 60
    title: "Scene"

    TableView {
        id: table
        anchors.fill: parent
        clip: true
        columnSpacing: 1; rowSpacing: 1
        ScrollBar.vertical: ScrollBar { policy: ScrollBar.AlwaysOn }
        model: TableModel {
            TableModelColumn { display: "name" }
            TableModelColumn { display: "age" }
            TableModelColumn { display: "member" }
            Component.onCompleted: { for (let i = 0; i < 200; ++i) appendRow({name: "Person " + (i % 7), age: i % 5, member: i % 2 === 0}) }
        }
        delegate: DelegateChooser {
            DelegateChoice { column: 2; delegate: CheckBox { implicitWidth: 120; checked: model.display; onToggled: { model.display = checked; console.log("LOG member", row, checked) } } }
            DelegateChoice { column: 1; delegate: SpinBox { implicitWidth: 160; value: model.display; onValueModified: { model.display = value; console.log("LOG age", row, value) } } }
            DelegateChoice { delegate: TextField { implicitWidth: 200; text: model.display; onEditingFinished: { model.display = text; console.log("LOG name", row, text) } } }
        }
        onContentYChanged: console.log("NOW y", Math.round(contentY))
    }
    Places { of: ({table}) }
}
