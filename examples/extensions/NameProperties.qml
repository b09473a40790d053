import com.corvaline.vantle.qtquick 0.1

// Which properties stand in the name of an item?
VantleHook {
    id: hook

    // For these types exactly the listed properties, whatever was chosen
    // before. Keys are tried in ascending order.
    readonly property var objectNameProperties: ({
        "Tile": ["type", "tileCode"]
    })

    // For all others, properties to add to the chosen ones. An empty list is
    // an answer too: nothing to add.
    function extraPropertiesFor(item) {
        return item.testId === undefined ? hook.unhandled : ["testId"]
    }
}
