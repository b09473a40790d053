import QtQuick

Scene {
    property string picked: "none"
    outcome: "current " + wheel.currentIndex + (wheel.moving ? ", moving" : "") + ", picked " + picked

    PathView {
        id: wheel
        anchors.fill: parent
        model: 8
        snapMode: PathView.SnapToItem
        preferredHighlightBegin: 0.5
        preferredHighlightEnd: 0.5
        highlightRangeMode: PathView.StrictlyEnforceRange
        path: Path {
            startX: 0; startY: 150
            PathLine { x: 400; y: 150 }
        }
        delegate: Rectangle {
            required property int index
            width: 40; height: 80
            color: PathView.isCurrentItem ? "gold" : "silver"

            Text {
                anchors.centerIn: parent
                text: index
            }
            MouseArea {
                anchors.fill: parent
                onClicked: picked = index
            }
        }
    }
}
