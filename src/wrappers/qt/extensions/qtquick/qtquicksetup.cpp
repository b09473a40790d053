#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"

#include "hook/delegates.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/quickdelegates_p.h"
#include "wrappers/qt/extensions/qtquick/quicknames_p.h"
#include "wrappers/qt/wrapping.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

namespace Vantle::QtWrapper {

namespace {

ObjectList itemChildren(QObject *object)
{
    ObjectList children;
    const QList<QQuickItem *> items = static_cast<QQuickItem *>(object)->childItems();
    for (QQuickItem *item : items)
        children.push_back(wrapAndRegisterQObject(item));
    return children;
}

// Windows, and items that stand in no scene yet.
bool isTopLevel(QObject *object, const QQuickWindow *window)
{
    const auto *const item = qobject_cast<QQuickItem *>(object);
    return object->isWindowType() || (item && item != window->contentItem() && !item->parentItem());
}

// The items of the scene, then what else the window owns that a user can see.
ObjectList windowChildren(QObject *object)
{
    auto *const window = static_cast<QQuickWindow *>(object);
    ObjectList children = itemChildren(window->contentItem());
    // What a QML document declares inside of a window belongs to its content item.
    const QObjectList owned = window->children() + window->contentItem()->children();
    for (QObject *child : owned) {
        if (isTopLevel(child, window))
            children.push_back(wrapAndRegisterQObject(child));
    }
    return children;
}

} // namespace

void setupQtQuick()
{
    const Class *const itemClass = classForMetaObject(&QQuickItem::staticMetaObject);
    const Class *const windowClass = classForMetaObject(&QQuickWindow::staticMetaObject);
    classForMetaObject(&QQuickFlickable::staticMetaObject);

    DelegateFactory *const delegates = DelegateFactory::self();
    delegates->registerDelegate(itemClass, makeItemGeometryDelegate());
    delegates->registerDelegate(itemClass, makeItemInteractionDelegate());
    delegates->registerDelegate(windowClass, makeQuickWindowGeometryDelegate());
    delegates->registerDelegate(windowClass, makeQuickWindowInteractionDelegate());

    NameGenerator *const names = Application::self()->nameGenerator();
    names->registerSource(itemClass, std::make_unique<QuickItemNameSource>());
    names->registerSource(windowClass, std::make_unique<QuickWindowNameSource>());

    registerChildrenFinder(&QQuickItem::staticMetaObject, itemChildren);
    registerChildrenFinder(&QQuickWindow::staticMetaObject, windowChildren);
}

} // namespace Vantle::QtWrapper
