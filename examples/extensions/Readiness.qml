import com.corvaline.vantle.qtquick 0.1

// Could a user act on an item now?
//
// Visible and enabled items count as ready. This extension has scripts wait
// for more: until the page has loaded and the list has come to rest.
VantleHook {
    id: hook

    function isBusy(item) {
        return item.busy === true || (hook.isQmlType(item, "QQuickFlickable") && item.moving)
    }

    function isItemReady(item) {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (isBusy(ancestor))
                return false
        }
        return hook.unhandled
    }
}
