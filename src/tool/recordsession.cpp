#include "tool/recordsession.h"

#include "protocol/objectmessages.h"
#include "tool/agentdiagnosis.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/freshsettings.h"
#include "tool/signalnames.h"
#include "tool/statementtext.h"
#include "tool/stringliteral.h"
#include "tool/treefile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <utility>

namespace Vantle::Tool {

using Protocol::LogMessage;
using Protocol::Reply;
using Protocol::Statement;

namespace {

constexpr std::chrono::seconds stopLimit(3);

// What moves has moved in this time.
constexpr std::chrono::milliseconds snapshotInterval(300);

LaunchOptions launchOptions(const RecordOptions &options, const QTemporaryDir &settings)
{
    LaunchOptions launch = options.launch;
    launch.settings.record = true;
    launch.settings.digests = options.verify;
    if (options.freshSettings)
        launch.environment.insert(freshSettings(settings.path()));
    launch.standardOutputToError = options.file.isEmpty();
    return launch;
}

} // namespace

RecordSession::RecordSession(const RecordOptions &options, const Installation &installation, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_installation(installation)
    , m_program(installation)
{
    m_stopTimer.setSingleShot(true);
    connect(&m_stopTimer, &QTimer::timeout, this, &RecordSession::stopOverdue);
    connect(&m_signals, &SignalWatcher::stopRequested, this, &RecordSession::stopRequested);
    connect(&m_program, &ProgramUnderTest::agentReady, this, &RecordSession::beginRecording);
    connect(&m_program, &ProgramUnderTest::startFailed, this, [this](const QString &reason) {
        Console::say(reason);
        failWith(Failed);
        leave();
    });
    connect(&m_program, &ProgramUnderTest::agentMissing, this, &RecordSession::giveUp);
    connect(&m_program, &ProgramUnderTest::agentLost, this, [] {
        Console::say(QStringLiteral("the agent has gone while the program runs on; nothing more will be recorded"));
    });
    connect(&m_program, &ProgramUnderTest::ended, this, &RecordSession::programEnded);
}

int RecordSession::run()
{
    if (!m_options.file.isEmpty() && !m_script.openFile(m_options.file)) {
        Console::say(m_script.errorString());
        return Failed;
    }
    // From the loop, since leaving it has to be possible at once.
    QMetaObject::invokeMethod(this, &RecordSession::startProgram, Qt::QueuedConnection);
    const int code = QCoreApplication::exec();
    gatherEvidence();
    return code;
}

void RecordSession::startProgram()
{
    m_program.start(launchOptions(m_options, m_settings));
}

void RecordSession::beginRecording()
{
    if (m_state != State::Starting)
        return;
    m_state = State::Recording;
    Protocol::Connection *agent = m_program.connection();
    agent->onNotification(Protocol::Method::statement, [this](const QJsonObject &params) { takeStatement(params); });
    agent->onNotification(Protocol::Method::comment, [this](const QJsonObject &params) { takeComment(params); });
    agent->onNotification(Protocol::Method::pending, [this](const QJsonObject &params) { takePending(params); });
    agent->onNotification(Protocol::Method::digest, [this](const QJsonObject &params) { takeDigest(params); });
    agent->onNotification(Protocol::Method::log, [this](const QJsonObject &params) { takeLog(params); });
    connect(agent, &Protocol::Connection::protocolError, this,
            [](const QString &reason) { Console::say(QStringLiteral("lost the agent: %1").arg(reason)); });
    connect(agent, &Protocol::Connection::messageRefused, this, [](const QString &reason) {
        Console::say(QStringLiteral("a message of the agent was not understood: %1").arg(reason));
    });

    m_began = true;
    m_script.begin(m_options.launch.words, QDateTime::currentDateTime());
    const Protocol::Hello hello = *m_program.agent();
    Console::say(QStringLiteral("recording %1 (process %2, Qt %3); Ctrl-C ends the recording")
                     .arg(hello.program, QString::number(hello.pid), hello.qtVersion));
    reportWriteFailure();
}

void RecordSession::takeStatement(const QJsonObject &params)
{
    QString error;
    const auto statement = Statement::fromJson(params, &error);
    m_pending.clear();
    if (statement)
        addStatement(*statement);
    else
        Console::say(QStringLiteral("a statement of the agent was not understood: %1").arg(error));
}

void RecordSession::addStatement(const Statement &statement)
{
    if (m_script.add(statement))
        m_statements.append({m_script.lineCount(), *statementText(statement), {}});
    else
        Console::say(QStringLiteral("a statement calls \"%1\", which is no function's name").arg(statement.function));
    scheduleSynchronisation();
    reportWriteFailure();
}

void RecordSession::takeDigest(const QJsonObject &params)
{
    const auto digest = Protocol::Digest::fromJson(params);
    if (digest && !m_statements.isEmpty())
        m_statements.last().digests.append(digest->value);
}

void RecordSession::takeComment(const QJsonObject &params)
{
    QString error;
    const auto comment = Protocol::Comment::fromJson(params, &error);
    if (!comment) {
        Console::say(QStringLiteral("a comment of the agent was not understood: %1").arg(error));
        return;
    }
    m_script.addComment(comment->text);
    // The script itself is on the terminal if it goes to no file, yet that
    // may be a pipe.
    Console::say(QStringLiteral("not recorded: %1").arg(plainLines(comment->text).join(QLatin1String("; "))));
    scheduleSynchronisation();
    reportWriteFailure();
}

void RecordSession::takePending(const QJsonObject &params)
{
    QString error;
    const auto pending = Protocol::Pending::fromJson(params, &error);
    if (pending)
        m_pending = pending->statements;
    else
        Console::say(QStringLiteral("what is pending was not understood: %1").arg(error));
}

/// The last actions in a program that has come to its end, or to a standstill,
/// ahead of its last words. One that ends properly has sent them as statements.
void RecordSession::addPending()
{
    const QList<Statement> statements = std::exchange(m_pending, {});
    for (const Statement &statement : statements)
        addStatement(statement);
    if (statements.size() == 1)
        m_script.addComment(QStringLiteral("This was still under way when the program ended."));
    else if (!statements.isEmpty())
        m_script.addComment(
            QStringLiteral("These %1 were still under way when the program ended.").arg(statements.size()));
}

void RecordSession::scheduleSynchronisation()
{
    // Once for all statements that came together: the disk is slow.
    if (std::exchange(m_synchronisationScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_synchronisationScheduled = false;
            m_script.synchronise();
            reportWriteFailure();
        },
        Qt::QueuedConnection);
}

void RecordSession::takeLog(const QJsonObject &params)
{
    const auto log = LogMessage::fromJson(params);
    if (!log)
        return;
    Console::say(log->level == LogMessage::Warning ? QStringLiteral("warning: ") + log->message : log->message);
}

void RecordSession::stopRequested()
{
    switch (m_state) {
    case State::Starting:
        Console::say(QStringLiteral("stopped before the recording began"));
        m_state = State::Ending;
        m_program.end();
        break;
    case State::Recording: stopRecording(); break;
    case State::Stopping:
    case State::Ending:
        // The second request: the user is in a hurry.
        if (m_isSavingTree)
            giveTreeUp(QStringLiteral("the recording was stopped again"));
        m_script.end(QStringLiteral("The recording was stopped; the last statements may be missing."));
        if (m_options.keepRunning)
            m_program.release();
        else
            m_program.kill();
        leave();
        break;
    }
}

void RecordSession::stopRecording()
{
    if (!m_program.connection()) {
        recordingStopped();
        return;
    }
    m_state = State::Stopping;
    m_stopTimer.start(stopLimit);
    m_program.connection()->sendRequest(Protocol::Method::stopRecording, {}, [this](const Reply &reply) {
        if (m_state != State::Stopping || !m_stopTimer.isActive())
            return;
        // When the program has ended instead, programEnded() says how.
        if (reply.isError() && reply.error->code == Protocol::Disconnected)
            return;
        if (reply.isError())
            Console::say(
                QStringLiteral("the agent could not end the recording properly: %1").arg(reply.error->message));
        if (!m_options.treeFile.isEmpty())
            saveTree();
        else
            takeSnapshots();
    });
}

void RecordSession::stopOverdue()
{
    const auto limit = [](std::chrono::milliseconds time) { return Console::seconds(time.count()); };
    if (m_isSavingTree)
        giveTreeUp(QStringLiteral("the program did not tell its objects within %1").arg(limit(treeLimit)));
    else if (m_isTakingSnapshot)
        Console::say(QStringLiteral("the program did not tell what there is within %1").arg(limit(treeLimit)));
    else
        Console::say(QStringLiteral("the program did not answer within %1; the last statements may be missing")
                         .arg(limit(stopLimit)));
    if (!m_isSavingTree && !m_isTakingSnapshot)
        addPending();
    if (!m_isSavingTree && !m_options.treeFile.isEmpty())
        giveTreeUp(QStringLiteral("the program is too busy to tell its objects"));
    recordingStopped();
}

void RecordSession::giveTreeUp(const QString &reason)
{
    Console::say(QStringLiteral("%1; %2 is not written").arg(reason, m_options.treeFile));
    failWith(Failed);
}

void RecordSession::saveTree()
{
    m_isSavingTree = true;
    m_stopTimer.start(treeLimit);
    m_program.connection()->sendRequest(Protocol::Method::tree, {}, [this](const Reply &reply) {
        if (m_state != State::Stopping || !m_stopTimer.isActive())
            return;
        // When the program has ended instead, programEnded() says how.
        if (reply.isError() && reply.error->code == Protocol::Disconnected)
            return;
        const QString problem = reply.isError()
            ? QStringLiteral("the agent could not tell the objects: %1").arg(reply.error->message)
            : writeTreeFile(m_options.treeFile, reply.result.toObject());
        if (!problem.isEmpty()) {
            Console::say(problem);
            failWith(Failed);
        }
        takeSnapshots();
    });
}

/// The state that a replay has to come to, once it has settled; and again after a
/// moment, since what has changed then does so by itself.
void RecordSession::takeSnapshots()
{
    m_isSavingTree = false;
    if (!m_options.verify) {
        recordingStopped();
        return;
    }
    m_isTakingSnapshot = true;
    m_stopTimer.start(treeLimit);
    askForSnapshot([this](const QJsonObject &first) {
        m_snapshot = first;
        QTimer::singleShot(snapshotInterval, this, [this] {
            askForSnapshot([this](const QJsonObject &second) {
                m_laterSnapshot = second;
                recordingStopped();
            });
        });
    });
}

void RecordSession::askForSnapshot(const std::function<void(const QJsonObject &)> &take)
{
    // When the program ends meanwhile, programEnded() says how.
    const auto isOver = [this](const Reply &reply) {
        const bool hasEnded = reply.isError() && reply.error->code == Protocol::Disconnected;
        return m_state != State::Stopping || !m_stopTimer.isActive() || hasEnded || !m_program.connection();
    };
    if (!m_program.connection())
        return;
    m_program.connection()->sendRequest(Protocol::Method::settle, {}, [this, isOver, take](const Reply &settled) {
        if (isOver(settled))
            return;
        m_program.connection()->sendRequest(Protocol::Method::snapshot, {}, [isOver, take](const Reply &reply) {
            if (isOver(reply))
                return;
            if (reply.isError())
                Console::say(QStringLiteral("the agent could not tell what there is: %1").arg(reply.error->message));
            take(reply.result.toObject());
        });
    });
}

/// Nothing if the recording did not come to a proper end.
void RecordSession::gatherEvidence()
{
    if (m_began && (m_ownEnd || !m_snapshot.isEmpty()))
        m_evidence = Verify::Evidence{m_script.text(), m_statements, m_snapshot, m_laterSnapshot, m_ownEnd};
}

void RecordSession::recordingStopped()
{
    m_stopTimer.stop();
    m_isSavingTree = false;
    m_isTakingSnapshot = false;
    m_state = State::Ending;
    m_script.end(QStringLiteral("The recording was stopped."));
    reportWriteFailure();
    if (m_options.keepRunning) {
        m_program.release();
        leave();
    } else {
        m_program.end();
    }
}

void RecordSession::giveUp(const QString &reason)
{
    Console::say(reason);
    failWith(Failed);
    m_state = State::Ending;
    m_program.end();
}

void RecordSession::programEnded(const ProgramEnd &end)
{
    m_stopTimer.stop();
    if (!end.requested)
        m_ownEnd = end;
    if (m_began)
        reportEndOfRecording(end);
    else if (m_state == State::Starting)
        reportEndBeforeRecording(end);
    if (m_isSavingTree)
        giveTreeUp(QStringLiteral("the program has ended ahead of its answer"));
    leave();
}

void RecordSession::reportEndBeforeRecording(const ProgramEnd &end)
{
    const QString program = m_options.launch.words.first();
    if (end.crashed)
        Console::say(crashAtStartText(program, signalText(end.number)));
    else
        Console::say(QStringLiteral("\"%1\" ended with exit code %2 before the agent reported. %3")
                         .arg(program)
                         .arg(end.number)
                         .arg(likelyCauses(m_installation.plugin)));
    failWith(end.crashed ? ProgramCrashed : Failed);
}

void RecordSession::reportEndOfRecording(const ProgramEnd &end)
{
    if (!end.requested)
        addPending();
    if (end.crashed) {
        const QString how = QStringLiteral("The program ended with %1; everything recorded up to then is above.");
        m_script.end(how.arg(signalText(end.number)));
        Console::say(QStringLiteral("the program ended with %1").arg(signalText(end.number)));
        failWith(ProgramCrashed);
    } else if (!end.requested) {
        m_script.end(QStringLiteral("The program ended with exit code %1.").arg(end.number));
        if (end.number != 0)
            Console::say(QStringLiteral("the program ended with exit code %1").arg(end.number));
    }
    reportWriteFailure();
}

void RecordSession::reportWriteFailure()
{
    if (m_script.errorString().isEmpty() || m_writeFailureReported)
        return;
    m_writeFailureReported = true;
    Console::say(m_script.errorString());
    failWith(Failed);
}

void RecordSession::failWith(int exitCode)
{
    if (m_exitCode == Success)
        m_exitCode = exitCode;
}

void RecordSession::leave()
{
    QCoreApplication::exit(m_exitCode);
}

} // namespace Vantle::Tool
