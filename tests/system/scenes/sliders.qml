import QtQuick
import QtQuick.Controls

Scene {
    outcome: "level " + level.value.toFixed(0) + ", range " + range.first.value.toFixed(0) + " to "
             + range.second.value.toFixed(0) + ", upright " + upright.value.toFixed(0)

    Slider {
        id: level
        x: 10; y: 10; width: 300; height: 30
        from: 0
        to: 100
        stepSize: 10
    }
    RangeSlider {
        id: range
        x: 10; y: 60; width: 300; height: 30
        from: 0
        to: 100
        first.value: 0
        second.value: 100
    }
    Slider {
        id: upright
        x: 340; y: 10; width: 30; height: 250
        orientation: Qt.Vertical
        from: 0
        to: 10
        stepSize: 1
        snapMode: Slider.SnapAlways
    }
}
