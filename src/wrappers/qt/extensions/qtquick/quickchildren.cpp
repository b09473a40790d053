#include "wrappers/qt/extensions/qtquick/quickchildren_p.h"

#include "wrappers/qt/wrapping.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::QtWrapper {

namespace {

// Windows, and items that stand in no scene yet.
bool isTopLevel(QObject *object, const QQuickWindow *window)
{
    if (object->isWindowType())
        return true;
    // The flag is quick to test and outlives the item by a moment.
    const auto *const item = object->isQuickItemType() ? qobject_cast<QQuickItem *>(object) : nullptr;
    return item && item != window->contentItem() && !item->parentItem();
}

QObjectList ownedByWindow(const QQuickWindow *window)
{
    QObjectList owned;
    // What a QML document declares inside of a window belongs to its content item.
    for (const QObject *const owner : {static_cast<const QObject *>(window),
                                       static_cast<const QObject *>(window->contentItem())}) {
        for (QObject *child : owner->children()) {
            if (isTopLevel(child, window))
                owned.append(child);
        }
    }
    return owned;
}

} // namespace

ObjectList itemChildren(QObject *item)
{
    ObjectList children;
    const QList<QQuickItem *> items = itemsBelowItem(item);
    for (QQuickItem *child : items)
        children.push_back(wrapAndRegisterQObject(child));
    return children;
}

ObjectList windowChildren(QObject *window)
{
    auto *const quickWindow = static_cast<QQuickWindow *>(window);
    ObjectList children = itemChildren(quickWindow->contentItem());
    const QObjectList owned = ownedByWindow(quickWindow);
    for (QObject *child : owned)
        children.push_back(wrapAndRegisterQObject(child));
    return children;
}

QList<QQuickItem *> itemsBelowItem(QObject *item)
{
    return static_cast<QQuickItem *>(item)->childItems();
}

QList<QQuickItem *> itemsBelowWindow(QObject *window)
{
    auto *const quickWindow = static_cast<QQuickWindow *>(window);
    QList<QQuickItem *> items = quickWindow->contentItem()->childItems();
    const QObjectList owned = ownedByWindow(quickWindow);
    for (QObject *child : owned) {
        if (auto *const item = qobject_cast<QQuickItem *>(child))
            items.append(item);
    }
    return items;
}

} // namespace Vantle::QtWrapper
