#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QHash>

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
/// gets the user's first press, touch, wheel turn or key.
class WindowSettling
{
public:
    explicit WindowSettling(std::chrono::milliseconds time) : m_time(time) {}

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
    std::chrono::milliseconds m_time;
    /// By window, never dereferenced. One that was shown and isn't on the screen yet settles forever.
    QHash<const QObject *, QDeadlineTimer> m_settling;
};

} // namespace Vantle::Agent
