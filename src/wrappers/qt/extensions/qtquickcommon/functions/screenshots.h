#pragma once

#include "hook/object.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

class QRect;
class QWindow;

namespace Vantle {
class Class;
}

/// Pictures of items and windows for scripts, as pixmap results. All of it runs
/// on the thread that owns them.
namespace Vantle::QtWrapper {

/// The script function `grabWidget` for an item, which \p arguments hold: the
/// part of its bounding rectangle that lies inside the window, with whatever
/// covers it there. Null after a failure, which the script has been told
/// about, and, without a word, for an item that can't be seen.
SharedPtr<Object> grabItemFunction(const ObjectList &arguments, const Class *context);

/// The same for a whole window.
SharedPtr<Object> grabWindowFunction(const ObjectList &arguments, const Class *context);

/// The picture of \p region, in logical pixels, of \p window: of the screen
/// where that can be had, else as Qt Quick renders the window. Null, and
/// nothing is reported, if the window can't be grabbed. A window that offers
/// neither gives a result with a null pixmap.
VANTLEQTQUICKCOMMON_EXPORT SharedPtr<Object> grabQuickWindow(QWindow *window, const QRect &region);

} // namespace Vantle::QtWrapper
