#include "wrappers/qt/grabbing.h"

#include <QtCore/QRect>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

// Elsewhere Qt can't read the screen, or there is none and Qt makes one up.
bool showsTheRealScreen()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

// Only compares edges: a rectangle that was no number at all lies at the end of
// the integers, where sums and differences don't fit.
bool reachesInto(const QRect &region, const QSize &window)
{
    return !region.isEmpty() && region.right() >= 0 && region.bottom() >= 0 && region.left() < window.width()
        && region.top() < window.height();
}

} // namespace

bool isWindowGrabbable(QWindow *window, const QRect &region)
{
    return window && window->isVisible() && window->isExposed() && reachesInto(region, window->size());
}

QPixmap nativeGrabWindow(QWindow *window, const QRect &region)
{
    QScreen *const screen = window->screen();
    if (!screen || !showsTheRealScreen())
        return {};
    // Of what lies beyond the screen there is no picture, only memory that nobody cleared.
    const QRect onScreen(window->mapToGlobal(region.topLeft()), region.size());
    if (!screen->virtualGeometry().contains(onScreen))
        return {};
    return screen->grabWindow(window->winId(), region.x(), region.y(), region.width(), region.height());
}

CursorCleaner::CursorCleaner()
{
    QGuiApplication::setOverrideCursor(QCursor(Qt::BlankCursor));
}

CursorCleaner::~CursorCleaner()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace Vantle::QtWrapper
