import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    SplitView {
        id: split
        anchors.fill: parent
        Pane { id: left; SplitView.preferredWidth: 200
            onWidthChanged: console.log("NOW left", Math.round(width))
            ColumnLayout { anchors.fill: parent
                TextField { Layout.fillWidth: true; placeholderText: "Filter"; onTextChanged: console.log("NOW filter", text) }
                ScrollView { Layout.fillWidth: true; Layout.fillHeight: true
                    ListView { id: files; model: 40; clip: true; delegate: CheckDelegate { width: 160; text: "File " + index; onToggled: console.log("LOG file", index, checked) } } } } }
        SplitView { SplitView.fillWidth: true; orientation: Qt.Vertical
            Pane { id: top; SplitView.preferredHeight: 200; onHeightChanged: console.log("NOW top", Math.round(height)); TextArea { anchors.fill: parent; onTextChanged: console.log("NOW notes", text) } }
            Pane { id: bottom; Row { Button { text: "Run"; onClicked: console.log("LOG run") } BusyIndicator { running: false } ProgressBar { value: 0.4; width: 60 } } } }
    }
    Places { of: ({left, top, bottom, files}) }
}
