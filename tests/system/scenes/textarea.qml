import QtQuick
import QtQuick.Controls

Scene {
    outcome: JSON.stringify(area.text) + " selected " + JSON.stringify(area.selectedText)

    ScrollView {
        x: 10; y: 10; width: 300; height: 150

        TextArea {
            id: area
            selectByMouse: true
            font.family: "monospace"
            font.pixelSize: 16
        }
    }
}
