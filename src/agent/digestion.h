#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>

#include <functional>

namespace Vantle::Agent {

/// Waits until the program has done what follows from its input: until it has
/// handled every event that was waiting, and the windows on the screen show what
/// has changed.
///
/// Animations that run on and timers are not waited for, as many programs have
/// some that never end; nor is a window that does not draw. Lives on the thread
/// of the user interface.
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

    std::function<void()> m_done;
    QTimer m_idle;       // fires when no event is waiting
    QTimer m_frameLimit; // of the window that is drawing
    QPointer<QQuickWindow> m_drawing; // null once it is gone
    bool m_isDrawing = false;
    int m_frames = 0;
};

} // namespace Vantle::Agent
