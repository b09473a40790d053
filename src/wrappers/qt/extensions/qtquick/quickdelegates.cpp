#include "wrappers/qt/extensions/qtquick/quickdelegates_p.h"

#include "wrappers/qt/extensions/qtquick/modality_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/readiness.h"
#include "wrappers/qt/wrapping.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <cmath>

namespace Vantle::QtWrapper {

namespace {

constexpr QRect NoRect(0, 0, -1, -1);

QQuickItem *toItem(const SharedPtr<Object> &object)
{
    return qobject_cast<QQuickItem *>(nativeQObject(object));
}

QQuickWindow *toQuickWindow(const SharedPtr<Object> &object)
{
    return qobject_cast<QQuickWindow *>(nativeQObject(object));
}

// The point of the scene in \p window, where the user sees it: the window may be
// drawn into another one. Nothing for null.
GeometryDelegate::WindowPoint shownPoint(QQuickWindow *window, QPointF scenePoint)
{
    if (!window)
        return {};
    QWindow *shown = nullptr;
    QPoint offset;
    quickRenderWindowFor(window, &shown, &offset);
    return {wrapAndRegisterQObject(shown), scenePoint + offset};
}

// The window in which the user sees \p window; null for null.
QWindow *shownWindow(QQuickWindow *window)
{
    QWindow *shown = nullptr;
    if (window)
        quickRenderWindowFor(window, &shown, nullptr);
    return shown;
}

// The pixel that holds the point, so that a point inside an item stays inside.
QPoint pixelOf(QPointF point)
{
    return {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))};
}

QQuickItem *itemBelow(QQuickItem *item, QPointF point)
{
    QQuickItem *const hit = recursiveQuickItemAt(item, point);
    return hit != item ? hit : nullptr;
}

class ItemGeometry final : public GeometryDelegate
{
public:
    QPoint mapFromGlobal(const SharedPtr<Object> &object, int x, int y) const override
    {
        const QQuickItem *const item = toItem(object);
        return item ? pixelOf(item->mapFromGlobal(QPointF(x, y))) : QPoint(x, y);
    }

    // A child counts only if it covers the whole pixel. Whoever comes here from
    // the window's childAt() already has the deepest item under the exact point;
    // in a scaled scene the pixel's corner alone could lie in a neighbour of it.
    SharedPtr<Object> childAt(const SharedPtr<Object> &object, int x, int y) const override
    {
        constexpr qreal almostOne = 1 - 1e-6;
        QQuickItem *const item = toItem(object);
        QQuickItem *const hit = item ? itemBelow(item, QPointF(x, y)) : nullptr;
        if (!hit || hit != itemBelow(item, QPointF(x + almostOne, y + almostOne)))
            return nullptr;
        return wrapAndRegisterQObject(hit);
    }

    SharedPtr<Object> focusChild(const SharedPtr<Object> &object) const override
    {
        const QQuickItem *const item = toItem(object);
        QQuickItem *const focus = item && item->window() ? firstNonIgnoredFocusItem(item->window()) : nullptr;
        return focus && focus != item && item->isAncestorOf(focus) ? wrapAndRegisterQObject(focus) : nullptr;
    }

    QRect screenRect(const SharedPtr<Object> &object) const override
    {
        const QQuickItem *const item = toItem(object);
        if (!item || !item->window())
            return NoRect;
        const QRectF scene = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        const QPointF origin = item->window()->contentItem()->mapToGlobal(QPointF(0, 0));
        return scene.translated(origin).toRect();
    }

    WindowPoint mapToWindow(const SharedPtr<Object> &object, QPointF point) const override
    {
        const QQuickItem *const item = toItem(object);
        return item ? shownPoint(item->window(), item->mapToScene(point)) : WindowPoint{};
    }
};

