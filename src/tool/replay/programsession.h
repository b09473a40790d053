#pragma once

#include "protocol/connection.h"
#include "tool/programundertest.h"

#include <QtCore/QEventLoop>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Vantle::Tool::Replay {

/// What came of a request.
struct Answer
{
    enum Kind {
        Result,
        Refused,   ///< the agent answered with an error
        NoProgram, ///< none was started
        Ended,     ///< there is no program any more
        TimedOut,  ///< the program did not answer: it hangs
        Stopped,   ///< the user ended the replay
    };

    Kind kind = Result;
    QJsonValue result;
    Protocol::Error error; ///< if refused; in the other cases only its message
};

/// The program that a script drives, one after the other if the script starts
/// several. Its calls look synchronous: each runs an event loop until it is
/// done, the program ends, or stop() is called. Lives on one thread.
class ProgramSession : public QObject
{
    Q_OBJECT

public:
    explicit ProgramSession(const Installation &installation, QObject *parent = nullptr);
    ~ProgramSession() override;

    /// Starts a program, after ending the one that runs. Empty, or why its
    /// agent can't be talked to; the program is ended then.
    QString start(const LaunchOptions &options);

    /// Sends a request and waits for the answer.
    Answer request(const QString &method, const QJsonObject &params, std::chrono::milliseconds limit);

    /// The same for what the agent may take its time over: \p limit until it
    /// has to be at it, and then as long as it says that it is playing input.
    /// Without an answer and without a sign of life of the event loop for
    /// \p patience the program hangs.
    Answer request(const QString &method, const QJsonObject &params, std::chrono::milliseconds limit,
                   std::chrono::milliseconds patience);

    /// Waits for a time. False if the program ended or the user stopped it
    /// before.
    bool pause(std::chrono::milliseconds time);

    /// Waits until the program has ended by itself.
    bool waitForEnd(std::chrono::milliseconds limit);

    /// Ends the program as if its last window had been closed, and by force
    /// what does not end that way. Nothing happens if there is none.
    void finish();

    /// Makes every call that is under way, and every further one, return.
    void stop();
    bool isStopped() const { return m_stopped; }

    /// True from the success of start() until the program has ended.
    bool isRunning() const { return m_program != nullptr && !m_end; }
    bool wasStarted() const { return m_program != nullptr; }

    /// Whether the last request got no answer in its time: the next one won't
    /// get one sooner.
    bool isOverdue() const { return m_isOverdue; }

    /// What to do about a script that has no program.
    static QString noProgramText();

    /// How the program ended by itself; nothing while it runs or if it was
    /// ended by force.
    const std::optional<ProgramEnd> &end() const { return m_end; }

    /// The same if nobody asked the program to end.
    std::optional<ProgramEnd> ownEnd() const;

    /// The end in words, e.g. "ended with signal 11 (SIGSEGV)".
    QString endText() const;

    /// Whether the last program crashed before its agent reported.
    bool crashedAtStart() const { return m_crashedAtStart; }

    /// True if the program ended, and not well: by a signal that nobody here
    /// sent, or by itself with an exit code other than 0.
    bool diedBadly() const;

    /// Name, process and Qt version of the program, for people.
    QString description() const;

Q_SIGNALS:
    void statementRecorded(const Vantle::Protocol::Statement &statement);
    void commentRecorded(const QString &text);
    void logged(bool isWarning, const QString &text);

private:
    using Pending = std::shared_ptr<std::optional<Protocol::Reply>>;

    void listen();
    void wake();
    std::optional<Answer> whyNoRequest();
    Pending send(const QString &method, const QJsonObject &params);
    Answer answerFrom(const Pending &reply, const QString &whatIsWrong);
    /// What keeps a request that is overdue. Empty if it is just being played.
    QString whyOverdue(const Pending &reply, std::chrono::milliseconds waited, std::chrono::milliseconds patience);
    /// Runs an event loop until \p done holds. False if \p limit passed or
    /// stop() was called before.
    bool runUntil(const std::function<bool()> &done, std::chrono::milliseconds limit);
    void drop();

    const Installation m_installation;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::optional<ProgramEnd> m_end;
    QString m_failure;
    QList<QEventLoop *> m_loops;
    bool m_ready = false;
    bool m_ending = false;
    bool m_askedToQuit = false;
    bool m_crashedAtStart = false;
    bool m_stopped = false;
    bool m_isOverdue = false;
    bool m_isUnbegunCall = false; // the last call, until the agent says that its turn has come
};

} // namespace Vantle::Tool::Replay
