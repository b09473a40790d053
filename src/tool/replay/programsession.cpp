#include "tool/replay/programsession.h"

#include "tool/agentdiagnosis.h"
#include "tool/signalnames.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <algorithm>
#include <utility>

namespace Vantle::Tool::Replay {

using Protocol::LogMessage;
using Protocol::Reply;
using Protocol::Statement;

namespace {

// How long a program may take to close its windows when asked to, until it is
// ended by signals.
constexpr std::chrono::seconds quitLimit(5);

// The signals themselves are given five seconds by ProgramUnderTest.
constexpr std::chrono::seconds endLimit(10);

// Between two questions whether a long action is still being played.
constexpr std::chrono::milliseconds signOfLifeInterval(200);

QString secondsText(std::chrono::milliseconds time)
{
    return QStringLiteral("%1 s").arg(static_cast<double>((time.count() + 50) / 100) / 10.0);
}

} // namespace

ProgramSession::ProgramSession(const Installation &installation, QObject *parent)
    : QObject(parent)
    , m_installation(installation)
{
}

ProgramSession::~ProgramSession()
{
    drop();
}

QString ProgramSession::start(const LaunchOptions &options)
{
    finish();
    drop();
    m_crashedAtStart = false;
    m_program = std::make_unique<ProgramUnderTest>(m_installation);
    connect(m_program.get(), &ProgramUnderTest::agentReady, this, [this] {
        m_ready = true;
        listen();
        wake();
    });
    const auto fail = [this](const QString &reason) {
        m_failure = reason;
        wake();
    };
    connect(m_program.get(), &ProgramUnderTest::startFailed, this, fail);
    connect(m_program.get(), &ProgramUnderTest::agentMissing, this, fail);
    connect(m_program.get(), &ProgramUnderTest::agentLost, this, &ProgramSession::wake);
    connect(m_program.get(), &ProgramUnderTest::ended, this, [this](const ProgramEnd &end) {
        m_end = end;
        wake();
    });
    m_program->start(options);
    runUntil([this] { return m_ready || !m_failure.isEmpty() || m_end; }, options.startLimit + endLimit);
    if (m_ready && !m_end)
        return QString();

    QString reason = m_failure;
    m_crashedAtStart = m_end && m_end->crashed;
    if (m_crashedAtStart) {
        reason = crashAtStartText(options.words.first(), signalText(m_end->number));
    } else if (m_end) {
        reason = QStringLiteral("\"%1\" %2 before its agent reported. %3")
                     .arg(options.words.first(), endText(), likelyCauses(m_installation.plugin));
    } else if (m_stopped) {
        reason = QStringLiteral("stopped while \"%1\" was starting").arg(options.words.first());
    }
    drop();
    return reason;
}

void ProgramSession::listen()
{
    Protocol::Connection *agent = m_program->connection();
    agent->onNotification(Protocol::Method::acting, [this](const QJsonObject &) { m_isUnbegunCall = false; });
    agent->onNotification(Protocol::Method::statement, [this](const QJsonObject &params) {
        if (const auto statement = Statement::fromJson(params))
            Q_EMIT statementRecorded(*statement);
    });
    agent->onNotification(Protocol::Method::comment, [this](const QJsonObject &params) {
        if (const auto comment = Protocol::Comment::fromJson(params))
            Q_EMIT commentRecorded(comment->text);
    });
    agent->onNotification(Protocol::Method::log, [this](const QJsonObject &params) {
        if (const auto log = LogMessage::fromJson(params))
            Q_EMIT logged(log->level == LogMessage::Warning, log->message);
    });
    connect(agent, &Protocol::Connection::protocolError, this,
            [this](const QString &reason) { Q_EMIT logged(true, QStringLiteral("lost the agent: %1").arg(reason)); });
}

std::optional<Answer> ProgramSession::whyNoRequest()
{
    if (m_stopped)
        return Answer{Answer::Stopped, {}, {Protocol::InternalError, QStringLiteral("the replay was stopped")}};
    if (!m_program)
        return Answer{Answer::NoProgram, {}, {Protocol::Disconnected, noProgramText()}};
    if (m_end || !m_program->connection()) {
        waitForEnd(quitLimit);
        return Answer{Answer::Ended, {}, {Protocol::Disconnected, QStringLiteral("the program ") + endText()}};
    }
    return std::nullopt;
}

ProgramSession::Pending ProgramSession::send(const QString &method, const QJsonObject &params)
{
    // Shared with the handler, which may be called after its request was given up.
    const auto reply = std::make_shared<std::optional<Reply>>();
    if (!m_program->connection())
        return reply;
    if (method != Protocol::Method::ping)
        m_isUnbegunCall = method == Protocol::Method::call;
    const QPointer<ProgramSession> self(this);
    m_program->connection()->sendRequest(method, params, [reply, self](const Reply &answer) {
        *reply = answer;
        if (self)
            self->wake();
    });
    return reply;
}

Answer ProgramSession::answerFrom(const Pending &reply, const QString &whatIsWrong)
{
    if (m_stopped)
        return {Answer::Stopped, {}, {Protocol::InternalError, QStringLiteral("the replay was stopped")}};
    m_isOverdue = !reply->has_value();
    if (m_isOverdue)
        return {Answer::TimedOut, {}, {Protocol::InternalError, whatIsWrong}};
    if (!(*reply)->isError())
        return {Answer::Result, (*reply)->result, {}};
    int code = (*reply)->error->code;
    if (code != Protocol::Disconnected && code != Protocol::ProgramEnds)
        return {Answer::Refused, {}, *(*reply)->error};
    waitForEnd(quitLimit);
    if (m_isUnbegunCall)
        code = Protocol::ProgramEnds;
    return {Answer::Ended, {}, {code, QStringLiteral("the program ") + endText()}};
}

Answer ProgramSession::request(const QString &method, const QJsonObject &params, std::chrono::milliseconds limit)
{
    if (const auto obstacle = whyNoRequest())
        return *obstacle;
    const Pending reply = send(method, params);
    runUntil([&] { return reply->has_value(); }, limit);
    return answerFrom(reply, QStringLiteral("the program did not answer within %1").arg(secondsText(limit)));
}

Answer ProgramSession::request(const QString &method, const QJsonObject &params, std::chrono::milliseconds limit,
                               std::chrono::milliseconds patience)
{
    if (const auto obstacle = whyNoRequest())
        return *obstacle;
    const Pending reply = send(method, params);
    QElapsedTimer clock;
    clock.start();
    QString problem;
    limit = std::max(limit, signOfLifeInterval);
    while (!runUntil([&] { return reply->has_value(); }, limit) && !m_stopped) {
        problem = whyOverdue(reply, std::chrono::milliseconds(clock.elapsed()) + patience, patience);
        if (!problem.isEmpty())
            break;
        limit = signOfLifeInterval;
    }
    return answerFrom(reply, problem);
}

QString ProgramSession::whyOverdue(const Pending &reply, std::chrono::milliseconds waited,
                                   std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    const Pending life = send(Protocol::Method::ping, {});
    runUntil([&] { return reply->has_value() || life->has_value(); }, patience);
    if (reply->has_value() || m_stopped)
        return QString();
    const QString noAnswer = QStringLiteral("the program did not answer within %1: ").arg(secondsText(waited));
    if (!life->has_value())
        return noAnswer + QStringLiteral("its event loop hangs");
    if ((*life)->result.toObject().value(QLatin1String("playing")).toBool())
        return QString();
    // What was played has just come to its end, or something keeps the call
    // from coming back: a method, say, that shows a dialog and waits for it.
    runUntil([&] { return reply->has_value(); }, std::chrono::milliseconds(deadline.remainingTime()));
    return reply->has_value() ? QString()
                              : noAnswer + QStringLiteral("its event loop runs, but what was called has not come back");
}

bool ProgramSession::pause(std::chrono::milliseconds time)
{
    const bool hadProgram = isRunning();
    runUntil([&] { return hadProgram && m_end.has_value(); }, time);
    return !m_stopped && isRunning() == hadProgram;
}

bool ProgramSession::waitForEnd(std::chrono::milliseconds limit)
{
    return runUntil([this] { return m_end.has_value(); }, limit);
}

void ProgramSession::finish()
{
    if (!isRunning() || m_ending)
        return;
    m_ending = true;
    if (!m_stopped) {
        // A program that was about to end by itself gives no answer, or an
        // error, and its exit code is its own. Nor does one whose agent has
        // gone ahead of it.
        const Pending answer = send(Protocol::Method::quit, {});
        waitForEnd(quitLimit);
        m_askedToQuit = answer->has_value() && !(*answer)->isError();
    }
    if (!m_end) {
        m_program->end();
        // Also when the user is in a hurry: nothing is to be left behind.
        const bool wasStopped = std::exchange(m_stopped, false);
        runUntil([this] { return m_end.has_value(); }, endLimit);
        m_stopped = m_stopped || wasStopped;
    }
    m_ending = false;
}

void ProgramSession::stop()
{
    // A second time: no more patience with a program that is being ended.
    if (m_stopped && m_program)
        m_program->kill();
    m_stopped = true;
    if (m_ending && isRunning())
        m_program->kill();
    wake();
}

QString ProgramSession::noProgramText()
{
    return QStringLiteral("no program was started: put \"-- PROGRAM\" behind the scripts, or call startApplication "
                          "first");
}

QString ProgramSession::endText() const
{
    if (!m_end)
        return QStringLiteral("has lost its agent, but runs on");
    if (m_end->crashed)
        return QStringLiteral("ended with ") + signalText(m_end->number);
    return QStringLiteral("ended with exit code %1").arg(m_end->number);
}

std::optional<ProgramEnd> ProgramSession::ownEnd() const
{
    return m_end && !m_end->requested && !m_askedToQuit ? m_end : std::nullopt;
}

bool ProgramSession::diedBadly() const
{
    return m_end && !m_end->requested && (m_end->crashed || (m_end->number != 0 && !m_askedToQuit));
}

QString ProgramSession::description() const
{
    if (!m_program || !m_program->agent())
        return QString();
    const Protocol::Hello &hello = *m_program->agent();
    return QStringLiteral("%1, process %2, Qt %3, %4")
        .arg(hello.program, QString::number(hello.pid), hello.qtVersion, hello.platform);
}

void ProgramSession::wake()
{
    for (QEventLoop *loop : std::as_const(m_loops))
        loop->quit();
}

bool ProgramSession::runUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    m_loops.append(&loop);
    while (!done() && !m_stopped && !deadline.hasExpired()) {
        timer.start(std::max(std::chrono::milliseconds(1), std::chrono::milliseconds(deadline.remainingTime())));
        loop.exec();
    }
    m_loops.removeOne(&loop);
    return done();
}

void ProgramSession::drop()
{
    m_program.reset();
    m_end.reset();
    m_failure.clear();
    m_ready = false;
    m_askedToQuit = false;
}

} // namespace Vantle::Tool::Replay
