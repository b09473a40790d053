import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 400
    height: 320
    x: 60
    y: 60
    title: "Scene"

    Tumbler { id: hours; x: 20; y: 20; height: 260; model: 24; onCurrentIndexChanged: console.log("NOW hour", currentIndex) }
    Tumbler { id: minutes; x: 120; y: 20; height: 260; model: 60; wrap: false; onCurrentIndexChanged: console.log("NOW minute", currentIndex) }
    Tumbler { id: names; x: 220; y: 20; height: 260; model: ["Ada", "Bob", "Cid"]; onCurrentIndexChanged: console.log("NOW name", currentIndex) }

    Places { of: ({hours, minutes, names}) }
}
