#pragma once

#include "wrappers/qt/extensions/qtquick/qtquickglobal.h"

#include <QtCore/QPointF>
#include <QtCore/Qt>

class QQuickItem;
class QQuickWindow;

namespace Vantle::QtWrapper {

/// Whether a press gets to an item, or what it ends in.
struct PressRoad
{
    bool reachesTarget = false;
    /// Whether what takes the press looks at each one, and the press gets to the
    /// target if it lets it through.
    bool mayReachTarget = false;
    /// What takes the press in front of the target; null if it got there, or
    /// where there is nothing that takes presses and the target isn't either.
    QQuickItem *takenBy = nullptr;
};

/// Where a press of \p button at \p scenePoint of the scene of \p target, which
/// must be in one, goes. The items there are met from the topmost down, as Qt
/// delivers presses. Texts and decorations let them through, and so do disabled
/// items; what lies inside of the target belongs to it.
///
/// An item can decide to let a single press through, which only trying would tell.
/// Runs on the thread that owns the items; no script of an extension is asked.
VANTLEQTQUICK_EXPORT PressRoad pressRoadTo(const QQuickItem *target, QPointF scenePoint, Qt::MouseButton button);

/// What a press at \p scenePoint of \p window goes to: the topmost item there
/// that takes it; null where nothing does. Of items
/// that may let single presses through it is not known whether they will.
VANTLEQTQUICK_EXPORT QQuickItem *pressTakerAt(const QQuickWindow *window, QPointF scenePoint, Qt::MouseButton button);

} // namespace Vantle::QtWrapper
