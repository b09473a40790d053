#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtGui/QTransform>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickitem_p.h>

#include <algorithm>
#include <iterator>

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

QTransform windowTransformOf(const QQuickItem *item)
{
    return QQuickItemPrivate::get(item)->itemToWindowTransform();
}

/// All objects that can be come to from \p roots: what they own, and what lies in them.
QSet<const QObject *> objectsBelow(QList<QObject *> roots)
{
    QSet<const QObject *> found;
    while (!roots.isEmpty()) {
        QObject *const object = roots.takeLast();
        if (!object || found.contains(object))
            continue;
        found.insert(object);
        roots += object->children();
        if (const auto *const item = qobject_cast<QQuickItem *>(object)) {
            const QList<QQuickItem *> children = item->childItems();
            std::copy(children.begin(), children.end(), std::back_inserter(roots));
        }
    }
    return found;
}

/// Whether nothing of \p item and below it can be hit, at a point that it has
/// \p inside or not. Children that aren't clipped may reach beyond their parent.
bool isOut(const QQuickItem &item, bool inside)
{
    if (!inside
        && (item.flags().testFlag(QQuickItem::ItemClipsChildrenToShape)
            || QQuickItemPrivate::get(&item)->childItems.isEmpty()))
        return true;
    return isFuzzilyZero(item.opacity());
}

/// One walk down from an item to the one under a point. Scripts that it asks may
/// move items and destroy them: what was moved is gone on with, what was
/// destroyed is not touched.
class HitTest
{
public:
    explicit HitTest(QQuickItem *root) : m_root(root), m_window(root->window()) {}

    QQuickItem *itemAt(const QPointF &point)
    {
        const bool inside = m_root->contains(point);
        if (isOut(*m_root, inside))
            return nullptr;
        Level level{.item = m_root, .point = point, .inside = inside, .toWindow = windowTransformOf(m_root)};
        return itemAt(level);
    }

private:
    /// An item on the way down.
    struct Level
    {
        QQuickItem *item;
        QPointF point; ///< in its coordinates
        bool inside;   ///< whether it contains the point
        Level *outer = nullptr;
        QTransform toWindow;
        QPointF inWindow = {}; ///< the point, for the items below
        int questions = 0;     ///< how many had been put when the item's place was right
        QList<QQuickItem *> children = {};
        /// Set ahead of the first question that may destroy the item: guards
        /// cost more than most items on the way are worth.
        QPointer<QQuickItem> guard = {};
        bool isGuarded = false;

        bool isGone() const { return isGuarded && !guard; }
    };

    QQuickItem *itemAt(Level &level);
    QQuickItem *childAt(Level &level);
    QTransform toWindow(Level &level, QQuickItem *child) const;
    void locate(Level &level) const;
    bool isIgnored(Level &level);
    bool lives(const Level &level, QQuickItem *child);

    QPointer<QQuickItem> m_root;
    QPointer<QQuickWindow> m_window;
    int m_questions = 0;            ///< that were put to extensions; until then nothing can have changed
    QSet<const QObject *> m_living; ///< as of the last question; filled when it is needed
};

QQuickItem *HitTest::itemAt(Level &level)
{
    if (QQuickItem *const hit = childAt(level))
        return hit;
    return level.inside && !level.isGone() && !isIgnored(level) ? level.item : nullptr;
}

QQuickItem *HitTest::childAt(Level &level)
{
    level.children = level.item->childItems();
    const QList<QQuickItem *> stacked = inStackingOrder(level.children);
    level.inWindow = level.toWindow.map(level.point);
    for (auto it = stacked.crbegin(); it != stacked.crend(); ++it) {
        QQuickItem *const child = *it;
        if ((m_questions > 0 && !lives(level, child)) || !child->isVisible())
            continue;
        const QTransform childToWindow = toWindow(level, child);
        const QPointF point = childToWindow.inverted().map(level.inWindow);
        const bool inside = child->contains(point);
        if (isOut(*child, inside))
            continue;
        Level below{.item = child,
                    .point = point,
                    .inside = inside,
                    .outer = &level,
                    .toWindow = childToWindow,
                    .questions = m_questions};
        if (QQuickItem *const hit = itemAt(below))
            return hit;
        if (level.isGone())
            return nullptr;
    }
    return nullptr;
}

/// For what QQuickItem::mapFromItem gives, singular transforms included, which
/// goes up to the window and down again: here each item adds its own transform
/// on the way down.
QTransform HitTest::toWindow(Level &level, QQuickItem *child) const
{
    if (level.questions != m_questions)
        locate(level);
    if (m_questions > 0 && child->parentItem() != level.item)
        return windowTransformOf(child);
    QTransform transform = level.toWindow;
    QQuickItemPrivate::get(child)->itemToParentTransform(transform);
    return transform;
}

/// Finds out where the item of \p level is after what has been asked meanwhile.
void HitTest::locate(Level &level) const
{
    level.toWindow = windowTransformOf(level.item);
    level.inWindow = level.toWindow.map(level.point);
    level.questions = m_questions;
}

/// Asks about the item of \p level. True also if it is gone afterwards.
bool HitTest::isIgnored(Level &level)
{
    for (Level *way = &level; way && !way->isGuarded; way = way->outer) {
        way->guard = way->item;
        way->isGuarded = true;
    }
    ++m_questions;
    m_living.clear();
    const bool isIgnored = isIgnoredByExtensions(level.item);
    return level.isGone() || isIgnored;
}

/// Whether \p child, which was a child of the living item of \p level, is still there.
bool HitTest::lives(const Level &level, QQuickItem *child)
{
    // The lists share their data until the item's children change.
    const QList<QQuickItem *> children = level.item->childItems();
    if (children == level.children || children.contains(child))
        return true;
    if (m_living.isEmpty()) {
        QQuickItem *top = level.item;
        while (top->parentItem())
            top = top->parentItem();
        m_living = objectsBelow({m_window, m_root, top});
    }
    return m_living.contains(child);
}

} // namespace

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
