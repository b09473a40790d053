#include "wrappers/qt/extensions/qtquick/pressroad.h"

#include "wrappers/qt/extensions/qtquick/modality_p.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qquickmousearea_p.h>
#include <QtQuick/private/qquickpointerdevicehandler_p.h>
#include <QtQuick/private/qquicktext_p.h>

#include <algorithm>
#include <array>

namespace Vantle::QtWrapper {

namespace {

/// Handlers of taps and drags keep a press that they accept from what lies
/// below their item, though they do not grab it. Without any button they accept all.
bool takesPress(const QQuickPointerHandler *handler, Qt::MouseButton button)
{
    if (!handler->enabled() || !(handler->inherits("QQuickTapHandler") || handler->inherits("QQuickDragHandler")))
        return false;
    const auto accepted = static_cast<const QQuickPointerDeviceHandler *>(handler)->acceptedButtons();
    return accepted == Qt::NoButton || accepted.testFlag(button);
}

/// With handlers an item accepts all buttons, whatever it does with them, so
/// that its class has to tell.
bool takesPressesItself(const QQuickItem *item)
{
    constexpr std::array classes{"QQuickMouseArea", "QQuickAbstractButton", "QQuickTextInput", "QQuickTextEdit",
                                 "QQuickSlider",    "QQuickRangeSlider",    "QQuickDial",      "QQuickComboBox",
                                 "QQuickSpinBox",   "QQuickScrollBar",      "QQuickPane",      "QQuickPathView"};
    return std::any_of(classes.begin(), classes.end(), [item](const char *name) { return item->inherits(name); });
}

bool takesPress(QQuickItem *item, QPointF point, Qt::MouseButton button)
{
    // The layer of popups covers the window, but takes only what an open modal
    // popup keeps from the rest. A mouse area has an `enabled` of its own.
    if (item->inherits("QQuickOverlay"))
        return holdsOpenModalPopup(item);
    if (!item->property("enabled").toBool())
        return false;
    if (const auto *const flickable = qobject_cast<QQuickFlickable *>(item); flickable && !flickable->isInteractive())
        return false;
    // A text takes presses on its links only.
    if (const auto *const text = qobject_cast<QQuickText *>(item))
        return text->acceptedMouseButtons().testFlag(button) && !text->linkAt(point.x(), point.y()).isEmpty();
    const auto *const priv = QQuickItemPrivate::get(item);
    if (!priv->hasPointerHandlers())
        return item->acceptedMouseButtons().testFlag(button);
    if (takesPressesItself(item))
        return true;
    const auto &handlers = priv->extra->pointerHandlers;
    return std::any_of(handlers.cbegin(), handlers.cend(),
                       [button](const QQuickPointerHandler *handler) { return takesPress(handler, button); });
}

/// Whether \p item looks at each press and may let it through all the same.
bool mayDecline(const QQuickItem *item)
{
    static const QMetaMethod pressed = QMetaMethod::fromSignal(
        qOverload<QQuickMouseEvent *>(&QQuickMouseArea::pressed));
    return item->inherits("QQuickMouseArea")
        && QObjectPrivate::get(const_cast<QQuickItem *>(item))
               ->isSignalConnected(static_cast<uint>(QMetaObjectPrivate::signalIndex(pressed)));
}

/// Goes down from \p item to whoever ends the road. False if it isn't ended there.
/// With \p isDeclined whoever may decline a press does.
bool follow(QQuickItem *item, QPointF scenePoint, const QQuickItem *target, Qt::MouseButton button, PressRoad *road,
            bool isDeclined = false)
{
    const QPointF point = item->mapFromScene(scenePoint);
    const bool isInside = item->contains(point);
    if (!isInside && item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return false;
    const QList<QQuickItem *> children = QQuickItemPrivate::get(item)->paintOrderChildItems();
    const auto descend = [&](bool isAbove) {
        return std::any_of(children.crbegin(), children.crend(), [&](QQuickItem *child) {
            return (child->z() >= 0) == isAbove && child->isVisible() && child->isEnabled()
                && follow(child, scenePoint, target, button, road, isDeclined);
        });
    };
    if (descend(true))
        return true;
    if (isInside && target && (item == target || target->isAncestorOf(item)))
        road->reachesTarget = true;
    else if (isInside && takesPress(item, point, button) && !(isDeclined && mayDecline(item)))
        road->takenBy = item;
    return road->reachesTarget || road->takenBy || descend(false);
}

} // namespace

PressRoad pressRoadTo(const QQuickItem *target, QPointF scenePoint, Qt::MouseButton button)
{
    PressRoad road;
    QQuickItem *const root = target->window()->contentItem();
    follow(root, scenePoint, target, button, &road);
    if (road.takenBy && mayDecline(road.takenBy)) {
        PressRoad beyond;
        follow(root, scenePoint, target, button, &beyond, true);
        road.mayReachTarget = beyond.reachesTarget;
    }
    return road;
}

QQuickItem *pressTakerAt(const QQuickWindow *window, QPointF scenePoint, Qt::MouseButton button)
{
    PressRoad road;
    follow(window->contentItem(), scenePoint, nullptr, button, &road);
    return road.takenBy;
}

} // namespace Vantle::QtWrapper
