#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>

#include <functional>

class QQmlTimer;

namespace Vantle::Agent {

/// Waits until the program has done what follows from its input: until it has
/// handled every event that was waiting, and the windows on the screen show what
/// has changed.
///
/// Short timers of QML that run once are waited for, too: programs use them to do
/// something when the user has stopped typing. Other timers and animations that
/// run on are not, as many programs have some that never end; nor is a window that
/// does not draw. Lives on the thread of the user interface.
class Digestion final : public QObject
{
    Q_OBJECT

public:
    Digestion();

    /// Calls \p done from the event loop, once, unless this object goes first.
    void begin(std::function<void()> done);

private:
    void look();
    void waitForFrameOf(QQuickWindow *window);
    void frameIsOver();
    QQmlTimer *runningShortTimer() const;
    void waitFor(QQmlTimer *timer);
    void timerIsOver();

    std::function<void()> m_done;
    QTimer m_idle;       // fires when no event is waiting
    QTimer m_frameLimit; // of the window that is drawing
    QPointer<QQuickWindow> m_drawing; // null once it is gone
    bool m_isDrawing = false;
    int m_frames = 0;
    QPointer<QQmlTimer> m_awaited; // null while none is
    QTimer m_timerLimit;
    QList<QPointer<QQmlTimer>> m_endless; // started again and again
};

} // namespace Vantle::Agent
