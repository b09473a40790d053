#pragma once

#include "protocol/connection.h"
#include "protocol/endpoint.h"
#include "protocol/messages.h"
#include "tool/installation.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtNetwork/QLocalServer>

#include <chrono>
#include <optional>

#include <sys/types.h>

namespace Vantle::Tool {

/// What to start, and how.
struct LaunchOptions
{
    QStringList words; ///< program and arguments
    std::chrono::milliseconds startLimit{15000};
    Protocol::HelloResult settings;         ///< what the agent is told to do
    QMap<QString, QString> environment;     ///< on top of the tool's own
    bool standardOutputToError = false;     ///< keeps the tool's standard output to itself
    /// File that everything the program prints is appended to; the program
    /// reads nothing then. Empty: it shares the tool's streams.
    QString outputFile;
};

/// How a program ended.
struct ProgramEnd
{
    bool crashed = false;   ///< by a signal that the tool did not send
    bool requested = false; ///< the tool ended it
    int number = 0;         ///< signal if it crashed, else exit code
};

/// A program with the agent in it: starts it, takes the agent's call, watches
/// and ends it. Owns process, server and connection.
///
/// The program gets a process group of its own, so that a Ctrl-C in the
/// terminal reaches only the tool. It has no pipe to the tool: the death of the
/// tool leaves it running. An object starts one program, once. Destruction
/// kills a program that still runs, unless release() was called.
class ProgramUnderTest : public QObject
{
    Q_OBJECT

public:
    explicit ProgramUnderTest(const Installation &installation, QObject *parent = nullptr);
    ~ProgramUnderTest() override;

    /// Starts the program. One of agentReady(), startFailed(), agentMissing()
    /// and ended() follows, possibly from inside this call.
    void start(const LaunchOptions &options);

    /// Asks the program to end (SIGTERM), and kills it if it does not within
    /// five seconds. ended() follows.
    void end();

    /// Kills the program at once.
    void kill();

    /// Leaves the program running when this object goes.
    void release();

    /// What the agent said about itself; nothing before agentReady().
    const std::optional<Protocol::Hello> &agent() const { return m_agent; }

    /// The conversation with the agent; null before agentReady() and after the
    /// connection has ended.
    Protocol::Connection *connection() const { return m_connection; }

    /// Process id of what was started; 0 before that.
    qint64 processId() const { return m_programId; }

Q_SIGNALS:
    /// The agent has called. Register for its messages in a slot that is called
    /// directly: none is lost then.
    void agentReady();

    /// The program could not be started at all; \p reason says why.
    void startFailed(const QString &reason);

    /// The program runs, but its agent did not call within the limit or can't
    /// be talked to. The program goes on running.
    void agentMissing(const QString &reason);

    /// The agent has gone, and the program still runs some time later.
    void agentLost();

    /// The program has ended and everything its agent sent was handled.
    void ended(const ProgramEnd &end);

private:
    void prepareProcess(const LaunchOptions &options);
    void prepareStreams(const LaunchOptions &options);
    void acceptCallers();
    void limitStrangers();
    void answerHello(Protocol::Connection *caller, pid_t process, const QJsonObject &params,
                     const Protocol::Responder &responder);
    void reject(Protocol::Connection *caller, const Protocol::Responder &responder, int code, const QString &reason);
    void callerGone(Protocol::Connection *caller);
    void limitPassed();
    void reportMissing(const QString &reason);
    void processFailed(QProcess::ProcessError error);
    void processFinished();
    void closeStragglers();
    void reportEndIfComplete();
    ProgramEnd howItEnded() const;
    void signalProgram(int number);
    bool agentRunsElsewhere() const;

    const Installation m_installation;
    Protocol::SocketDirectory m_directory;
    const QByteArray m_token;
    QLocalServer m_server;
    QProcess *m_process;
    QList<Protocol::Connection *> m_callers;
    QPointer<Protocol::Connection> m_connection;
    std::optional<Protocol::Hello> m_agent;
    LaunchOptions m_options;
    qint64 m_programId = 0;
    pid_t m_agentProcess = 0;
    QTimer m_startTimer;
    QTimer m_killTimer;
    QTimer m_lostTimer;
    QTimer m_drainTimer;
    bool m_processFinished = false;
    bool m_endRequested = false;
    bool m_endReported = false;
};

} // namespace Vantle::Tool
