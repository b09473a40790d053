#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/qglobal.h>

class QPixmap;
class QRect;
class QWindow;

/// Pictures of windows as they show on the screen. Regions are in logical
/// pixels of the window. All of it runs on the thread of the user interface.
namespace Vantle::QtWrapper {

/// Whether \p region of \p window can be on a picture at all: the window is
/// visible and exposed, and some of the region lies inside it. False for null.
VANTLEQTWRAPPER_EXPORT bool isWindowGrabbable(QWindow *window, const QRect &region);

/// What the screen shows at \p region of \p window, in device pixels. Null on
/// platforms that don't show the real screen, and where part of the region
/// lies beyond the screen. \p window must not be null.
VANTLEQTWRAPPER_EXPORT QPixmap nativeGrabWindow(QWindow *window, const QRect &region);

/// Keeps the mouse cursor out of pictures for as long as it lives.
class CursorCleaner
{
public:
    VANTLEQTWRAPPER_EXPORT CursorCleaner();
    VANTLEQTWRAPPER_EXPORT ~CursorCleaner();

private:
    Q_DISABLE_COPY_MOVE(CursorCleaner)
};

} // namespace Vantle::QtWrapper
