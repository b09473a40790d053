import QtQuick
import QtQuick.Controls

Scene {
    outcome: "count " + count.value + ", typed " + typed.value

    SpinBox {
        id: count
        x: 10; y: 10; width: 140; height: 30
    }
    SpinBox {
        id: typed
        x: 10; y: 60; width: 140; height: 30
        editable: true
        wheelEnabled: true
        to: 1000
    }
}
