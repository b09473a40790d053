import QtQuick
import QtQuick.Controls
import QtQuick.Window

Scene {
    id: main
    property int clicks: 0
    outcome: "size " + width + " " + height + ", " + ["hidden", "auto", "minimised", "maximised", "full", "normal"][
             visibility === Window.Windowed ? 5 : visibility === Window.Maximized ? 3 : visibility === Window.FullScreen
             ? 4 : visibility === Window.Minimized ? 2 : 0] + ", clicks " + clicks

    Button {
        x: 10; y: 10; width: 100; height: 30
        text: "Click"
        onClicked: ++clicks
    }
}
