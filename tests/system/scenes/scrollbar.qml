import QtQuick
import QtQuick.Controls

Scene {
    outcome: "at " + Math.round(bar.position * 100)

    Flickable {
        width: 300; height: 300
        contentHeight: 3000
        clip: true

        ScrollBar.vertical: ScrollBar {
            id: bar
            width: 20
            policy: ScrollBar.AlwaysOn
        }
        Rectangle {
            width: 250; height: 3000
            gradient: Gradient {
                GradientStop { position: 0; color: "white" }
                GradientStop { position: 1; color: "navy" }
            }
        }
    }
}
