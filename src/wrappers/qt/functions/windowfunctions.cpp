#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/inputtarget_p.h"
#include "wrappers/qt/readiness.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>
#include <QtGui/qpa/qplatformwindow.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <cstdlib>
#include <functional>
#include <optional>
#include <vector>

namespace Vantle::QtWrapper {

namespace {

/// Milliseconds between two changes of a window's place or size: window systems
/// tell about them in their own time, and merge what comes too fast.
constexpr int ChangeWait = 60;

SharedPtr<Object> fail(const QString &message)
{
    Inspector::self()->raiseError(message);
    return nullptr;
}

QWindow *toWindow(const SharedPtr<Object> &object)
{
    return qobject_cast<QWindow *>(nativeQObject(object));
}

bool isWindow(const SharedPtr<Object> &object, const QString &function)
{
    if (object->isNull() || toWindow(object))
        return true;
    fail(QStringLiteral("Cannot %1: %2 is no window").arg(function, describeObject(object)));
    return false;
}

bool isReadyWindow(const SharedPtr<Object> &object, const QString &function)
{
    return isWindow(object, function) && ensureValidVisibleAndReady(object, -1, -1, function, nullptr);
}

using WindowChange = std::function<void(QWindow *)>;

InputStep windowStep(const QPointer<QWindow> &window, int wait, const WindowChange &change)
{
    return {wait, 0, false, [window, change](InputDevices &) { change(window); }};
}

InputPlan planFor(QWindow *window)
{
    InputPlan plan;
    plan.window = window;
    plan.point = QPointF(window->width() / 2.0, window->height() / 2.0);
    return plan;
}

/// Plays \p changes in \p window, one after the other, and waits until the
/// window system had time for the last one.
void play(const QString &function, const SharedPtr<Object> &window,
          const std::function<std::vector<WindowChange>(QWindow *)> &changes)
{
    InputPlayer::self()->play({function, window, false, [window, changes](InputPlan *plan) {
                                   QWindow *const native = toWindow(window);
                                   if (!native)
                                       return QStringLiteral("the window does not exist any more");
                                   *plan = planFor(native);
                                   int wait = 0;
                                   for (const WindowChange &change : changes(native)) {
                                       plan->steps.push_back(windowStep(native, wait, change));
                                       wait = ChangeWait;
                                   }
                                   plan->steps.push_back({ChangeWait, 0, true, [](InputDevices &) {}});
                                   return QString();
                               }});
}

/// Half of the way that \p way is. The recorder takes a single move or resize
/// for a side effect of something else, so all ways have two parts; one that is
/// too short for that begins in the other direction.
int halfOf(int way)
{
    return std::abs(way) > 1 ? way / 2 : -way;
}

std::vector<WindowChange> moves(const QWindow *window, QPoint way)
{
    const QPoint end = window->position() + way;
    const QPoint half = window->position() + QPoint(halfOf(way.x()), halfOf(way.y()));
    if (way.isNull())
        return {};
    return {[half](QWindow *moved) { moved->setPosition(half); }, [end](QWindow *moved) { moved->setPosition(end); }};
}

std::vector<WindowChange> resizes(const QWindow *window, QSize size)
{
    const QSize way = size - window->size();
    const QSize half = window->size() + QSize(halfOf(way.width()), halfOf(way.height()));
    if (way.isNull())
        return {};
    return {[half](QWindow *resized) { resized->resize(half); }, [size](QWindow *resized) { resized->resize(size); }};
}

/// Asks the window system, as the buttons of the window's frame do. A window
/// that is asked itself takes the state for given at once, so that nothing
/// seems to change when the window system answers.
void requestState(QWindow *window, Qt::WindowState state)
{
    if (QPlatformWindow *const platformWindow = window->handle())
        platformWindow->setWindowState(state);
}

std::optional<Qt::WindowState> windowStateOf(int value)
{
    switch (value) {
    case 1: return Qt::WindowNoState;
    case 2: return Qt::WindowMaximized;
    case 3: return Qt::WindowMinimized;
    case 4: return Qt::WindowFullScreen;
    default: return std::nullopt;
    }
}

} // namespace

SharedPtr<Object> closeWindow(const Interaction &call)
{
    const QString function = QStringLiteral("closeWindow");
    if (!isReadyWindow(call.object, function))
        return nullptr;
    InputPlayer::self()->play({function, call.object, false, [object = call.object](InputPlan *plan) {
                                   QWindow *const window = toWindow(object);
                                   if (!window)
                                       return QStringLiteral("the window does not exist any more");
                                   *plan = planFor(window);
                                   plan->steps.push_back(windowStep(window, 0, [](QWindow *closed) {
                                       using Synchronous = QWindowSystemInterface::SynchronousDelivery;
                                       QWindowSystemInterface::handleCloseEvent<Synchronous>(closed);
                                   }));
                                   return QString();
                               }});
    return Inspector::self()->voidResult();
}

SharedPtr<Object> moveWindow(const Interaction &call)
{
    const QString function = QStringLiteral("moveWindow");
    if (!isReadyWindow(call.object, function))
        return nullptr;
    play(function, call.object, [way = call.distance](QWindow *window) { return moves(window, way); });
    return Inspector::self()->voidResult();
}

SharedPtr<Object> setWindowSize(const Interaction &call)
{
    const QString function = QStringLiteral("setWindowSize");
    if (call.size.isEmpty())
        return fail(QStringLiteral("Cannot setWindowSize: no window can have the size %1 x %2")
                        .arg(call.size.width())
                        .arg(call.size.height()));
    if (!isReadyWindow(call.object, function))
        return nullptr;
    play(function, call.object, [size = call.size](QWindow *window) { return resizes(window, size); });
    return Inspector::self()->voidResult();
}

SharedPtr<Object> setWindowState(const Interaction &call)
{
    const QString function = QStringLiteral("setWindowState");
    const std::optional<Qt::WindowState> state = windowStateOf(call.state);
    if (!state) {
        return fail(QStringLiteral("Cannot setWindowState: %1 is no state of a window: expected 1 (normal), "
                                   "2 (maximized), 3 (minimized) or 4 (full screen)")
                        .arg(call.state));
    }
    if (!isWindow(call.object, function))
        return nullptr;
    // A minimized window is not exposed, which is no reason not to restore it.
    const QWindow *const window = toWindow(call.object);
    const bool isMinimized = window && window->isVisible() && window->windowState() == Qt::WindowMinimized;
    if (!isMinimized && !isReadyWindow(call.object, function))
        return nullptr;
    play(function, call.object, [state](QWindow *) {
        return std::vector<WindowChange>{[state](QWindow *changed) { requestState(changed, *state); }};
    });
    return Inspector::self()->voidResult();
}

} // namespace Vantle::QtWrapper
