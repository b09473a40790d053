import QtQuick
import QtQuick.Controls

Scene {
    outcome: "name [" + name.text + "] selected [" + name.selectedText + "], other [" + other.text + "], secret ["
             + secret.text + "]"

    TextField {
        id: name
        x: 10; y: 10; width: 250; height: 30
        selectByMouse: true
        font.family: "monospace"
        font.pixelSize: 16
    }
    TextField {
        id: other
        x: 10; y: 50; width: 250; height: 30
        placeholderText: "Other"
    }
    TextField {
        id: secret
        x: 10; y: 90; width: 250; height: 30
        echoMode: TextInput.Password
    }
}
