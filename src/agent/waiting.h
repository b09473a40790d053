#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <list>
#include <memory>

namespace Vantle::Agent {

/// Waits for something in the program to become true, with a limit.
///
/// Looks once at once, and then whenever a window has drawn a frame; in between
/// a timer looks, since a program that shows nothing new draws none. What was
/// true from the beginning costs neither.
///
/// A look may run an event loop, in which the others go on. With this object all
/// that is waited for is forgotten. Lives on the thread of the user interface.
class Waiting final : public QObject
{
    Q_OBJECT

public:
    /// Whether it is over. \p isLast says that there will be no further look,
    /// whatever it gives.
    using Look = std::function<bool(bool isLast)>;

    Waiting();
    ~Waiting() override;

    /// Calls \p look until it gives true, for the last time when \p limit has
    /// passed. The first call comes from within this one.
    void until(std::chrono::milliseconds limit, Look look);

    bool isIdle() const { return m_entries.empty(); }

    /// How long no window has drawn anything. Counts only while something is
    /// waited for, and from when that began.
    std::chrono::milliseconds timeWithoutFrame() const { return std::chrono::milliseconds(m_lastFrame.elapsed()); }

private:
    struct Entry
    {
        QDeadlineTimer deadline;
        Look look;
        bool isLooking = false;
        bool isOver = false;
    };

    void watchWindows();
    void lookSoon();
    void lookAtAll();
    void lookAt(const std::shared_ptr<Entry> &entry);
    void scheduleTimer();

    std::list<std::shared_ptr<Entry>> m_entries;
    QTimer m_timer;
    QElapsedTimer m_lastFrame;
    bool m_isLookDue = false;
};

} // namespace Vantle::Agent
