import QtQuick
import QtQuick.Controls

ApplicationWindow {
    visible: true
    width: 460
    height: 460
    x: 60
    y: 60
    title: "Scene"

    Slider { id: volume; x: 30; y: 20; width: 400; from: 0; to: 100; onValueChanged: console.log("NOW volume", value.toFixed(1)) }
    Slider { id: steps; x: 30; y: 90; width: 400; from: 0; to: 10; stepSize: 1; snapMode: Slider.SnapAlways; onValueChanged: console.log("NOW steps", value) }
    RangeSlider { id: range; x: 30; y: 160; width: 400; from: 0; to: 100; first.value: 25; second.value: 75
        first.onValueChanged: console.log("NOW first", first.value.toFixed(1))
        second.onValueChanged: console.log("NOW second", second.value.toFixed(1)) }
    Dial { id: dial; x: 30; y: 230; width: 140; height: 140; from: 0; to: 100; onValueChanged: console.log("NOW dial", value.toFixed(1)) }
    Slider { id: upright; x: 240; y: 220; height: 200; orientation: Qt.Vertical; onValueChanged: console.log("NOW upright", value.toFixed(2)) }

    Places { of: ({volume, steps, range, first: range.first.handle, second: range.second.handle, dial, upright, knob: volume.handle, stepsKnob: steps.handle, uprightKnob: upright.handle}) }
}
