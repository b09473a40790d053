import QtQuick
import QtQuick.Controls

Scene {
    outcome: "box " + box.checked + ", third " + third.checkState + ", red " + red.checked + ", green " + green.checked
             + ", power " + power.checked

    CheckBox {
        id: box
        x: 10; y: 10
        text: "Box"
    }
    CheckBox {
        id: third
        x: 10; y: 50
        text: "Third"
        tristate: true
    }
    RadioButton {
        id: red
        x: 150; y: 10
        text: "Red"
        checked: true
    }
    RadioButton {
        id: green
        x: 150; y: 50
        text: "Green"
    }
    Switch {
        id: power
        x: 250; y: 10
        text: "Power"
    }
}
