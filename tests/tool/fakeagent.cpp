// Plays an agent: does what its arguments say, one after the other.
//
//   hello               calls the tool and waits until it has been accepted
//   token:TEXT          says TEXT instead of the right token in its hello
//   protocol:N          says that it speaks protocol N in its hello
//   refused             as hello, but expects to be refused, and goes on
//   statement:NAME      sends the statement NAME("object")
//   bad-statement       sends a statement that lacks its fields
//   comment:TEXT        sends a comment
//   digest:TEXT         sends a digest
//   starts:FILE         adds a letter to FILE, and from then on tells the number of
//                       its letters as the value of an object in each snapshot
//   pending:N,N,...     sends the statements N("object") as pending; none if empty
//   function:NAME       sends a statement with NAME as it is
//   flood:N             sends N statements type("object", "0"), "1", ...
//   log:LEVEL:TEXT      sends a line for the log
//   raw:TEXT            sends TEXT as a line of its own
//   half:TEXT           sends TEXT without the end of the line
//   ping                sends a request that the tool does not know
//   hello-again         sends a second hello with wrong content
//   disconnect          closes the connection
//   slow-stop           at "stopRecording" never answers
//   refuse-stop         at "stopRecording" answers with an error
//   crash-stop          at "stopRecording" crashes
//   answer:METHOD:JSON  ahead of hello: answers requests for METHOD with JSON
//   error:METHOD:JSON   ahead of hello: answers them with the error JSON
//   late:METHOD:MS      ahead of hello: answers them MS milliseconds later
//   silent:METHOD       ahead of hello: prints "asked for METHOD" and never answers
//   crash-at:METHOD     ahead of hello: crashes at them
//   end-at:METHOD       ahead of hello: answers them and exits
//   print:TEXT          prints a line
//   copy-input          prints its standard input
//   environment:FILE    writes its environment, a variable a line
//   pid:FILE            writes its process id
//   ignore-term         is not ended by SIGTERM
//   orphan:FILE         when the tool goes, writes FILE and exits
//   leave-child:FILE    leaves a child behind that holds the connection open,
//                       until FILE is there
//   until:FILE          waits until FILE is there
//   wait                waits to be ended
//   exit:N, signal:N    ends
//
// A "stopRecording" is answered after one more statement, "pending".

#include "protocol/connection.h"
#include "protocol/endpoint.h"
#include "protocol/messages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QSaveFile>
#include <QtCore/QTimer>
#include <QtNetwork/QLocalSocket>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include <unistd.h>

extern char **environ;

using namespace Vantle::Protocol;

namespace {

class FakeAgent
{
public:
    void play(const QString &action);

private:
    void connectToTool();
    void sayHello(bool expectRefusal);
    void sendStatement(const QString &function, const QString &text = QString());
    void answerStop(const Responder &responder);
    void becomeOrphan(const QString &file);
    bool playAtRequest(const QString &action, const QString &value);

    QHash<QString, Connection::RequestHandler> m_handlers;
    QLocalSocket *m_socket = nullptr;
    Connection *m_connection = nullptr;
    Hello m_hello;
    QString m_atStop;
    bool m_tokenGiven = false;
};

void writeFile(const QString &name, const QByteArray &content)
{
    // Whole or not at all: somebody waits for it.
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        std::_Exit(98);
}

void runUntil(const std::function<bool()> &condition)
{
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (condition())
            loop.quit();
    });
    timer.start(2);
    loop.exec();
}

[[noreturn]] void dieBy(int number)
{
    std::signal(number, SIG_DFL);
    std::raise(number);
    std::_Exit(99);
}

void FakeAgent::connectToTool()
{
    m_socket = new QLocalSocket;
    m_socket->connectToServer(qEnvironmentVariable(Variable::socket));
    if (!m_socket->waitForConnected(5000))
        std::_Exit(97);
    m_connection = new Connection(m_socket);
    m_connection->onRequest(Method::stopRecording,
                            [this](const QJsonObject &, const Responder &responder) { answerStop(responder); });
    for (auto handler = m_handlers.cbegin(); handler != m_handlers.cend(); ++handler)
        m_connection->onRequest(handler.key(), *handler);
}

