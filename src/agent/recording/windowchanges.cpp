#include "agent/recording/windowchanges.h"

#include "wrappers/qt/functions/inputplayer.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtGui/QGuiApplication>
#include <QtGui/QMoveEvent>
#include <QtGui/private/qwindow_p.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <utility>

namespace Vantle::Agent {

namespace {

using Clock = std::chrono::steady_clock;

// A user who moves or sizes a window pauses less. Any input ends a run, too.
constexpr std::chrono::milliseconds quietTime(1000);

// Window managers answer sooner, and some in several steps.
constexpr std::chrono::milliseconds followingTime(500);

QRect reportedGeometry(const QWindow *window)
{
    return QWindowPrivate::get(const_cast<QWindow *>(window))->geometry;
}

bool isPlayingInput()
{
    return !QtWrapper::InputPlayer::self()->isIdle();
}

} // namespace

WindowChanges::WindowChanges(Feed feed, std::chrono::milliseconds settlingTime)
    : m_feed(std::move(feed))
    , m_settlingPause(settlingTime / 2)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    connect(&m_quiet, &QTimer::timeout, this, &WindowChanges::letGo);
}

WindowChanges::~WindowChanges() = default;

void WindowChanges::start()
{
    // The moment when all that was reported has been handled.
    m_beforeSleep = connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                            &WindowChanges::lookForWishes);
}

void WindowChanges::stop()
{
    disconnect(m_beforeSleep);
    m_run.reset();
    m_expected.clear();
    m_quiet.stop();
}

void WindowChanges::lookForWishes()
{
    // What is on its way from the window system looks like a wish, too.
    if (QWindowSystemInterface::windowSystemEventsQueued() > 0)
        return;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (const QWindow *window : windows) {
        if (window->handle() && window->geometry() != reportedGeometry(window) && !isPlayingInput())
            expectChangesOf(window, followingTime);
    }
}

bool WindowChanges::take(QWindow *window, QEvent *event, bool isSettling)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        if (isSettling) {
            // Whatever comes in the same run belongs to it.
            expectChangesOf(window, m_settlingPause, true);
        } else if (isFollowing(window)) {
            keepExpecting(window);
        } else if (event->type() == QEvent::Move) {
            const auto *const move = static_cast<QMoveEvent *>(event);
            noteMove(window, move->oldPos(), move->pos());
        } else {
            const auto *const resize = static_cast<QResizeEvent *>(event);
            noteResize(window, resize->oldSize(), resize->size());
        }
        return true;
    case QEvent::WindowStateChange: takeState(window, event, isSettling); return true;
    default: return false;
    }
}

bool WindowChanges::isFollowing(const QWindow *window) const
{
    const auto entry = m_expected.constFind(window);
    return entry != m_expected.cend() && Clock::now() < entry->end;
}

void WindowChanges::expectChangesOf(const QWindow *window, std::chrono::milliseconds time, bool untilInput)
{
    m_expected.insert(window, {Clock::now() + time, untilInput});
}

/// As long as changes come one behind the other they have the same reason.
void WindowChanges::keepExpecting(const QWindow *window)
{
    const bool isSettling = isFollowing(window) && m_expected.value(window).untilInput;
    expectChangesOf(window, isSettling ? m_settlingPause : followingTime, isSettling);
}

void WindowChanges::noteInput()
{
    m_expected.removeIf([](auto entry) { return entry->untilInput; });
}

WindowChanges::Run &WindowChanges::runOf(QWindow *window)
{
    if (m_run && m_run->window != window)
        letGo();
    if (!m_run) {
        m_run = Run();
        m_run->window = window;
    }
    m_quiet.start();
    return *m_run;
}

void WindowChanges::noteMove(QWindow *window, QPoint from, QPoint to)
{
    Run &run = runOf(window);
    if (!std::exchange(run.isMoved, true))
        run.oldPosition = from;
    run.newPosition = to;
}

void WindowChanges::noteResize(QWindow *window, QSize from, QSize to)
{
    Run &run = runOf(window);
    if (!std::exchange(run.isResized, true))
        run.oldSize = from;
    run.newSize = to;
}

void WindowChanges::takeState(QWindow *window, QEvent *event, bool isSettling)
{
    // Place and size follow from the state, and may be reported ahead of it.
    if (m_run && m_run->window == window)
        m_run.reset();
    letGo();
    expectChangesOf(window, followingTime);
    if (!isSettling)
        m_feed(window, event);
}

void WindowChanges::letGo()
{
    m_quiet.stop();
    if (const std::optional<Run> run = std::exchange(m_run, std::nullopt); run && run->window)
        hand(*run);
}

void WindowChanges::hand(const Run &run)
{
    // The patterns take a move behind a resize for a side effect of it, so the
    // move comes first; two events of each, of which the second goes nowhere.
    QEvent neither(QEvent::None);
    m_feed(run.window, &neither);
    if (run.isMoved && run.newPosition != run.oldPosition) {
        QMoveEvent whole(run.newPosition, run.oldPosition);
        QMoveEvent rest(run.newPosition, run.newPosition);
        m_feed(run.window, &whole);
        m_feed(run.window, &rest);
    }
    if (run.window && run.isResized && run.newSize != run.oldSize) {
        QResizeEvent whole(run.newSize, run.oldSize);
        QResizeEvent rest(run.newSize, run.newSize);
        m_feed(run.window, &whole);
        m_feed(run.window, &rest);
    }
}

} // namespace Vantle::Agent
