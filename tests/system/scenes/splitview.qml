import QtQuick
import QtQuick.Controls

Scene {
    outcome: "left " + Math.round(left.width)

    SplitView {
        anchors.fill: parent

        Rectangle {
            id: left
            color: "mistyrose"
            SplitView.preferredWidth: 150
        }
        Rectangle {
            color: "honeydew"
            SplitView.fillWidth: true
        }
    }
}
