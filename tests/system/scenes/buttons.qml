import QtQuick
import QtQuick.Controls

Scene {
    property int pushed: 0
    property int chosen: 0
    outcome: "pushed " + pushed + ", toggle " + toggle.checked + ", tool " + chosen + ", delay " + delay.checked

    Button {
        id: push
        x: 10; y: 10; width: 100; height: 30
        text: "Push"
        onClicked: ++pushed
    }
    Button {
        id: toggle
        x: 120; y: 10; width: 100; height: 30
        text: "Toggle"
        checkable: true
    }
    ToolButton {
        objectName: "tool"
        x: 230; y: 10; width: 40; height: 30
        text: "T"
        onClicked: ++chosen
    }
    RoundButton {
        x: 280; y: 10; width: 40; height: 40
        text: "R"
        onClicked: chosen += 10
    }
    DelayButton {
        id: delay
        x: 10; y: 60; width: 100; height: 30
        delay: 300
        text: "Hold"
    }
}
