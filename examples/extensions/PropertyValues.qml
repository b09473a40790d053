import com.corvaline.vantle.qtquick 0.1

// What is the value of a property that the item itself doesn't have?
//
// Gives the delegates of a view the properties "row" and "rowCount", by which
// scripts can find them: Tile[row="3"].
VantleHook {
    id: hook

    function viewOf(item) {
        for (let ancestor = item.parent; ancestor; ancestor = ancestor.parent) {
            if (hook.isQmlType(ancestor, "QQuickItemView"))
                return ancestor
        }
        return null
    }

    function rowOf(item, view) {
        for (let row = 0; row < view.count; ++row) {
            if (view.itemAtIndex(row) === item)
                return row
        }
        return -1
    }

    // Everything that isn't ours is left to other extensions.
    function propertyFor(item, name) {
        if (name !== "row" && name !== "rowCount")
            return hook.unhandled
        const view = viewOf(item)
        const row = view ? rowOf(item, view) : -1
        if (row < 0)
            return hook.unhandled
        return name === "row" ? row : view.count
    }
}