class ItemInteraction final : public InteractionDelegate
{
public:
    QString notReadyReason(const SharedPtr<Object> &object) const override
    {
        QQuickItem *const item = toItem(object);
        if (!item)
            return QStringLiteral("the item does not exist any more");
        if (!item->window())
            return QStringLiteral("the item is in no window");
        if (!item->isVisible())
            return QStringLiteral("the item is not visible");
        if (!item->isEnabled())
            return QStringLiteral("the item is not enabled");
        if (QString reason = windowNotReadyReason(shownWindow(item->window())); !reason.isEmpty())
            return reason;
        if (const QQuickItem *const popup = modalPopupAbove(item))
            return QStringLiteral("the item is covered by the modal popup %1").arg(popupDescription(popup));
        // Last, since this may run scripts.
        if (!VantleQtQuickHook::isItemReady(item))
            return QStringLiteral("an extension says that the item is not ready");
        // Such a script may have destroyed the item.
        return nativeQObject(object) ? QString() : QStringLiteral("the item does not exist any more");
    }

    SharedPtr<Object> blocker(const SharedPtr<Object> &object) const override
    {
        const QQuickItem *const item = toItem(object);
        if (!item || !item->window())
            return {};
        if (SharedPtr<Object> window = modalWindowOver(shownWindow(item->window())))
            return window;
        QQuickItem *const popup = modalPopupAbove(item);
        return popup ? wrapAndRegisterQObject(popup) : nullptr;
    }

    void takeFocus(const SharedPtr<Object> &object) const override
    {
        QQuickItem *const item = toItem(object);
        if (!item || !item->window() || item == item->window()->contentItem() || item->hasActiveFocus())
            return;
        const QQuickItem *const focus = item->window()->activeFocusItem();
        if (!focus || !item->isAncestorOf(focus))
            item->forceActiveFocus(Qt::OtherFocusReason);
    }
};

class QuickWindowGeometry final : public GeometryDelegate
{
public:
    QPoint mapFromGlobal(const SharedPtr<Object> &object, int x, int y) const override
    {
        const QQuickWindow *const window = toQuickWindow(object);
        return window ? pixelOf(window->contentItem()->mapFromGlobal(QPointF(x, y))) : QPoint(x, y);
    }

    SharedPtr<Object> childAt(const SharedPtr<Object> &object, int x, int y) const override
    {
        const QQuickWindow *const window = toQuickWindow(object);
        QQuickItem *const hit = window ? itemBelow(window->contentItem(), QPointF(x, y)) : nullptr;
        return hit ? wrapAndRegisterQObject(hit) : nullptr;
    }

    SharedPtr<Object> focusChild(const SharedPtr<Object> &object) const override
    {
        QQuickWindow *const window = toQuickWindow(object);
        return window ? quickWindowFocusProxy(window) : nullptr;
    }

    QRect screenRect(const SharedPtr<Object> &object) const override
    {
        const QQuickWindow *const window = toQuickWindow(object);
        if (!window)
            return NoRect;
        const QPointF origin = window->contentItem()->mapToGlobal(QPointF(0, 0));
        return {origin.toPoint(), window->size()};
    }

    WindowPoint mapToWindow(const SharedPtr<Object> &object, QPointF point) const override
    {
        return shownPoint(toQuickWindow(object), point);
    }
};

class QuickWindowInteraction final : public InteractionDelegate
{
public:
    QString notReadyReason(const SharedPtr<Object> &object) const override
    {
        return windowNotReadyReason(shownWindow(toQuickWindow(object)));
    }

    SharedPtr<Object> blocker(const SharedPtr<Object> &object) const override
    {
        return modalWindowOver(shownWindow(toQuickWindow(object)));
    }
};

} // namespace

std::unique_ptr<GeometryDelegate> makeItemGeometryDelegate()
{
    return std::make_unique<ItemGeometry>();
}

std::unique_ptr<InteractionDelegate> makeItemInteractionDelegate()
{
    return std::make_unique<ItemInteraction>();
}

std::unique_ptr<GeometryDelegate> makeQuickWindowGeometryDelegate()
{
    return std::make_unique<QuickWindowGeometry>();
}

std::unique_ptr<InteractionDelegate> makeQuickWindowInteractionDelegate()
{
    return std::make_unique<QuickWindowInteraction>();
}

} // namespace Vantle::QtWrapper