void FakeAgent::sayHello(bool expectRefusal)
{
    connectToTool();
    if (!m_tokenGiven)
        m_hello.token = qEnvironmentVariable(Variable::token);
    m_hello.version = QStringLiteral("0.1.0");
    m_hello.pid = QCoreApplication::applicationPid();
    m_hello.program = QStringLiteral("fake program");
    m_hello.qtVersion = QStringLiteral("6.4.2");
    m_hello.platform = QStringLiteral("none");
    std::optional<Reply> answer;
    m_connection->sendRequest(Method::hello, m_hello.toJson(), [&](const Reply &reply) { answer = reply; });
    runUntil([&] { return answer.has_value(); });
    if (answer->isError() != expectRefusal)
        std::_Exit(96);
    if (expectRefusal)
        runUntil([&] { return !m_connection->isOpen(); });
    else if (!HelloResult::fromJson(answer->result.toObject()))
        std::_Exit(95);
    std::printf("settings %s\n",
                answer->isError()
                    ? qPrintable(answer->error->message)
                    : QJsonDocument(answer->result.toObject()).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

void FakeAgent::sendStatement(const QString &function, const QString &text)
{
    Statement statement{function, QStringLiteral("object"), {}, QStringLiteral("12:00:00.000")};
    if (!text.isNull())
        statement.arguments.append({QStringLiteral("text"), QStringLiteral("QString"), text});
    m_connection->notify(Method::statement, statement.toJson());
}

void FakeAgent::answerStop(const Responder &responder)
{
    if (m_atStop == QLatin1String("slow-stop")) {
        static QList<Responder> kept;
        kept.append(responder);
    } else if (m_atStop == QLatin1String("refuse-stop")) {
        responder.fail(InternalError, QStringLiteral("no idea how"));
    } else if (m_atStop == QLatin1String("crash-stop")) {
        dieBy(SIGSEGV);
    } else {
        sendStatement(QStringLiteral("pending"));
        responder.respond();
    }
}

void FakeAgent::becomeOrphan(const QString &file)
{
    QObject::connect(m_connection, &Connection::disconnected, m_connection, [file] {
        writeFile(file, "orphan\n");
        std::_Exit(0);
    });
}

void leaveChild(const QString &file)
{
    if (::fork() != 0)
        return;
    // Nor does it outlive the directory of its test.
    while (!QFile::exists(file) && QFile::exists(QFileInfo(file).path()))
        ::usleep(2000);
    std::_Exit(0);
}

QByteArray environmentText()
{
    QByteArray text;
    for (char **entry = environ; *entry; ++entry)
        text += QByteArray(*entry) + '\n';
    return text;
}

/// What is to happen at a request. False if \p action says nothing about that.
bool FakeAgent::playAtRequest(const QString &action, const QString &value)
{
    const QString method = value.section(QLatin1Char(':'), 0, 0);
    const QJsonObject json = QJsonDocument::fromJson(value.section(QLatin1Char(':'), 1).toUtf8()).object();
    if (action == QLatin1String("answer")) {
        m_handlers[method] = [json](const QJsonObject &, const Responder &responder) { responder.respond(json); };
    } else if (action == QLatin1String("error")) {
        m_handlers[method] = [json](const QJsonObject &, const Responder &responder) {
            responder.fail(json.value(QStringLiteral("code")).toInt(), json.value(QStringLiteral("message")).toString(),
                           json.value(QStringLiteral("data")));
        };
    } else if (action == QLatin1String("late")) {
        const int delay = value.section(QLatin1Char(':'), 1).toInt();
        m_handlers[method] = [delay](const QJsonObject &, const Responder &responder) {
            QTimer::singleShot(delay, qApp, [responder] { responder.respond(); });
        };
    } else if (action == QLatin1String("silent")) {
        m_handlers[method] = [method](const QJsonObject &, const Responder &responder) {
            static QList<Responder> kept;
            kept.append(responder);
            std::printf("asked for %s\n", qPrintable(method));
            std::fflush(stdout);
        };
    } else if (action == QLatin1String("crash-at")) {
        m_handlers[method] = [](const QJsonObject &, const Responder &) { dieBy(SIGSEGV); };
    } else if (action == QLatin1String("end-at")) {
        m_handlers[method] = [](const QJsonObject &, const Responder &responder) {
            responder.respond();
            std::_Exit(0);
        };
    } else {
        return false;
    }
    return true;
}

void FakeAgent::play(const QString &action)
{
    const QString name = action.section(QLatin1Char(':'), 0, 0);
    const QString value = action.section(QLatin1Char(':'), 1);
    const auto is = [&](const char *expected) { return name == QLatin1String(expected); };
    if (playAtRequest(name, value))
        return;
    if (is("hello") || is("refused")) {
        sayHello(is("refused"));
    } else if (is("token")) {
        m_hello.token = value;
        m_tokenGiven = true;
    } else if (is("protocol")) {
        m_hello.protocol = value.toInt();
    } else if (is("statement") || is("function")) {
        sendStatement(value);
    } else if (is("bad-statement")) {
        m_connection->notify(Method::statement, {{QStringLiteral("function"), 7}});
    } else if (is("comment")) {
        m_connection->notify(Method::comment, Comment{value, QStringLiteral("12:00:00.000")}.toJson());
    } else if (is("digest")) {
        m_connection->notify(Method::digest, Digest{value, 1}.toJson());
    } else if (is("starts")) {
        QFile file(value);
        if (!file.open(QIODevice::Append) || file.write("x") != 1)
            std::_Exit(98);
        file.close();
        const QString number = QString::number(file.size());
        m_handlers[Method::snapshot] = [number](const QJsonObject &, const Responder &responder) {
            const QJsonObject object{{QStringLiteral("name"), QStringLiteral("Main")},
                                     {QStringLiteral("class"), QStringLiteral("Main")},
                                     {QStringLiteral("values"), QJsonObject{{QStringLiteral("start"), number}}}};
            responder.respond(QJsonObject{{QStringLiteral("objects"), QJsonArray{object}}});
        };
    } else if (is("pending")) {
        Pending pending;
        const QStringList functions = value.split(QLatin1Char(','), Qt::SkipEmptyParts);
        for (const QString &function : functions)
            pending.statements.append({function, QStringLiteral("object"), {}, QStringLiteral("12:00:00.000")});
        m_connection->notify(Method::pending, pending.toJson());
        m_connection->waitForSent(std::chrono::seconds(5));
    } else if (is("flood")) {
        for (int i = 0; i < value.toInt(); ++i)
            sendStatement(QStringLiteral("type"), QString::number(i));
        if (!m_connection->waitForSent(std::chrono::seconds(20)))
            std::_Exit(92);
    } else if (is("log")) {
        m_connection->notify(Method::log,
                             {{QStringLiteral("level"), value.section(QLatin1Char(':'), 0, 0)},
                              {QStringLiteral("message"), value.section(QLatin1Char(':'), 1)}});
    } else if (is("raw") || is("half")) {
        m_socket->write(value.toUtf8() + (is("raw") ? "\n" : ""));
        m_socket->flush();
    } else if (is("ping")) {
        m_connection->sendRequest(QStringLiteral("fly"), {}, nullptr);
    } else if (is("hello-again")) {
        m_connection->sendRequest(Method::hello, m_hello.toJson(), nullptr);
    } else if (is("disconnect")) {
        m_connection->close();
    } else if (is("slow-stop") || is("refuse-stop") || is("crash-stop")) {
        m_atStop = name;
    } else if (is("print")) {
        std::printf("%s\n", qPrintable(value));
        std::fflush(stdout);
    } else if (is("copy-input")) {
        QFile input;
        if (input.open(stdin, QIODevice::ReadOnly))
            std::printf("%s\n", input.readAll().constData());
        std::fflush(stdout);
    } else if (is("environment")) {
        writeFile(value, environmentText());
    } else if (is("pid")) {
        writeFile(value, QByteArray::number(QCoreApplication::applicationPid()));
    } else if (is("ignore-term")) {
        std::signal(SIGTERM, SIG_IGN);
    } else if (is("orphan")) {
        becomeOrphan(value);
    } else if (is("leave-child")) {
        leaveChild(value);
    } else if (is("until")) {
        runUntil([&] { return QFile::exists(value); });
    } else if (is("wait")) {
        QEventLoop().exec();
    } else if (is("exit")) {
        std::_Exit(value.toInt());
    } else if (is("signal")) {
        dieBy(value.toInt());
    } else {
        std::_Exit(93);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    FakeAgent agent;
    const QStringList actions = QCoreApplication::arguments().mid(1);
    for (const QString &action : actions)
        agent.play(action);
    return 0;
}
