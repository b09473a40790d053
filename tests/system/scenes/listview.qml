import QtQuick
import QtQuick.Controls

Scene {
    property string picked: "none"
    outcome: "picked " + picked + ", current " + list.currentIndex + ", "
             + (list.moving ? "moving" : list.contentY > 0 ? "scrolled" : "at the top")

    ListView {
        id: list
        width: 300; height: 300
        model: 1000
        clip: true
        focus: true
        delegate: ItemDelegate {
            required property int index
            width: 280; height: 30
            text: "Row " + index
            highlighted: ListView.isCurrentItem
            onClicked: {
                picked = index;
                list.currentIndex = index;
                list.forceActiveFocus();
            }
        }
    }
}
