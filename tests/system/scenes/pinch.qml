import QtQuick

Scene {
    outcome: "scale " + photo.scale.toFixed(2) + ", turned " + photo.rotation.toFixed(0) + ", points " + points

    property int points: 0

    Rectangle {
        id: photo
        x: 50; y: 50; width: 200; height: 200
        color: "teal"

        PinchHandler { id: pinch }
    }
    MultiPointTouchArea {
        x: 300; width: 100; height: 300
        minimumTouchPoints: 2
        onPressed: touchPoints => points += touchPoints.length
    }
}
