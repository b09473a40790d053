#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"

#include "hook/delegates.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/hostmodule.h"
#include "wrappers/qt/extensions/qtquick/quickchildren_p.h"
#include "wrappers/qt/extensions/qtquick/quickdelegates_p.h"
#include "wrappers/qt/extensions/qtquick/quicknames_p.h"
#include "wrappers/qt/extensions/qtquick/quickscrolling.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/quickfunctions.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/scrolling.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

namespace Vantle::QtWrapper {

namespace {

// The children of the container are the roots, as they are when an item is
// named: occurrences count alike.
template<QList<QQuickItem *> (*itemsBelow)(QObject *)>
SharedPtr<Object> findBelow(QObject *container, const ObjectName &name, QList<QString> &mismatched)
{
    return findQuickItem(itemsBelow(container), name, mismatched);
}

// What a window is filled with stands in no container, as it is the window for
// all that is below it; nor do the items that a window owns outside of its scene.
ObjectList itemsWithoutContainer()
{
    ObjectList objects;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        const auto *const quickWindow = qobject_cast<QQuickWindow *>(window);
        if (!quickWindow)
            continue;
        objects.push_back(wrapAndRegisterQObject(quickWindow->contentItem()));
        const QList<QQuickItem *> items = itemsBelowWindow(window);
        for (QQuickItem *item : items) {
            if (item->window())
                continue;
            const SharedPtr<Object> outside = wrapAndRegisterQObject(item);
            objects.push_back(outside);
            const ObjectList below = objectsBelow(outside);
            for (const SharedPtr<Object> &object : below)
                objects.push_back(object);
        }
    }
    return objects;
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

    Application::self()->registerTopLevelObjects(itemsWithoutContainer);
    Application::self()->registerFinder(itemClass, findBelow<itemsBelowItem>);
    Application::self()->registerFinder(windowClass, findBelow<itemsBelowWindow>);

    registerScroller(scrollQuickItem);

    // Functions and modules outlive the application, which a host may make anew.
    [[maybe_unused]] static const bool hasFunctions = (setupQuickFunctions(), true);
    [[maybe_unused]] static const bool hasModule = (registerHostModule(), true);
}

} // namespace Vantle::QtWrapper
