#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting_p.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtGui/QTransform>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickitem_p.h>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

bool isFuzzilyZero(qreal value)
{
    return qFuzzyCompare(value + 1.0, 1.0);
}

/// The usual scene has no z values: it pays for one pass and no sort.
QList<QQuickItem *> inStackingOrder(QList<QQuickItem *> siblings)
{
    const bool stacked = std::any_of(siblings.cbegin(), siblings.cend(),
                                     [](const QQuickItem *item) { return !isFuzzilyZero(item->z()); });
    if (stacked) {
        std::stable_sort(siblings.begin(), siblings.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    }
    return siblings;
}

/// Whether an extension declares \p item to be of no interest. Runs script of
/// the extensions, and any item may be gone afterwards.
bool isIgnoredByExtensions(QQuickItem *item)
{
    bool isIgnored = false;
    return VantleQtQuickHook::isIgnored(item, &isIgnored) && isIgnored;
}

/// One walk down from an item to the one under a point.
class HitTest
{
public:
    explicit HitTest(QQuickItem *root) : m_root(root) {}

    QQuickItem *itemAt(const QPointF &point) { return itemAt(m_root, point, nullptr); }

private:
    /// An item on the way down, in the place where the walk met it.
    struct Level
    {
        QQuickItem *item;
        Level *outer;
        QList<QQuickItem *> children;
        bool isGone = false;
    };

    QQuickItem *itemAt(QQuickItem *item, const QPointF &point, Level *outer);
    QQuickItem *childAt(Level &level, const QPointF &point);
    bool isIgnored(Level &level);
    bool isStillThere(Level &level) const;

    static bool isChild(const Level &level, QQuickItem *item)
    {
        // The lists share their data until the item's children change.
        const QList<QQuickItem *> children = level.item->childItems();
        return children == level.children || children.contains(item);
    }

    QPointer<QQuickItem> m_root;
    bool m_hasAsked = false; ///< until then no item can have gone
};

QQuickItem *HitTest::itemAt(QQuickItem *item, const QPointF &point, Level *outer)
{
    const bool inside = item->contains(point);
    if (!inside && item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return nullptr;
    if (isFuzzilyZero(item->opacity()))
        return nullptr;

    // Also when the point is outside: children that aren't clipped may reach
    // beyond their parent.
    Level level{item, outer, item->childItems()};
    if (QQuickItem *const hit = childAt(level, point))
        return hit;
    return inside && !level.isGone && !isIgnored(level) ? item : nullptr;
}

QQuickItem *HitTest::childAt(Level &level, const QPointF &point)
{
    const QList<QQuickItem *> stacked = inStackingOrder(level.children);
    for (auto it = stacked.crbegin(); it != stacked.crend(); ++it) {
        QQuickItem *const child = *it;
        if ((m_hasAsked && !isChild(level, child)) || !child->isVisible())
            continue;
        if (QQuickItem *const hit = itemAt(child, mapFromParent(*child, point), &level))
            return hit;
        if (level.isGone)
            return nullptr;
    }
    return nullptr;
}

/// Asks about the item of \p level, and finds out what is left of the way to it.
bool HitTest::isIgnored(Level &level)
{
    m_hasAsked = true;
    const bool isIgnored = isIgnoredByExtensions(level.item);
    return !isStillThere(level) || isIgnored;
}

bool HitTest::isStillThere(Level &level) const
{
    // From the root on: what hangs on an item that is gone must not be touched.
    const bool isThere = level.outer ? isStillThere(*level.outer) && isChild(*level.outer, level.item)
                                     : !m_root.isNull();
    level.isGone = !isThere;
    return isThere;
}

} // namespace

QPointF mapFromParent(const QQuickItem &child, const QPointF &point)
{
    QTransform toParent;
    QQuickItemPrivate::get(&child)->itemToParentTransform(toParent);
    return toParent.inverted().map(point);
}

QList<QQuickItem *> zOrderedChildItems(const QQuickItem *item)
{
    return inStackingOrder(item->childItems());
}

QQuickItem *recursiveQuickItemAt(QQuickItem *item, const QPointF &point)
{
    return HitTest(item).itemAt(point);
}

QQuickItem *firstNonIgnoredFocusItem(QQuickWindow *window)
{
    const QQuickItem *const contentItem = window->contentItem();
    QPointer<QQuickItem> item = window->activeFocusItem();
    while (item && item != contentItem) {
        // The question may destroy the item and what is above it.
        const QPointer<QQuickItem> parent = item->parentItem();
        if (item->hasActiveFocus() && !isIgnoredByExtensions(item) && item)
            return item;
        item = item ? item->parentItem() : parent.data();
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
