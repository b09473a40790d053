#pragma once

#include <QtCore/QHash>
#include <QtCore/QTimer>

#include <chrono>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vantle::Agent {

/// Tells the place, size and state that program and window manager give a new
/// window from those that a user gives it: both come from the window system.
///
/// A window settles for some time after it came to the screen, or until it
/// gets the user's first press, touch, wheel turn or key. The time is counted
/// in turns of the event loop: a program often draws its first picture for
/// longer than that, and what the window system says meanwhile comes after it.
class WindowSettling
{
public:
    explicit WindowSettling(std::chrono::milliseconds time);

    /// The windows that are on the screen by now count as having just come there.
    void start();
    void stop();

    /// To be told each event of the application ahead of isSettling(); what
    /// isn't for a window is passed over.
    void note(const QObject *receiver, const QEvent &event);

    /// Whether \p event is one that a window gets while it settles: a move, a
    /// resize or a change of its state.
    bool isSettling(const QObject *receiver, const QEvent &event) const;

private:
    void countDown();
    void beginCountdown(const QObject *window);

    /// Ticks until each window has settled, by window, which is never
    /// dereferenced; less than none while it is yet to come to the screen.
    QHash<const QObject *, int> m_ticksLeft;
    QTimer m_clock;
};

} // namespace Vantle::Agent
