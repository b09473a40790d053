import com.corvaline.vantle.qtquick 0.1

// Which items are to be looked through, as if they were made of glass?
//
// What lies below them is recorded then. Their children can still be hit.
VantleHook {
    id: hook

    // Asked ahead of others: see the order of priorities.
    priority: 10

    // Never ignored, even if the rest would have it.
    readonly property list<string> whitelistedTypes: ["SignaturePad"]
    // Always ignored.
    readonly property list<string> blacklistedTypes: ["Watermark", "QQuickDropArea"]

    // The rest: whatever says so itself. Anything else is left to others.
    function isIgnored(item) {
        return item.ignoredInTests === true ? true : hook.unhandled
    }
}
