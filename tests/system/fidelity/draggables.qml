import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    Slider { id: slider; x: 20; y: 20; width: 560; from: 0; to: 1000; onValueChanged: console.log("NOW slider", Math.round(value)); onPressedChanged: if (!pressed) console.log("LOG slider released") }
    RangeSlider {
        id: range
        x: 20; y: 80; width: 560; from: 0; to: 1000; second.value: 1000
        first.onValueChanged: console.log("NOW first", Math.round(first.value))
        second.onValueChanged: console.log("NOW second", Math.round(second.value))
    }
    Dial { id: dial; x: 20; y: 140; width: 260; height: 260; from: 0; to: 1000; onValueChanged: console.log("NOW dial", Math.round(value)) }
    ScrollBar { id: bar; x: 590; width: 20; height: 460; size: 0.2; orientation: Qt.Vertical; policy: ScrollBar.AlwaysOn; onPositionChanged: console.log("NOW bar", Math.round(position * 1000)) }
    SplitView {
        id: split
        x: 300; y: 140; width: 280; height: 120
        Rectangle { id: left; color: "khaki"; SplitView.preferredWidth: 40; onWidthChanged: console.log("NOW split", width) }
        Rectangle { id: right; color: "lightblue" }
    }
    Switch { id: toggle; x: 300; y: 280; text: "Loud"; onToggled: console.log("LOG switch", checked) }
    Tumbler { id: tumbler; x: 480; y: 270; height: 180; model: 50; wrap: false; onCurrentIndexChanged: console.log("NOW tumbler", currentIndex) }

    Places { of: () => ({slider, range, dial, bar, split, left, right, toggle, tumbler, knob: slider.handle, first: range.first.handle, second: range.second.handle}) }
}
