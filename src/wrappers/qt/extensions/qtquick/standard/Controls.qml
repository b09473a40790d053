import QtQuick
import com.corvaline.vantle.qtquick 0.1

// Has recorded input name the control that a user means: what a control is
// made of differs with the style and takes no input of its own. Asked last, so
// that every other extension can decide differently.
VantleHook {
    id: hook

    // What a user acts on as a whole.
    readonly property list<string> wholes: [
        "QQuickAbstractButton", "QQuickComboBox", "QQuickSpinBox", "QQuickSlider", "QQuickRangeSlider",
        "QQuickDial", "QQuickScrollBar", "QQuickScrollIndicator", "QQuickProgressBar", "QQuickTextField",
        "QQuickTextArea"
    ]
    // What takes input by itself, inside a whole too.
    readonly property list<string> parts: [
        "QQuickMouseArea", "QQuickFlickable", "QQuickTextInput", "QQuickTextEdit", "QQuickMultiPointTouchArea",
        "QQuickPinchArea", "QQuickDropArea"
    ]

    function isAnyOf(item, types) {
        for (let i = 0; i < types.length; ++i) {
            if (isQmlType(item, types[i]))
                return true;
        }
        return false;
    }

    function hasPointerHandler(item) {
        for (let i = 0; i < item.data.length; ++i) {
            if (isQmlType(item.data[i], "QQuickPointerHandler"))
                return true;
        }
        return false;
    }

    // A mouse area without buttons watches the pointer or sets its shape; a
    // press goes through it, as through one that is switched off.
    function letsPressesThrough(item) {
        return isQmlType(item, "QQuickMouseArea") && (!item.enabled || item.acceptedButtons === Qt.NoButton);
    }

    // The text of a combo box or spin box that can't be edited is a label, also
    // where it is a text field that is switched off.
    function isLabel(item, whole) {
        return isQmlType(item, "QQuickTextInput") && whole.editable === false;
    }

    function isDecorationOf(item, whole) {
        return isLabel(item, whole) || !isAnyOf(item, parts) && !hasPointerHandler(item);
    }

    priority: -1000

    function isIgnored(item) {
        if (letsPressesThrough(item))
            return true;
        if (isAnyOf(item, wholes))
            return isAnyOf(item.parent, wholes) && isLabel(item, item.parent) ? true : unhandled;
        for (let ancestor = item.parent; ancestor; ancestor = ancestor.parent) {
            if (isAnyOf(ancestor, wholes))
                return isDecorationOf(item, ancestor) ? true : unhandled;
            if (isAnyOf(ancestor, parts) || hasPointerHandler(ancestor))
                return unhandled;
        }
        return unhandled;
    }
}
