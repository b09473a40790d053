import QtQuick

// Tells the scene's script where things are, in the coordinates of their
// window. No item: the scene is the same with it and without.
QtObject {
    id: root

    // Item by the name that the script has for it, or a function that gives that.
    property var of: ({})

    function tell(name, item) {
        // Turned items have their corners elsewhere.
        const one = item.mapToItem(null, 0, 0), other = item.mapToItem(null, item.width, item.height)
        const x = Math.min(one.x, other.x), y = Math.min(one.y, other.y)
        console.log("PLACE", name, ...[x, y, Math.abs(one.x - other.x), Math.abs(one.y - other.y)].map(Math.round))
    }

    function tellAll(items) {
        for (const name in items) {
            if (items[name])
                tell(name, items[name])
            else
                console.warn("nothing at the place", name)
        }
    }

    // Once what has just opened is laid out: items is a function, which gives
    // items by name; then says so. That may come earlier or later than other
    // lines, and is for the eyes of the script alone.
    function opened(items, text) {
        settling.then = () => { root.tellAll(items()); console.log("SHOWN", text) }
        settling.restart()
    }

    property Timer start: Timer {
        interval: 250
        running: true
        onTriggered: {
            root.tellAll(typeof root.of === "function" ? root.of() : root.of)
            console.log("READY")
        }
    }
    property Timer settling: Timer {
        property var then
        interval: 250
        onTriggered: then()
    }
}
