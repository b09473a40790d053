#include "wrappers/qt/windowdelegates_p.h"

#include "hook/delegates.h"
#include "wrappers/qt/readiness.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

QWindow *toWindow(const SharedPtr<Object> &object)
{
    return qobject_cast<QWindow *>(nativeQObject(object));
}

/// A window whose content Qt Quick doesn't know: nothing below it can be told apart.
class WindowGeometry final : public GeometryDelegate
{
public:
    QPoint mapFromGlobal(const SharedPtr<Object> &object, int x, int y) const override
    {
        const QWindow *const window = toWindow(object);
        return window ? window->mapFromGlobal(QPoint(x, y)) : QPoint(x, y);
    }

    SharedPtr<Object> childAt(const SharedPtr<Object> &, int, int) const override { return nullptr; }
    SharedPtr<Object> focusChild(const SharedPtr<Object> &) const override { return nullptr; }

    QRect screenRect(const SharedPtr<Object> &object) const override
    {
        const QWindow *const window = toWindow(object);
        return window ? QRect(window->mapToGlobal(QPoint(0, 0)), window->size()) : QRect(0, 0, -1, -1);
    }

    WindowPoint mapToWindow(const SharedPtr<Object> &object, QPointF point) const override
    {
        return toWindow(object) ? WindowPoint{object, point} : WindowPoint{};
    }
};

class WindowInteraction final : public InteractionDelegate
{
public:
    QString notReadyReason(const SharedPtr<Object> &object) const override
    {
        return windowNotReadyReason(toWindow(object));
    }

    SharedPtr<Object> blocker(const SharedPtr<Object> &object) const override
    {
        return modalWindowOver(toWindow(object));
    }
};

// Of all that a window owns, a user sees the windows.
ObjectList windowsBelow(QObject *window)
{
    ObjectList windows;
    const QObjectList owned = window->children();
    for (QObject *child : owned) {
        if (child->isWindowType())
            windows.push_back(wrapAndRegisterQObject(child));
    }
    return windows;
}

} // namespace

void registerWindowDelegates()
{
    const Class *const windowClass = classForMetaObject(&QWindow::staticMetaObject);
    DelegateFactory::self()->registerDelegate(windowClass, std::make_unique<WindowGeometry>());
    DelegateFactory::self()->registerDelegate(windowClass, std::make_unique<WindowInteraction>());
    registerChildrenFinder(&QWindow::staticMetaObject, windowsBelow);
}

} // namespace Vantle::QtWrapper
