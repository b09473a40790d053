import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 360
    x: 60
    y: 60
    title: "Scene"

    PathView {
        id: path
        anchors.fill: parent
        model: 12
        pathItemCount: 5
        preferredHighlightBegin: 0.5; preferredHighlightEnd: 0.5
        onCurrentIndexChanged: console.log("NOW current", currentIndex)
        path: Path { startX: 0; startY: 180; PathLine { x: 460; y: 180 } }
        delegate: Rectangle { id: tile; required property int index; width: 70; height: 100; color: "khaki"; border.width: 1
            Text { anchors.centerIn: parent; text: tile.index }
            TapHandler { onTapped: { console.log("LOG tile", tile.index); path.currentIndex = tile.index } } }
    }
    Places { of: ({path}) }
}
