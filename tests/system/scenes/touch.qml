import QtQuick
import QtQuick.Controls

Scene {
    property int clicks: 0
    property int doubles: 0
    outcome: "clicks " + clicks + ", doubles " + doubles + ", box " + box.checked + ", level " + level.value.toFixed(0)
             + ", card " + Math.round(card.x) + " " + Math.round(card.y)

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Push"
        onClicked: ++clicks
    }
    CheckBox {
        id: box
        x: 130; y: 10
        text: "Box"
    }
    Slider {
        id: level
        x: 10; y: 60; width: 300; height: 30
        from: 0
        to: 100
        stepSize: 10
    }
    Rectangle {
        id: card
        x: 20; y: 120; width: 60; height: 60
        color: "salmon"

        DragHandler { }
    }
    Rectangle {
        x: 250; y: 150; width: 100; height: 100
        color: "khaki"

        TapHandler { onDoubleTapped: ++doubles }
    }
}
