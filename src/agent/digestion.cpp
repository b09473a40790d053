#include "agent/digestion.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/private/qquickwindow_p.h>

#include <chrono>
#include <utility>

namespace Vantle::Agent {

namespace {

// One shows what the input has changed, and a second one what that has changed
// when it was laid out. Where an animation runs there is always another.
constexpr int framesToShow = 2;

// A window on the screen that draws at all draws sooner.
constexpr std::chrono::milliseconds frameLimit(200);

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
}

void Digestion::begin(std::function<void()> done)
{
    m_done = std::move(done);
    m_frames = 0;
    m_idle.start(0);
}

void Digestion::look()
{
    QQuickWindow *const window = m_frames < framesToShow ? unfinishedWindow() : nullptr;
    if (window)
        waitForFrameOf(window);
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

} // namespace Vantle::Agent
