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

/// One walk down from an item to the one under a point. Scripts that it asks may
/// move items and destroy them: what was moved is gone on with, what was
/// destroyed is not touched.
class HitTest
{
public:
    explicit HitTest(QQuickItem *root) : m_root(root), m_window(root->window()) {}

    QQuickItem *itemAt(const QPointF &point)
    {
        Level level{.item = m_root, .point = point, .toWindow = windowTransformOf(m_root)};
        return itemAt(level);
    }

private:
    /// An item on the way down.
    struct Level
    {
        QQuickItem *item;
        QPointF point; ///< in its coordinates
        Level *outer = nullptr;
        QTransform toWindow;
        int questions = 0; ///< how many had been put when \c toWindow was right
        QList<QQuickItem *> children = {};
        /// Set ahead of the first question that may destroy the item: guards
        /// cost more than most items on the way are worth.
        QPointer<QQuickItem> guard = {};
        bool isGuarded = false;

        bool isGone() const { return isGuarded && !guard; }
    };

    QQuickItem *itemAt(Level &level);
    QQuickItem *childAt(Level &level);
    Level levelBelow(Level &level, QQuickItem *child) const;
    const QTransform &toWindow(Level &level) const;
    bool isIgnored(Level &level);
    bool lives(const Level &level, QQuickItem *child);

    QPointer<QQuickItem> m_root;
    QPointer<QQuickWindow> m_window;
    int m_questions = 0; ///< that were put to extensions; until then nothing can have changed
    QSet<const QObject *> m_living; ///< as of the last question; filled when it is needed
};

QQuickItem *HitTest::itemAt(Level &level)
{
    const bool inside = level.item->contains(level.point);
    if (!inside && level.item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return nullptr;
    if (isFuzzilyZero(level.item->opacity()))
        return nullptr;

    // Also when the point is outside: children that aren't clipped may reach
    // beyond their parent.
    if (QQuickItem *const hit = childAt(level))
        return hit;
    return inside && !level.isGone() && !isIgnored(level) ? level.item : nullptr;
}

QQuickItem *HitTest::childAt(Level &level)
{
    level.children = level.item->childItems();
    const QList<QQuickItem *> stacked = inStackingOrder(level.children);
    for (auto it = stacked.crbegin(); it != stacked.crend(); ++it) {
        QQuickItem *const child = *it;
        if ((m_questions > 0 && !lives(level, child)) || !child->isVisible())
            continue;
        Level below = levelBelow(level, child);
        if (QQuickItem *const hit = itemAt(below))
            return hit;
        if (level.isGone())
            return nullptr;
    }
    return nullptr;
}

/// What QQuickItem::mapFromItem gives, singular transforms included, which goes
/// up to the window and down again: here each item adds its own to the way down.
HitTest::Level HitTest::levelBelow(Level &level, QQuickItem *child) const
{
    const QPointF inWindow = toWindow(level).map(level.point);
    Level below{.item = child, .point = {}, .outer = &level, .toWindow = level.toWindow, .questions = m_questions};
    if (m_questions == 0 || child->parentItem() == level.item)
        QQuickItemPrivate::get(child)->itemToParentTransform(below.toWindow);
    else
        below.toWindow = windowTransformOf(child);
    below.point = below.toWindow.inverted().map(inWindow);
    return below;
}

const QTransform &HitTest::toWindow(Level &level) const
{
    if (level.questions != m_questions) {
        level.toWindow = windowTransformOf(level.item);
        level.questions = m_questions;
    }
    return level.toWindow;
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
