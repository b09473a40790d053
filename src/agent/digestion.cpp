#include "agent/digestion.h"

#include <QtGui/QGuiApplication>
#include <QtQml/private/qqmltimer_p.h>
#include <QtQuick/private/qquickwindow_p.h>

// Qt's header uses a keyword that we have switched off.
#define emit Q_EMIT
#include <QtQml/private/qabstractanimationjob_p.h>
#undef emit

#include <chrono>
#include <utility>

namespace Vantle::Agent {

namespace {

// One shows what the input has changed, and a second one what that has changed
// when it was laid out. Where an animation runs there is always another.
constexpr int framesToShow = 2;

// A window on the screen that draws at all draws sooner.
constexpr std::chrono::milliseconds frameLimit(200);

// Programs wait that long for a user to stop typing; a note that is shown to be
// read shows for longer.
constexpr int longestShortTimer = 500;

// What starts a short timer again and again is no reaction to the input.
constexpr std::chrono::milliseconds timerLimit(1000);

/// Whether any timer or animation of QML runs, which is quick to tell.
bool isAnythingTimed()
{
    QQmlAnimationTimer *const timer = QQmlAnimationTimer::instance(false);
    return timer && timer->runningAnimationCount() > 0;
}

/// A window with something to be drawn yet; null if there is none.
QQuickWindow *unfinishedWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        auto *const quickWindow = qobject_cast<QQuickWindow *>(window);
        if (!quickWindow || !quickWindow->isExposed())
            continue;
        const QQuickWindowPrivate *const priv = QQuickWindowPrivate::get(quickWindow);
        if (priv->dirtyItemList || !priv->itemsToPolish.isEmpty())
            return quickWindow;
    }
    return nullptr;
}

} // namespace

Digestion::Digestion()
{
    m_idle.setSingleShot(true);
    m_frameLimit.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &Digestion::look);
    connect(&m_frameLimit, &QTimer::timeout, this, &Digestion::frameIsOver);
    m_timerLimit.setSingleShot(true);
    connect(&m_timerLimit, &QTimer::timeout, this, [this] {
        m_endless.append(m_awaited);
        timerIsOver();
    });
}

void Digestion::begin(std::function<void()> done)
{
    m_done = std::move(done);
    m_frames = 0;
    m_timerLimit.stop();
    m_idle.start(0);
}

void Digestion::look()
{
    QQuickWindow *const window = m_frames < framesToShow ? unfinishedWindow() : nullptr;
    if (window)
        waitForFrameOf(window);
    else if (QQmlTimer *const timer = runningShortTimer())
        waitFor(timer);
    else if (const std::function<void()> done = std::exchange(m_done, {}))
        done();
}

void Digestion::waitForFrameOf(QQuickWindow *window)
{
    m_isDrawing = true;
    m_drawing = window;
    // The first comes from the thread that draws.
    connect(window, &QQuickWindow::frameSwapped, this, &Digestion::frameIsOver, Qt::QueuedConnection);
    connect(window, &QObject::destroyed, this, &Digestion::frameIsOver, Qt::QueuedConnection);
    m_frameLimit.start(frameLimit);
    window->update();
}

void Digestion::frameIsOver()
{
    // Called several times for one frame, and for those that were on their way.
    if (!std::exchange(m_isDrawing, false))
        return;
    if (m_drawing)
        m_drawing->disconnect(this);
    m_frameLimit.stop();
    ++m_frames;
    m_idle.start(0);
}

QQmlTimer *Digestion::runningShortTimer() const
{
    if (!isAnythingTimed())
        return nullptr;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (const QWindow *window : windows) {
        const auto timers = window->findChildren<QQmlTimer *>();
        for (QQmlTimer *timer : timers) {
            if (timer->isRunning() && !timer->isRepeating() && timer->interval() <= longestShortTimer
                && !m_endless.contains(timer))
                return timer;
        }
    }
    return nullptr;
}

void Digestion::waitFor(QQmlTimer *timer)
{
    m_awaited = timer;
    connect(timer, &QQmlTimer::runningChanged, this, &Digestion::timerIsOver, Qt::QueuedConnection);
    connect(timer, &QObject::destroyed, this, &Digestion::timerIsOver, Qt::QueuedConnection);
    if (!m_timerLimit.isActive())
        m_timerLimit.start(timerLimit);
}

void Digestion::timerIsOver()
{
    if (m_awaited && m_awaited->isRunning() && m_timerLimit.isActive())
        return;
    if (m_awaited)
        m_awaited->disconnect(this);
    m_awaited.clear();
    // What it did has to show.
    m_frames = 0;
    if (m_done)
        m_idle.start(0);
}

} // namespace Vantle::Agent
