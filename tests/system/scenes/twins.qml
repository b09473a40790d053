import QtQuick
import QtQuick.Controls

Scene {
    property string log: ""
    outcome: "clicked" + log

    Grid {
        columns: 3
        Repeater {
            model: 9
            Button {
                required property int index
                width: 100; height: 40
                text: "Same"
                onClicked: log += " " + index
            }
        }
    }
}
