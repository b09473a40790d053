#include "agent/recording/windowsettling.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Vantle::Agent {

namespace {

constexpr int ticksToSettle = 4;
constexpr int notOnScreen = -1;

} // namespace

WindowSettling::WindowSettling(std::chrono::milliseconds time)
{
    m_clock.setInterval(time / ticksToSettle);
    QObject::connect(&m_clock, &QTimer::timeout, &m_clock, [this] { countDown(); });
}

void WindowSettling::start()
{
    for (const QWindow *window : QGuiApplication::allWindows()) {
        if (window->isExposed())
            beginCountdown(window);
        else if (window->isVisible())
            m_ticksLeft.insert(window, notOnScreen);
    }
}

void WindowSettling::stop()
{
    m_ticksLeft.clear();
    m_clock.stop();
}

void WindowSettling::note(const QObject *receiver, const QEvent &event)
{
    if (!receiver->isWindowType())
        return;
    switch (event.type()) {
    case QEvent::Show: m_ticksLeft.insert(receiver, notOnScreen); break;
    case QEvent::Expose:
        if (m_ticksLeft.value(receiver) == notOnScreen)
            beginCountdown(receiver);
        break;
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::Wheel:
    case QEvent::KeyPress: m_ticksLeft.remove(receiver); break;
    default: break;
    }
}

bool WindowSettling::isSettling(const QObject *receiver, const QEvent &event) const
{
    switch (event.type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange: return m_ticksLeft.contains(receiver);
    default: return false;
    }
}

void WindowSettling::beginCountdown(const QObject *window)
{
    m_ticksLeft.insert(window, ticksToSettle);
    if (!m_clock.isActive())
        m_clock.start();
}

void WindowSettling::countDown()
{
    bool isAnyLeft = false;
    m_ticksLeft.removeIf([&isAnyLeft](auto entry) {
        if (entry.value() == notOnScreen)
            return false;
        --entry.value();
        isAnyLeft = isAnyLeft || entry.value() > 0;
        return entry.value() == 0;
    });
    if (!isAnyLeft)
        m_clock.stop();
}

} // namespace Vantle::Agent
