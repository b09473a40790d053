#include "tool/programundertest.h"

#include "tool/agentdiagnosis.h"
#include "tool/console.h"

#include <QtCore/QProcessEnvironment>
#include <QtNetwork/QLocalSocket>

#include <csignal>
#include <utility>

#include <unistd.h>

namespace Vantle::Tool {

using Protocol::Connection;
using Protocol::Hello;
using Protocol::Responder;

namespace {

constexpr std::chrono::seconds termLimit(5);
constexpr std::chrono::seconds lostDelay(2);
constexpr std::chrono::seconds drainLimit(1);

// Nobody who has not shown the token gets us to buffer more than a hello.
constexpr qsizetype helloLimit = 64 * 1024;

// Nor to hold more connections than this open, of the thousand or so that a
// process may have.
constexpr qsizetype mostStrangers = 128;

// A shell reports a child that died of a signal as 128 plus its number.
constexpr int shellSignalBase = 128;
constexpr int lastSignal = 64;

void prepend(QProcessEnvironment *environment, const QString &name, const QString &value, QLatin1Char separator)
{
    const QString before = environment->value(name);
    environment->insert(name, before.isEmpty() ? value : value + separator + before);
}

void appendOnce(QProcessEnvironment *environment, const QString &name, const QString &value, QLatin1Char separator)
{
    QStringList values = environment->value(name).split(separator, Qt::SkipEmptyParts);
    if (!values.contains(value))
        values.append(value);
    environment->insert(name, values.join(separator));
}

} // namespace

ProgramUnderTest::ProgramUnderTest(const Installation &installation, QObject *parent)
    : QObject(parent)
    , m_installation(installation)
    , m_token(Protocol::createToken())
    , m_process(new QProcess(this))
{
    for (QTimer *timer : {&m_startTimer, &m_killTimer, &m_lostTimer, &m_drainTimer})
        timer->setSingleShot(true);
    connect(&m_startTimer, &QTimer::timeout, this, &ProgramUnderTest::limitPassed);
    connect(&m_killTimer, &QTimer::timeout, this, &ProgramUnderTest::kill);
    connect(&m_lostTimer, &QTimer::timeout, this, &ProgramUnderTest::agentLost);
    connect(&m_drainTimer, &QTimer::timeout, this, &ProgramUnderTest::closeStragglers);
    connect(&m_server, &QLocalServer::newConnection, this, &ProgramUnderTest::acceptCallers);
    connect(m_process, &QProcess::errorOccurred, this, &ProgramUnderTest::processFailed);
    connect(m_process, &QProcess::finished, this, &ProgramUnderTest::processFinished);
}

ProgramUnderTest::~ProgramUnderTest()
{
    m_process->disconnect(this);
    if (m_process->state() == QProcess::NotRunning)
        return;
    signalProgram(SIGKILL);
    m_process->waitForFinished(static_cast<int>(std::chrono::milliseconds(termLimit).count()));
}

void ProgramUnderTest::start(const LaunchOptions &options)
{
    m_options = options;
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_directory.isValid()) {
        Q_EMIT startFailed(m_directory.errorString());
        return;
    }
    if (!m_server.listen(m_directory.socketPath())) {
        Q_EMIT startFailed(QStringLiteral("cannot listen for the agent at %1: %2")
                               .arg(m_directory.socketPath(), m_server.errorString()));
        return;
    }
    prepareProcess(options);
    m_startTimer.start(options.startLimit);
    m_process->start(options.words.first(), options.words.mid(1));
    m_programId = m_process->processId();
}

