import QtQuick
import QtQuick.Controls

Scene {
    property int tips: 0
    property int clicks: 0
    outcome: "tips " + tips + ", clicks " + clicks

    Button {
        id: button
        x: 10; y: 10; width: 100; height: 30
        text: "Help"
        onClicked: ++clicks

        ToolTip {
            visible: button.down
            delay: 300
            text: "What it does"
            onVisibleChanged: if (visible) ++tips
        }
    }
}
