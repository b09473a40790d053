#pragma once

#include "hook/object.h"

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QWindow>

#include <optional>

namespace Vantle::QtWrapper {

/// The window in which the user sees \p object, which may be a window itself;
/// null if there is none.
QWindow *windowShowing(const SharedPtr<Object> &object);

/// What \p window, which must be there, takes up on the screen, without its frame.
QRectF areaOf(const QWindow *window);

/// Where the pointer has to be.
struct PointOfAction
{
    QPointer<QWindow> window;
    /// On the screen. A whole pixel, wherever one means the point asked for.
    QPointF global;
    /// What the object takes up on the screen; null for a window, most of which
    /// is its items'.
    QRectF area{};

    QPointF local() const { return window ? window->mapFromGlobal(global) : global; }
};

/// Whether a pointer may also be told to go where the window isn't.
enum class Reach {
    Window,
    Screen
};

/// Where the pixel \p point of \p object, in the object's own coordinates, is
/// now; without one, the middle of the object. Nothing, and the reason in
/// \p problem, where no pointer of a user would reach it.
std::optional<PointOfAction> pointOfAction(const SharedPtr<Object> &object, const std::optional<QPoint> &point,
                                           QString *problem, Reach reach = Reach::Window);

/// Where the exact point is, on the screen. Nothing for an object in no window.
std::optional<QPointF> mapToScreen(const SharedPtr<Object> &object, QPointF point);

/// What messages call \p object.
QString describeObject(const SharedPtr<Object> &object);

} // namespace Vantle::QtWrapper