void ProgramUnderTest::prepareProcess(const LaunchOptions &options)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = options.environment.cbegin(); it != options.environment.cend(); ++it)
        environment.insert(it.key(), it.value());
    appendOnce(&environment, QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vantle"), QLatin1Char(','));
    prepend(&environment, QStringLiteral("QT_PLUGIN_PATH"), m_installation.pluginRoot, QLatin1Char(':'));
    environment.insert(QStringLiteral("VANTLE_PREFIX"), m_installation.prefix);
    environment.insert(QLatin1String(Protocol::Variable::socket), m_server.fullServerName());
    environment.insert(QLatin1String(Protocol::Variable::token), QString::fromLatin1(m_token));
#ifdef VANTLE_SANITIZER_RUNTIME
    // An agent with sanitizers can only be loaded where their runtime came first.
    // Whatever the program leaks is its own affair.
    prepend(&environment, QStringLiteral("LD_PRELOAD"), QStringLiteral(VANTLE_SANITIZER_RUNTIME), QLatin1Char(':'));
    prepend(&environment, QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"), QLatin1Char(':'));
#endif
    m_process->setProcessEnvironment(environment);

    prepareStreams(options);
}

void ProgramUnderTest::prepareStreams(const LaunchOptions &options)
{
    if (!options.outputFile.isEmpty()) {
        m_process->setStandardInputFile(QProcess::nullDevice());
        m_process->setStandardOutputFile(options.outputFile, QIODevice::Append);
        m_process->setStandardErrorFile(options.outputFile, QIODevice::Append);
        m_process->setChildProcessModifier([] { ::setpgid(0, 0); });
        return;
    }
    m_process->setProcessChannelMode(QProcess::ForwardedChannels);
    // In its own process group the program would be stopped for reading from
    // the terminal; anything else may be read.
    if (::isatty(STDIN_FILENO))
        m_process->setStandardInputFile(QProcess::nullDevice());
    else
        m_process->setInputChannelMode(QProcess::ForwardedInputChannel);
    m_process->setChildProcessModifier([toError = options.standardOutputToError] {
        ::setpgid(0, 0);
        if (toError)
            ::dup2(STDERR_FILENO, STDOUT_FILENO);
    });
}

void ProgramUnderTest::end()
{
    m_endRequested = true;
    m_startTimer.stop();
    signalProgram(SIGTERM);
    m_killTimer.start(termLimit);
}

void ProgramUnderTest::kill()
{
    m_endRequested = true;
    signalProgram(SIGKILL);
}

void ProgramUnderTest::release()
{
    if (m_process->state() == QProcess::NotRunning)
        return;
    // A process object kills its process when it goes; this one has to stay,
    // to the very end of ours.
    static auto *const released = new QList<QProcess *>;
    m_process->disconnect(this);
    m_process->setParent(nullptr);
    released->append(m_process);
    m_process = new QProcess(this);
}

void ProgramUnderTest::acceptCallers()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        // What a process says about itself may be the number inside a container,
        // and must not be what we send signals to.
        const auto peer = Protocol::peerOf(socket->socketDescriptor());
        if (!peer || !peer->isSameUser) {
            delete socket;
            continue;
        }
        limitStrangers();
        auto *caller = new Connection(socket, this);
        caller->setMessageLimit(helloLimit);
        m_callers.append(caller);
        const auto process = static_cast<pid_t>(peer->process);
        caller->onRequest(Protocol::Method::hello,
                          [this, caller, process](const QJsonObject &params, const Responder &responder) {
                              answerHello(caller, process, params, responder);
                          });
        connect(caller, &Connection::disconnected, this, [this, caller] { callerGone(caller); });
        connect(caller, &Connection::messageRefused, this, [this, caller] {
            if (caller != m_connection)
                caller->close();
        });
    }
}

/// Makes room for one more: the oldest goes, as the agent is one that says its
/// hello at once.
void ProgramUnderTest::limitStrangers()
{
    QList<Connection *> strangers;
    for (Connection *caller : std::as_const(m_callers)) {
        if (caller != m_connection && caller->isOpen())
            strangers.append(caller);
    }
    if (strangers.size() >= mostStrangers)
        strangers.constFirst()->close();
}

void ProgramUnderTest::answerHello(Connection *caller, pid_t process, const QJsonObject &params,
                                   const Responder &responder)
{
    QString error;
    const auto hello = Hello::fromJson(params, &error);
    if (!hello) {
        reject(caller, responder, Protocol::InvalidParams, error);
    } else if (!Protocol::sameToken(hello->token.toUtf8(), m_token)) {
        reject(caller, responder, Protocol::Refused, QStringLiteral("the token is wrong"));
    } else if (m_connection == caller) {
        responder.fail(Protocol::InvalidRequest, QStringLiteral("this agent has said hello already"));
    } else if (m_agent) {
        reject(caller, responder, Protocol::Refused, QStringLiteral("another agent has called already"));
    } else if (hello->protocol != Protocol::protocolVersion) {
        const QString reason = QStringLiteral(
                                   "the agent speaks protocol %1, this tool speaks %2: they are of different "
                                   "installations")
                                   .arg(hello->protocol)
                                   .arg(Protocol::protocolVersion);
        reject(caller, responder, Protocol::Refused, reason);
        reportMissing(reason);
    } else {
        m_startTimer.stop();
        m_agent = hello;
        m_agentProcess = process;
        m_connection = caller;
        caller->setMessageLimit(Connection::defaultMessageLimit);
        responder.respond(m_options.settings.toJson());
        Q_EMIT agentReady();
    }
}

