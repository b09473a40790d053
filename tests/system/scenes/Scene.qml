import QtQuick
import QtQuick.Controls

// A window that tells in words what has been done to it.
ApplicationWindow {
    id: scene
    objectName: "scene"

    property string outcome
    property bool drawn: false
    property bool shown: false

    function report() {
        if (shown)
            console.log("STATE " + outcome);
    }

    function begin() {
        if (drawn && active && !shown) {
            shown = true;
            report();
        }
    }

    width: 400
    height: 300
    visible: true
    title: "Scene"
    onOutcomeChanged: report()
    onFrameSwapped: drawn = true
    onDrawnChanged: begin()
    onActiveChanged: begin()
}
