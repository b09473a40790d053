#pragma once

#include "hook/object.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QList>

class QPoint;
class QPointF;
class QQuickItem;
class QQuickWindow;
class QWindow;

/// Which item lies under a point, and which holds the focus, as the user sees
/// it: items that an extension declares to be of no interest are looked
/// through. All of it runs on the thread that owns the items and may run
/// script code of the extensions there.
namespace Vantle::QtWrapper {

/// The deepest and topmost item at \p point, which is in the coordinates of
/// \p item; null if neither \p item nor anything below it is hit.
///
/// Invisible children are skipped; the visibility of \p item itself is not
/// asked for. An item that is fully transparent by its own opacity is out
/// together with everything below it.
VANTLEQTQUICKCOMMON_EXPORT QQuickItem *recursiveQuickItemAt(QQuickItem *item, const QPointF &point);

/// The children of \p item in stacking order, the topmost last.
QList<QQuickItem *> zOrderedChildItems(const QQuickItem *item);

/// The item with the focus in \p window, or, where an extension ignores that
/// one, its nearest ancestor with active focus that isn't ignored. Never the
/// content item; null if there is no such item.
VANTLEQTQUICKCOMMON_EXPORT QQuickItem *firstNonIgnoredFocusItem(QQuickWindow *window);

/// The script object of firstNonIgnoredFocusItem(); null if there is no such
/// item or if a user could not act on it now.
VANTLEQTQUICKCOMMON_EXPORT SharedPtr<Object> quickWindowFocusProxy(QQuickWindow *window);

/// Stores in \p *result the window in which \p window shows on the screen, and
/// in \p *offset the position inside it in logical pixels. That is \p window
/// itself, at (0, 0), unless it renders into another one. \p offset may be null.
VANTLEQTQUICKCOMMON_EXPORT void quickRenderWindowFor(QQuickWindow *window, QWindow **result, QPoint *offset);

} // namespace Vantle::QtWrapper
