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

// The items of the scene, then what else the window owns that a user can see:
// windows, and items that stand in no scene yet.
ObjectList windowChildren(QObject *object)
{
    auto *const window = static_cast<QQuickWindow *>(object);
    ObjectList children = itemChildren(window->contentItem());
    const QObjectList owned = window->children();
    for (QObject *child : owned) {
        const auto *const item = qobject_cast<QQuickItem *>(child);
        const bool isTopLevelItem = item && item != window->contentItem() && !item->parentItem();
        if (isTopLevelItem || child->isWindowType())
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

    NameGenerator *const names = Application::self()->nameGenerator();
    names->registerSource(itemClass, std::make_unique<QuickItemNameSource>());
    names->registerSource(windowClass, std::make_unique<QuickWindowNameSource>());

    registerChildrenFinder(&QQuickItem::staticMetaObject, itemChildren);
    registerChildrenFinder(&QQuickWindow::staticMetaObject, windowChildren);
}

} // namespace Vantle::QtWrapper
