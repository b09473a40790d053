import QtQuick
import QtQuick.Controls

Scene {
    outcome: "hour " + hours.currentIndex + (hours.moving ? " moving" : "") + ", minute " + minutes.currentIndex
             + (minutes.moving ? " moving" : "")

    Tumbler {
        id: hours
        x: 20; y: 20; width: 80; height: 200
        model: 24
        wrap: true
    }
    Tumbler {
        id: minutes
        x: 150; y: 20; width: 80; height: 200
        model: 60
        wrap: false
    }
}
