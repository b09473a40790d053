import com.corvaline.vantle.qtquick 0.1

// Below what is an item to be found by name?
//
// Without extensions most items are looked for in their whole window, where a
// "Save" button that is the only one today may get company tomorrow. With this
// one the button is found below its page.
VantleHook {
    id: hook

    // The nearest ancestor of one of these types is the container. A type
    // means those derived from it too.
    readonly property list<string> containerTypes: ["QQuickPage", "SettingsPage"]

    // Asked if no ancestor is of such a type. Here items can say themselves
    // where they belong, such as the entries of a menu that stands elsewhere.
    function containerFor(item) {
        return item.belongsTo === undefined ? hook.unhandled : item.belongsTo
    }
}
