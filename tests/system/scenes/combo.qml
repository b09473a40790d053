import QtQuick
import QtQuick.Controls

Scene {
    property int entered: 0
    outcome: "fruit " + fruit.currentText + ", city " + city.editText + ", accepted " + entered
             + (fruit.popup.opened || city.popup.opened ? ", open" : "")

    ComboBox {
        id: fruit
        x: 10; y: 10; width: 150; height: 30
        model: ["Apple", "Banana", "Cherry"]
    }
    ComboBox {
        id: city
        x: 200; y: 10; width: 150; height: 30
        editable: true
        model: ["Bern", "Rome"]
        onAccepted: ++entered
    }
}
