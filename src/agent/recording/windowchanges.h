#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QTimer>
#include <QtGui/QWindow>

#include <chrono>
#include <functional>
#include <optional>

namespace Vantle::Agent {

/// Tells the moves, sizes and states that a user gives a window, by means of the
/// window manager, from those that the program or a change of the state bring
/// along, and hands the user's on as the patterns know them.
///
/// A run of moves and resizes is kept back until it is over: one of the patterns'
/// runs has at least two events, and a window manager may do it all in one. The
/// end counts; whoever takes a window away and back has done nothing.
///
/// What the program wants is seen between its wish and the window system's
/// report: the platform's window has the new place already, and the window
/// itself still the old one. Where there is nobody to ask, as without a screen,
/// the report comes too soon for that; nor is there anybody who moves windows.
///
/// Lives on the thread of the user interface.
class WindowChanges final : public QObject
{
    Q_OBJECT

public:
    /// Gets the events that make up the user's changes.
    using Feed = std::function<void(QWindow *window, QEvent *event)>;

    /// A run that begins within \p settlingTime of a new window, and goes on
    /// behind it, belongs to the window's way to the screen as a whole.
    WindowChanges(Feed feed, std::chrono::milliseconds settlingTime);
    ~WindowChanges() override;

    void start();
    void stop();

    /// To be called now and then, at best ahead of every event: looks for wishes
    /// of the program.
    void lookForWishes();

    /// Takes \p event if it is a move, resize or change of state of \p window,
    /// which it is not to be recorded by itself then. \p isSettling says that it
    /// belongs to the window's way to the screen.
    bool take(QWindow *window, QEvent *event, bool isSettling);

    /// Hands on what is kept back, since the user does something else.
    void letGo();

    /// The user does something to the program: no window settles any more.
    void noteInput();

private:
    /// What has become of a window since it last was at rest.
    struct Run
    {
        QPointer<QWindow> window;
        QPoint oldPosition;
        QPoint newPosition;
        QSize oldSize;
        QSize newSize;
        bool isMoved = false;
        bool isResized = false;
    };

    bool isFollowing(const QWindow *window) const;
    void expectChangesOf(const QWindow *window, std::chrono::milliseconds time, bool untilInput = false);
    void keepExpecting(const QWindow *window);
    void noteMove(QWindow *window, QPoint from, QPoint to);
    void noteResize(QWindow *window, QSize from, QSize to);
    Run &runOf(QWindow *window);
    void takeState(QWindow *window, QEvent *event, bool isSettling);
    void hand(const Run &run);

    /// For how long changes of a window follow from something else than its
    /// user's moving or sizing it.
    struct Expectation
    {
        std::chrono::steady_clock::time_point end;
        bool untilInput = false;
    };

    Feed m_feed;
    const std::chrono::milliseconds m_settlingPause;
    std::optional<Run> m_run;
    QHash<const QWindow *, Expectation> m_expected; ///< by window, which is never dereferenced
    QTimer m_quiet;
    QMetaObject::Connection m_beforeSleep;
};

} // namespace Vantle::Agent
