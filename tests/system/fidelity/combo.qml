import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 460
    height: 460
    x: 60
    y: 60
    title: "Scene"

    component Told: ComboBox {
        property string place
        onActivated: (index) => console.log("LOG", place, index, textAt(index))
        onAccepted: console.log("LOG accepted", editText)
        popup.onOpened: {
            places.opened(() => {
                const list = popup.contentItem
                return {[place + "1"]: list.itemAtIndex(1), [place + "2"]: list.itemAtIndex(2), [place + "List"]: list}
            }, "opened " + place)
        }
    }

    Told { id: fruit; place: "fruit"; x: 20; y: 20; width: 180; model: ["Apple", "Pear", "Plum"] }
    Told { id: free; place: "free"; x: 240; y: 20; width: 200; editable: true; model: ["One", "Two", "Three"] }
    Told { id: many; place: "many"; x: 20; y: 90; width: 180; model: 200 }

    Places { id: places; of: ({fruit, free, freeText: free.contentItem, many}) }
}