void ProgramUnderTest::reject(Connection *caller, const Responder &responder, int code, const QString &reason)
{
    responder.fail(code, reason);
    caller->close();
}

void ProgramUnderTest::callerGone(Connection *caller)
{
    m_callers.removeOne(caller);
    if (caller == m_connection) {
        m_connection = nullptr;
        m_lostTimer.start(lostDelay);
        // Nobody else has anything to say that the end would have to wait for.
        if (m_processFinished && !m_drainTimer.isActive())
            m_drainTimer.start(drainLimit);
    }
    caller->deleteLater();
    reportEndIfComplete();
}

void ProgramUnderTest::limitPassed()
{
    const QString diagnosis = diagnosisOfProcess(m_process->processId());
    reportMissing(QStringLiteral("the agent did not report from \"%1\" within %2. %3")
                      .arg(m_options.words.first(), Console::seconds(m_options.startLimit.count()),
                           diagnosis.isEmpty() ? likelyCauses(m_installation.plugin) : diagnosis));
}

void ProgramUnderTest::reportMissing(const QString &reason)
{
    m_startTimer.stop();
    Q_EMIT agentMissing(reason);
}

void ProgramUnderTest::processFailed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return;
    m_startTimer.stop();
    m_server.close();
    // Qt puts the name of the failed system call in front of the reason.
    const QString reason = m_process->errorString().section(QStringLiteral(": "), -1);
    Q_EMIT startFailed(QStringLiteral("cannot start \"%1\": %2. Give the full path of a program, or one that is found "
                                      "in PATH.")
                           .arg(m_options.words.first(), reason));
}

void ProgramUnderTest::processFinished()
{
    m_processFinished = true;
    m_startTimer.stop();
    // Its last words may still be on their way, even its very first ones.
    m_server.waitForNewConnection(0);
    acceptCallers();
    // An agent in another process goes on: the program was a script that
    // started it. What else keeps a connection open is a forgotten child.
    if (!agentRunsElsewhere()) {
        m_killTimer.stop();
        m_drainTimer.start(drainLimit);
    }
    reportEndIfComplete();
}

void ProgramUnderTest::closeStragglers()
{
    // Or the next one would hold the end up again.
    m_server.close();
    const QList<Connection *> callers = m_callers;
    for (Connection *caller : callers)
        caller->closeAfterInput();
}

void ProgramUnderTest::reportEndIfComplete()
{
    if (!m_processFinished || !m_callers.isEmpty() || m_endReported)
        return;
    m_endReported = true;
    m_lostTimer.stop();
    m_drainTimer.stop();
    m_server.close();
    Q_EMIT ended(howItEnded());
}

ProgramEnd ProgramUnderTest::howItEnded() const
{
    ProgramEnd end;
    end.requested = m_endRequested;
    end.number = m_process->exitCode();
    end.crashed = m_process->exitStatus() == QProcess::CrashExit;
    const bool ranInShell = m_agent && m_agentProcess != m_programId;
    if (ranInShell && !end.crashed && end.number > shellSignalBase && end.number <= shellSignalBase + lastSignal) {
        end.crashed = true;
        end.number -= shellSignalBase;
    }
    end.crashed = end.crashed && !end.requested;
    return end;
}

void ProgramUnderTest::signalProgram(int number)
{
    const auto process = static_cast<pid_t>(m_process->processId());
    if (process > 0) {
        // The whole group: the program may have been started by a script.
        if (::kill(-process, number) != 0)
            ::kill(process, number);
    } else if (agentRunsElsewhere()) {
        ::kill(m_agentProcess, number);
    }
}

bool ProgramUnderTest::agentRunsElsewhere() const
{
    return m_connection && m_agentProcess > 1 && m_agentProcess != m_programId;
}

} // namespace Vantle::Tool
