import QtQuick
import QtQuick.Controls

Scene {
    outcome: "dial " + dial.value.toFixed(0)

    Dial {
        id: dial
        x: 100; y: 50; width: 150; height: 150
        from: 0
        to: 100
        stepSize: 5
        focus: true
    }
}
