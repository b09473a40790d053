import QtQuick
import QtQuick.Controls

Scene {
    property string log: ""
    outcome: "log" + log + ", items " + model.count + ", page " + loader.source

    ListModel { id: model }
    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Add"
        onClicked: model.append({ name: "Item " + model.count })
    }
    Column {
        x: 10; y: 60
        Repeater {
            model: model
            Button {
                required property string name
                required property int index
                width: 100; height: 30
                text: name
                onClicked: {
                    log += " -" + name;
                    model.remove(index);
                }
            }
        }
    }
    Button {
        x: 150; y: 10; width: 100; height: 30
        text: "Load"
        onClicked: loader.sourceComponent = part
    }
    Loader {
        id: loader
        x: 150; y: 60
    }
    Component {
        id: part
        CheckBox {
            text: "Loaded"
            onToggled: {
                log += " gone";
                loader.sourceComponent = null;
            }
        }
    }
}
