#include "agent/pictures.h"

#include "hook/inspector.h"
#include "wrappers/qt/grabbing.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::Agent {

namespace {

QPixmap pixmapIn(const SharedPtr<Object> &object)
{
    void *native = nullptr;
    return object && object->objectClass() == QtWrapper::pixmapClass() && object->get(&native)
        ? *static_cast<const QPixmap *>(native)
        : QPixmap();
}

} // namespace

QPixmap pictureOf(const SharedPtr<Object> &object, QString *problem)
{
    Inspector *const inspector = Inspector::self();
    const QString function = QStringLiteral("grabWidget");
    QPixmap pixmap;
    if (inspector->findGlobalMethod(function, {object})) {
        pixmap = pixmapIn(inspector->callGlobalMethod(function, {object}));
        *problem = inspector->takeError();
    } else if (auto *const window = qobject_cast<QWindow *>(QtWrapper::nativeQObject(object))) {
        // A window of which Qt Quick knows nothing.
        const QRect all(QPoint(0, 0), window->size());
        if (QtWrapper::isWindowGrabbable(window, all))
            pixmap = QtWrapper::nativeGrabWindow(window, all);
    }
    if (pixmap.isNull() && problem->isEmpty())
        *problem = QStringLiteral("no picture can be taken of the object of type %1 now").arg(object->className());
    return pixmap;
}

SharedPtr<Object> windowOf(const SharedPtr<Object> &object)
{
    QObject *const native = QtWrapper::nativeQObject(object);
    if (qobject_cast<QWindow *>(native))
        return object;
    const auto *const item = qobject_cast<QQuickItem *>(native);
    return item && item->window() ? QtWrapper::wrapAndRegisterQObject(item->window()) : SharedPtr<Object>();
}

SharedPtr<Object> windowInFront()
{
    if (QWindow *const active = QGuiApplication::focusWindow())
        return QtWrapper::wrapAndRegisterQObject(active);
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (window->isVisible())
            return QtWrapper::wrapAndRegisterQObject(window);
    }
    return {};
}

} // namespace Vantle::Agent
