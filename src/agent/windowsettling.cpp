#include "agent/windowsettling.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Vantle::Agent {

void WindowSettling::start()
{
    for (const QWindow *window : QGuiApplication::allWindows()) {
        if (window->isVisible())
            m_settling.insert(window, window->isExposed() ? QDeadlineTimer(m_time) : QDeadlineTimer::Forever);
    }
}

void WindowSettling::stop()
{
    m_settling.clear();
}

void WindowSettling::note(const QObject *receiver, const QEvent &event)
{
    if (!receiver->isWindowType())
        return;
    switch (event.type()) {
    case QEvent::Show: m_settling.insert(receiver, QDeadlineTimer::Forever); break;
    case QEvent::Expose:
        if (const auto found = m_settling.find(receiver); found != m_settling.end() && found->isForever())
            *found = QDeadlineTimer(m_time);
        break;
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::Wheel:
    case QEvent::KeyPress: m_settling.remove(receiver); break;
    default: break;
    }
}

bool WindowSettling::isSettling(const QObject *receiver, const QEvent &event) const
{
    switch (event.type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange: {
        const auto found = m_settling.constFind(receiver);
        return found != m_settling.cend() && !found->hasExpired();
    }
    default: return false;
    }
}

} // namespace Vantle::Agent
