import com.corvaline.vantle.qtquick 0.1

// Below what is an item to be found by name?
//
// Without extensions every item is looked for in its whole window, so that two
// pages with a "Save" button each make the second one an "nth(2)". With this
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
