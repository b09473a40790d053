import QtQuick
import QtQuick.Controls

ApplicationWindow {
    visible: true
    width: 460
    height: 320
    x: 60
    y: 60
    title: "Scene"

    header: TabBar {
        id: bar
        onCurrentIndexChanged: console.log("LOG tab", currentIndex)
        TabButton { id: inbox; text: "Inbox" }
        TabButton { id: sent; text: "Sent" }
        Repeater {
            model: ["Drafts", "Spam"]
            TabButton { text: modelData }
        }
    }
    SwipeView {
        id: pages
        anchors.fill: parent
        currentIndex: bar.currentIndex
        interactive: false
        Repeater {
            model: 4
            Item { Button { anchors.centerIn: parent; text: "Page " + index; onClicked: console.log("LOG", text) } }
        }
    }

    Places { of: () => ({inbox, sent, drafts: bar.itemAt(2), spam: bar.itemAt(3), pages}) }
}
