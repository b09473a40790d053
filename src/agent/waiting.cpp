#include "agent/waiting.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <utility>

namespace Vantle::Agent {

namespace {

// For programs that draw nothing: rare enough to cost nothing, quick enough
// for nobody to notice.
constexpr std::chrono::milliseconds lookInterval(50);

} // namespace

Waiting::Waiting()
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Waiting::lookAtAll);
}

Waiting::~Waiting() = default;

void Waiting::until(std::chrono::milliseconds limit, Look look)
{
    if (m_entries.empty())
        m_lastFrame.start();
    const auto entry = std::make_shared<Entry>(Entry{QDeadlineTimer(limit), std::move(look)});
    m_entries.push_back(entry);
    const QPointer<Waiting> self(this);
    lookAt(entry);
    if (!self || m_entries.empty())
        return;
    watchWindows();
    scheduleTimer();
}

void Waiting::watchWindows()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (auto *const quickWindow = qobject_cast<QQuickWindow *>(window))
            connect(quickWindow, &QQuickWindow::afterAnimating, this, &Waiting::lookSoon, Qt::UniqueConnection);
    }
}

// Not from inside of the window's own drawing: a look may run code of the program.
void Waiting::lookSoon()
{
    m_lastFrame.start();
    if (!m_entries.empty() && !std::exchange(m_isLookDue, true))
        QMetaObject::invokeMethod(this, &Waiting::lookAtAll, Qt::QueuedConnection);
}

void Waiting::lookAtAll()
{
    m_isLookDue = false;
    const QPointer<Waiting> self(this);
    const std::list<std::shared_ptr<Entry>> entries = m_entries;
    for (const std::shared_ptr<Entry> &entry : entries) {
        lookAt(entry);
        if (!self)
            return;
    }
    if (m_entries.empty()) {
        m_timer.stop();
        return;
    }
    watchWindows();
    scheduleTimer();
}

void Waiting::lookAt(const std::shared_ptr<Entry> &entry)
{
    if (entry->isOver || entry->isLooking)
        return;
    const QPointer<Waiting> self(this);
    const bool isLast = entry->deadline.hasExpired();
    entry->isLooking = true;
    entry->isOver = entry->look(isLast) || isLast;
    entry->isLooking = false;
    if (self && entry->isOver)
        m_entries.remove(entry);
}

void Waiting::scheduleTimer()
{
    std::chrono::nanoseconds next = lookInterval;
    for (const std::shared_ptr<Entry> &entry : m_entries)
        next = std::min(next, std::max(entry->deadline.remainingTimeAsDuration(), std::chrono::nanoseconds::zero()));
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(next));
}

} // namespace Vantle::Agent
