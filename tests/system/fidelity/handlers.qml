import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: main
    visible: true
    width: 620
    height: 460
    x: 60
    y: 60
    title: "Scene"

    component Field: Rectangle { width: 160; height: 80; color: "khaki" }
    Field { id: tap; x: 20; y: 20
        TapHandler { acceptedButtons: Qt.LeftButton | Qt.RightButton; longPressThreshold: 0.7
            onTapped: (point, button) => console.log("LOG tapped", tapCount, button)
            onLongPressed: console.log("LOG long pressed") } }
    Field { id: exclusive; x: 220; y: 20; TapHandler { gesturePolicy: TapHandler.ReleaseWithinBounds; onTapped: console.log("LOG exclusive tapped"); onCanceled: console.log("LOG exclusive canceled") } }
    Field { id: within; x: 420; y: 20; TapHandler { gesturePolicy: TapHandler.WithinBounds; onTapped: console.log("LOG within tapped"); onCanceled: console.log("LOG within canceled") } }
    Field { id: pointed; x: 20; y: 140; PointHandler { onActiveChanged: console.log("LOG point", active); onPointChanged: if (active) console.log("NOW point", Math.round(point.position.x), Math.round(point.position.y)) } }
    Field { id: lit; x: 220; y: 140; HoverHandler { id: hover; onHoveredChanged: console.log("LOG hovered", hovered) }
        Rectangle { id: dot; visible: hover.hovered; x: 100; y: 20; width: 40; height: 40; color: "red"; TapHandler { onTapped: console.log("LOG dot") } } }
    Field { id: both; x: 420; y: 140; TapHandler { onTapped: console.log("LOG both tapped") } DragHandler { target: null; onActiveChanged: console.log("LOG both dragged", active); onTranslationChanged: if (active) console.log("NOW translation", Math.round(translation.x), Math.round(translation.y)) } }
    Field { id: modified; x: 20; y: 260; TapHandler { acceptedModifiers: Qt.ControlModifier; onTapped: console.log("LOG with control") } TapHandler { acceptedModifiers: Qt.NoModifier; onTapped: console.log("LOG without control") } }
    Field { id: turning; x: 220; y: 260; width: 100; height: 100; PinchHandler { target: parent; onActiveChanged: console.log("LOG pinch", active) } onScaleChanged: console.log("NOW scale", scale.toFixed(1)) }
    Places { of: ({tap, exclusive, within, pointed, lit, dot, both, modified}) }
}
