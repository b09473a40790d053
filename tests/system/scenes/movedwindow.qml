import QtQuick
import QtQuick.Controls

Scene {
    id: main
    property int firstX
    property int firstY
    property int clicks: 0
    onShownChanged: {
        firstX = x;
        firstY = y;
    }
    outcome: shown ? "moved " + (x - firstX) + " " + (y - firstY) + ", clicks " + clicks : ""

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Click"
        onClicked: ++clicks
    }
}
