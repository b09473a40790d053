#include "wrappers/qt/extensions/qtquick/inputdelivery.h"

#include "wrappers/qt/extensions/qtquick/modality_p.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qquickmousearea_p.h>
#include <QtQuick/private/qquickpointerhandler_p.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace Vantle::QtWrapper {

namespace {

const InputDelivery *current = nullptr;

bool isAnyOf(const QObject *object, std::initializer_list<const char *> classes)
{
    return std::any_of(classes.begin(), classes.end(), [object](const char *name) { return object->inherits(name); });
}

/// Controls whose text is edited in an item of its own inside of them.
bool isEditedInside(const QQuickItem *item)
{
    return isAnyOf(item, {"QQuickSpinBox", "QQuickComboBox"});
}

/// Controls that a user sees as one, whatever their style makes them of.
bool isWhole(const QQuickItem *item)
{
    return isEditedInside(item)
        || isAnyOf(item, {"QQuickAbstractButton", "QQuickSlider", "QQuickRangeSlider", "QQuickDial", "QQuickScrollBar",
                          "QQuickScrollIndicator", "QQuickProgressBar", "QQuickBusyIndicator", "QQuickTextField",
                          "QQuickTextArea", "QQuickTumbler"});
}

QQuickItem *editorAround(const QQuickItem *part)
{
    if (!part->inherits("QQuickTextInput"))
        return nullptr;
    for (QQuickItem *item = part->parentItem(); item; item = item->parentItem()) {
        if (isEditedInside(item))
            return item;
    }
    return nullptr;
}

/// What an application window puts all of its content into: to a user, the window.
bool isWindowFilling(const QQuickItem *item)
{
    return item->inherits("QQuickContentItem");
}

/// What a control's style has put into it, which nobody means who clicks where
/// nothing answers.
bool isDecoration(const QQuickItem *item)
{
    // The layer of popups covers the window, but takes only what is to close one.
    if (item->inherits("QQuickOverlay") || isWindowFilling(item))
        return true;
    for (const QQuickItem *ancestor = item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
        if (isWhole(ancestor))
            return !isWhole(item);
    }
    return false;
}

/// What darkens the window behind a modal popup. It stands for the layer in which
/// popups live, and has no other name than its place among its like.
bool isDimmer(const QQuickItem *item)
{
    return item->parentItem() && item->parentItem()->inherits("QQuickOverlay")
        && !(item->parent() && item->parent()->inherits("QQuickPopup"));
}

bool takesDrops(const QQuickItem *item)
{
    return item->flags().testFlag(QQuickItem::ItemAcceptsDrops);
}

bool isConnected(const QObject *sender, const QMetaMethod &signal)
{
    return QObjectPrivate::get(const_cast<QObject *>(sender))->isSignalConnected(
        static_cast<uint>(QMetaObjectPrivate::signalIndex(signal)));
}

bool hasWheelHandler(const QQuickItem *item)
{
    const QQuickItemPrivate *const priv = QQuickItemPrivate::get(item);
    if (!priv->hasPointerHandlers())
        return false;
    const auto &handlers = priv->extra->pointerHandlers;
    return std::any_of(handlers.cbegin(), handlers.cend(), [](const QQuickPointerHandler *handler) {
        return handler->enabled() && handler->inherits("QQuickWheelHandler");
    });
}

QQuickItem *topmost(QQuickItem *item, QPointF point, bool (*isWanted)(const QQuickItem *))
{
    const bool isInside = item->contains(point);
    if (!isInside && item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return nullptr;
    QList<QQuickItem *> children = QQuickItemPrivate::get(item)->paintOrderChildItems();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        if (!(*child)->isVisible() || !(*child)->isEnabled())
            continue;
        if (QQuickItem *const taker = topmost(*child, item->mapToItem(*child, point), isWanted))
            return taker;
    }
    return isInside && isWanted(item) ? item : nullptr;
}

} // namespace

bool isWheelTaker(const QQuickItem *item)
{
    if (const auto *const flickable = qobject_cast<const QQuickFlickable *>(item))
        return flickable->isInteractive();
    if (item->inherits("QQuickMouseArea")) {
        static const QMetaMethod wheel = QMetaMethod::fromSignal(&QQuickMouseArea::wheel);
        return isConnected(item, wheel);
    }
    if (item->property("wheelEnabled").toBool())
        return true;
    return hasWheelHandler(item);
}

QQuickItem *wheelTakerAt(const QQuickWindow *window, QPointF scenePoint)
{
    return window ? topmost(window->contentItem(), scenePoint, isWheelTaker) : nullptr;
}

QQuickItem *dropTakerAt(const QQuickWindow *window, QPointF scenePoint)
{
    return window ? topmost(window->contentItem(), scenePoint, takesDrops) : nullptr;
}

QQuickItem *answererFor(QQuickItem *taker, QPointF scenePoint)
{
    if (taker && isDimmer(taker))
        return taker->parentItem();
    QQuickItem *const editor = taker ? editorAround(taker) : nullptr;
    return editor && editor->contains(editor->mapFromScene(scenePoint)) ? editor : taker;
}

QQuickItem *popupUnderWay(const QQuickWindow *window)
{
    const QQuickItem *const layer = window ? popupLayer(window) : nullptr;
    const QList<QQuickItem *> popups = layer ? layer->childItems() : QList<QQuickItem *>();
    const auto underWay = std::find_if(popups.cbegin(), popups.cend(), isOpeningOrClosing);
    return underWay != popups.cend() ? *underWay : nullptr;
}

InputDelivery InputDelivery::toItem(QQuickItem *item)
{
    return InputDelivery(Kind::Pointer, item);
}

InputDelivery InputDelivery::toFocus()
{
    return InputDelivery(Kind::Keys, nullptr);
}

InputDelivery::InputDelivery(Kind kind, QQuickItem *answerer)
    : m_outer(std::exchange(current, this))
    , m_kind(kind)
    , m_answerer(answerer)
{
}

InputDelivery::~InputDelivery()
{
    current = m_outer;
}

bool InputDelivery::passesOver(const QQuickItem *item)
{
    if (!current || !item)
        return false;
    if (current->m_kind == Kind::Keys) {
        const QQuickItem *const editor = editorAround(item);
        return isWindowFilling(item) || (editor && editor->hasActiveFocus());
    }
    return current->m_answerer ? item != current->m_answerer : isDecoration(item);
}

} // namespace Vantle::QtWrapper
