#include "tool/inspect/inspectsession.h"

#include "protocol/objectmessages.h"
#include "tool/agentdiagnosis.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/inspect/inspecttext.h"
#include "tool/signalnames.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace Vantle::Tool::Inspect {

using Protocol::Reply;
namespace Method = Protocol::Method;

namespace {

// How long the program may take to end by itself once it is asked to.
constexpr std::chrono::seconds quitLimit(3);

template<typename Record>
QList<Record> recordsIn(const QJsonObject &result, const QString &key)
{
    QList<Record> records;
    const QJsonArray array = result.value(key).toArray();
    for (const QJsonValue &value : array) {
        QString error;
        if (const auto record = Record::fromJson(value.toObject(), &error))
            records.append(*record);
        else
            Console::say(QStringLiteral("a part of the agent's answer was not understood: %1").arg(error));
    }
    return records;
}

qint64 milliseconds(std::chrono::milliseconds time)
{
    return time.count();
}

} // namespace

InspectSession::InspectSession(const InspectOptions &options, const Installation &installation, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_installation(installation)
    , m_program(installation)
{
    m_quitTimer.setSingleShot(true);
    connect(&m_quitTimer, &QTimer::timeout, &m_program, &ProgramUnderTest::end);
    connect(&m_signals, &SignalWatcher::stopRequested, this, &InspectSession::stopRequested);
    connect(&m_program, &ProgramUnderTest::agentReady, this, &InspectSession::beginLooking);
    connect(&m_program, &ProgramUnderTest::startFailed, this, [this](const QString &reason) {
        Console::say(reason);
        failWith(Failed);
        leave();
    });
    connect(&m_program, &ProgramUnderTest::agentMissing, this, &InspectSession::giveUp);
    connect(&m_program, &ProgramUnderTest::agentLost, this,
            [this] { giveUp(QStringLiteral("the agent has gone while the program runs on")); });
    connect(&m_program, &ProgramUnderTest::ended, this, &InspectSession::programEnded);
}

int InspectSession::run()
{
    // From the loop, since leaving it has to be possible at once.
    QMetaObject::invokeMethod(this, &InspectSession::startProgram, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

void InspectSession::startProgram()
{
    LaunchOptions launch = m_options.launch;
    launch.standardOutputToError = true;
    m_program.start(launch);
}

void InspectSession::beginLooking()
{
    if (m_state != State::Starting)
        return;
    m_state = State::Looking;
    Protocol::Connection *const agent = m_program.connection();
    agent->onNotification(Method::log, [this](const QJsonObject &params) { takeLog(params); });
    connect(agent, &Protocol::Connection::protocolError, this,
            [](const QString &reason) { Console::say(QStringLiteral("lost the agent: %1").arg(reason)); });
    if (m_options.subject == InspectOptions::Functions)
        lookAtFunctions();
    else
        waitForWindow();
}

void InspectSession::waitForWindow()
{
    const QJsonObject anyWindow{{QStringLiteral("name"), QStringLiteral(":visible")},
                                {QStringLiteral("ready"), true},
                                {QStringLiteral("timeout"), milliseconds(m_options.limit)}};
    m_program.connection()->sendRequest(Method::find, anyWindow, [this](const Reply &reply) {
        if (m_state != State::Looking)
            return;
        if (!reply.isError()) {
            // A program that is never at rest is looked at as it is.
            request(Method::settle, {}, [this](const QJsonObject &) { look(); });
        } else if (reply.error->code != Protocol::Disconnected) {
            giveUp(QStringLiteral("\"%1\" showed no window within %2. \"--timeout\" gives it more time")
                       .arg(m_options.launch.words.first(), Console::seconds(milliseconds(m_options.limit))));
        }
    });
}

void InspectSession::look()
{
    switch (m_options.subject) {
    case InspectOptions::Tree: lookAtTree(); break;
    case InspectOptions::OneObject: lookAtObject(); break;
    case InspectOptions::Functions: lookAtFunctions(); break;
    case InspectOptions::Names: lookAtNames(); break;
    }
}

void InspectSession::lookAtTree()
{
    request(Method::tree, {}, [this](const QJsonObject &result) {
        print(treeText(recordsIn<Protocol::TreeNode>(result, QStringLiteral("windows"))), result);
        endProgram();
    });
}

void InspectSession::lookAtObject()
{
    const QJsonObject wanted{{QStringLiteral("name"), m_options.name},
                             {QStringLiteral("timeout"), milliseconds(m_options.limit)}};
    request(Method::find, wanted, [this](const QJsonObject &found) {
        const int handle = found.value(QStringLiteral("object")).toInt();
        request(Method::describe, {{QStringLiteral("object"), handle}},
                [this, handle](const QJsonObject &description) { lookAtProperties(handle, description); });
    });
}

void InspectSession::lookAtProperties(int handle, const QJsonObject &description)
{
    request(Method::properties, {{QStringLiteral("object"), handle}}, [this, description](const QJsonObject &result) {
        const QJsonObject properties = result.value(QStringLiteral("properties")).toObject();
        QJsonObject json = description;
        json.insert(QStringLiteral("properties"), properties);
        print(objectText(Protocol::Description::fromJson(description).value_or(Protocol::Description()), properties),
              json);
        endProgram();
    });
}

void InspectSession::lookAtFunctions()
{
    request(Method::functions, {}, [this](const QJsonObject &result) {
        print(functionsText(recordsIn<Protocol::FunctionDescription>(result, QStringLiteral("functions"))), result);
        endProgram();
    });
}

void InspectSession::lookAtNames()
{
    request(Method::roundTrip, {}, [this](const QJsonObject &result) {
        print(namesText(result), result);
        if (!result.value(QStringLiteral("failures")).toArray().isEmpty())
            failWith(ChecksFailed);
        endProgram();
    });
}

void InspectSession::request(const QString &method, const QJsonObject &params, ResultHandler handler)
{
    if (!m_program.connection())
        return;
    m_program.connection()->sendRequest(method, params, [this, method, handler](const Reply &reply) {
        if (m_state != State::Looking)
            return;
        if (!reply.isError())
            handler(reply.result.toObject());
        else if (reply.error->code == Protocol::ObjectNotFound)
            objectNotFound(*reply.error);
        // When the program has ended instead, programEnded() says how.
        else if (reply.error->code != Protocol::Disconnected)
            requestFailed(method, *reply.error);
    });
}

void InspectSession::objectNotFound(const Protocol::Error &error)
{
    Console::say(error.message);
    const QJsonObject data = error.data.toObject();
    const auto failure = Protocol::NotFound::fromJson(data);
    print(failure ? notFoundText(*failure) : QString(), data);
    failWith(ChecksFailed);
    endProgram();
}

void InspectSession::requestFailed(const QString &method, const Protocol::Error &error)
{
    giveUp(QStringLiteral("the agent failed to answer \"%1\": %2").arg(method, error.message));
}

void InspectSession::print(const QString &text, const QJsonObject &json)
{
    const QString output = m_options.asJson ? QString::fromUtf8(QJsonDocument(json).toJson()) : Console::visible(text);
    if (Console::print(output))
        return;
    Console::say(QStringLiteral("cannot write to standard output"));
    failWith(Failed);
}

void InspectSession::takeLog(const QJsonObject &params)
{
    const auto log = Protocol::LogMessage::fromJson(params);
    if (log && log->level == Protocol::LogMessage::Warning)
        Console::say(QStringLiteral("warning: ") + log->message);
}

void InspectSession::stopRequested()
{
    if (m_state == State::Ending) {
        // The second request: the user is in a hurry.
        m_program.kill();
        leave();
        return;
    }
    giveUp(QStringLiteral("stopped before there was anything to show"));
}

void InspectSession::giveUp(const QString &reason)
{
    if (m_state == State::Ending)
        return;
    Console::say(reason);
    failWith(Failed);
    m_state = State::Ending;
    m_program.end();
}

void InspectSession::endProgram()
{
    m_state = State::Ending;
    if (!m_program.connection())
        return;
    m_program.connection()->sendRequest(Method::quit, {}, nullptr);
    m_quitTimer.start(quitLimit);
}

void InspectSession::programEnded(const ProgramEnd &end)
{
    m_quitTimer.stop();
    const QString &program = m_options.launch.words.first();
    if (end.crashed) {
        Console::say(m_state == State::Starting
                         ? crashAtStartText(program, signalText(end.number))
                         : QStringLiteral("\"%1\" ended with %2").arg(program, signalText(end.number)));
        failWith(ProgramCrashed);
    } else if (m_state == State::Starting) {
        Console::say(QStringLiteral("\"%1\" ended with exit code %2 before the agent reported. %3")
                         .arg(program, QString::number(end.number), likelyCauses(m_installation.plugin)));
        failWith(Failed);
    } else if (m_state == State::Looking) {
        Console::say(QStringLiteral("\"%1\" ended with exit code %2 before there was anything to show")
                         .arg(program, QString::number(end.number)));
        failWith(Failed);
    }
    leave();
}

void InspectSession::failWith(int exitCode)
{
    if (m_exitCode == Success)
        m_exitCode = exitCode;
}

void InspectSession::leave()
{
    QCoreApplication::exit(m_exitCode);
}

} // namespace Vantle::Tool::Inspect
