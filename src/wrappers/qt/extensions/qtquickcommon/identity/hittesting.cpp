#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPoint>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

bool isFuzzilyZero(qreal value)
{
    return qFuzzyCompare(value + 1.0, 1.0);
}

/// Whether an extension declares \p item to be of no interest.
bool isIgnoredByExtensions(QQuickItem *item)
{
    bool ignored = false;
    return VantleQtQuickHook::isIgnored(item, &ignored) && ignored;
}

} // namespace

QList<QQuickItem *> zOrderedChildItems(const QQuickItem *item)
{
    QList<QQuickItem *> children = item->childItems();
    const bool stacked = std::any_of(children.cbegin(), children.cend(),
                                     [](const QQuickItem *child) { return !isFuzzilyZero(child->z()); });
    if (stacked) {
        std::stable_sort(children.begin(), children.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    }
    return children;
}

QQuickItem *recursiveQuickItemAt(QQuickItem *item, const QPointF &point)
{
    const bool inside = item->contains(point);
    if (!inside && item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return nullptr;
    if (isFuzzilyZero(item->opacity()))
        return nullptr;

    // Also when the point is outside: children that aren't clipped may reach
    // beyond their parent.
    const QList<QQuickItem *> children = zOrderedChildItems(item);
    for (auto it = children.crbegin(); it != children.crend(); ++it) {
        QQuickItem *child = *it;
        if (!child->isVisible())
            continue;
        if (QQuickItem *hit = recursiveQuickItemAt(child, child->mapFromItem(item, point)))
            return hit;
    }

    if (!inside || isIgnoredByExtensions(item))
        return nullptr;
    return item;
}

QQuickItem *firstNonIgnoredFocusItem(QQuickWindow *window)
{
    const QQuickItem *contentItem = window->contentItem();
    for (QQuickItem *item = window->activeFocusItem(); item && item != contentItem; item = item->parentItem()) {
        if (item->hasActiveFocus() && !isIgnoredByExtensions(item))
            return item;
    }
    return nullptr;
}

SharedPtr<Object> quickWindowFocusProxy(QQuickWindow *window)
{
    QQuickItem *item = firstNonIgnoredFocusItem(window);
    if (!item)
        return nullptr;
    const SharedPtr<Object> object = wrapAndRegisterQObject(item);
    const InteractionDelegate *delegate = DelegateFactory::self()->interactionDelegate(object->objectClass());
    if (!delegate || !delegate->notReadyReason(object).isEmpty())
        return nullptr;
    return object;
}

void quickRenderWindowFor(QQuickWindow *window, QWindow **result, QPoint *offset)
{
    *result = QQuickRenderControl::renderWindowFor(window, offset);
    if (*result)
        return;
    *result = window;
    if (offset)
        *offset = QPoint();
}

} // namespace Vantle::QtWrapper
