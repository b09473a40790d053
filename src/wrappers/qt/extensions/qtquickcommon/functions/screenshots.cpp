#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/grabbing.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::QtWrapper {

namespace {

SharedPtr<Object> fail(const QString &message)
{
    Inspector::self()->raiseError(message);
    return nullptr;
}

SharedPtr<Object> failForNull(const SharedPtr<Object> &object)
{
    return fail(QStringLiteral("Cannot create screenshot for null object of type %1")
                    .arg(object ? object->className() : QString()));
}

/// The region of \p item in \p renderWindow, which shows the item's window at
/// \p offset; empty for an item that can't be seen there.
QRect visibleRegion(const QQuickItem *item, const QWindow *renderWindow, const QPoint &offset)
{
    const QRectF inScene = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    const QRectF window(0, 0, renderWindow->width(), renderWindow->height());
    const QRectF visible = inScene.translated(offset).intersected(window);
    // The size of an item may be no number. What is left of it when it was
    // rotated is none either, and there is no rectangle of integers for that.
    const bool isRectangle = qIsFinite(visible.x()) && qIsFinite(visible.y()) && qIsFinite(visible.width())
        && qIsFinite(visible.height());
    return isRectangle ? visible.toRect() : QRect();
}

/// \p region in device pixels. Corner and size are rounded each for itself, so
/// that regions of one size have pictures of one size.
QRect toDevicePixels(const QRect &region, qreal ratio)
{
    const auto scaled = [ratio](int value) { return qRound(value * ratio); };
    return {QPoint(scaled(region.x()), scaled(region.y())), QSize(scaled(region.width()), scaled(region.height()))};
}

} // namespace

SharedPtr<Object> grabItemFunction(const ObjectList &arguments, const Class *)
{
    const SharedPtr<Object> object = arguments.at(0);
    const auto *const item = qobject_cast<QQuickItem *>(nativeQObject(object));
    if (!item)
        return failForNull(object);
    if (item->width() == 0.0 || item->height() == 0.0)
        return fail(QStringLiteral("Cannot create screenshot for object with empty bounding box"));

    QWindow *renderWindow = nullptr;
    QPoint offset;
    quickRenderWindowFor(item->window(), &renderWindow, &offset);
    if (!renderWindow)
        return fail(QStringLiteral("Cannot create screenshot for QtQuick item without a rendering window"));
    return grabQuickWindow(renderWindow, visibleRegion(item, renderWindow, offset));
}

SharedPtr<Object> grabWindowFunction(const ObjectList &arguments, const Class *)
{
    const SharedPtr<Object> object = arguments.at(0);
    auto *const window = qobject_cast<QWindow *>(nativeQObject(object));
    if (!window)
        return failForNull(object);
    return grabQuickWindow(window, QRect(QPoint(0, 0), window->size()));
}

SharedPtr<Object> grabQuickWindow(QWindow *window, const QRect &region)
{
    if (!isWindowGrabbable(window, region))
        return nullptr;
    const CursorCleaner cursorCleaner;
    QPixmap pixmap = nativeGrabWindow(window, region);
    auto *const quickWindow = qobject_cast<QQuickWindow *>(window);
    if (pixmap.isNull() && quickWindow) {
        const QRect pixels = toDevicePixels(region, window->devicePixelRatio());
        pixmap = QPixmap::fromImage(quickWindow->grabWindow().copy(pixels));
    }
    return createResultObject(pixmap);
}

} // namespace Vantle::QtWrapper
