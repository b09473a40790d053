import QtQuick

Window {
    objectName: "main"
    width: 600
    height: 300
    visible: true
    title: "Flickables"

    component Stripes: Column {
        property int rows: 30
        Repeater {
            model: parent.rows
            Rectangle {
                required property int index
                width: 180
                height: 50
                color: index % 2 ? "steelblue" : "lightblue"
            }
        }
    }

    Flickable {
        objectName: "flickable"
        width: 180
        height: 300
        contentHeight: stripes.height
        contentWidth: 180
        Stripes { id: stripes }
    }

    ListView {
        objectName: "list"
        x: 200
        width: 180
        height: 300
        clip: true
        model: 40
        delegate: Rectangle {
            required property int index
            width: 180
            height: 50
            color: index % 2 ? "seagreen" : "lightgreen"
        }
    }

    Flickable {
        objectName: "outer"
        x: 400
        width: 200
        height: 300
        contentWidth: 600
        contentHeight: 300
        flickableDirection: Flickable.HorizontalFlick

        Flickable {
            objectName: "inner"
            x: 10
            width: 180
            height: 300
            contentWidth: 180
            contentHeight: 1500
            flickableDirection: Flickable.VerticalFlick
            Stripes { }
        }
    }
}
