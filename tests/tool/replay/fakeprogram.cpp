// Plays a program under test together with its agent: has a few objects, and
// functions that do things to them. Its arguments, before the conversation:
//
//   print:TEXT         prints a line
//   print-error:TEXT   the same to standard error
//   environment:FILE   writes its environment, a variable a line
//   note:FILE          appends a line to FILE
//   await:FILE         says nothing to the tool until FILE is there
//   no-hello           never calls the tool
//   exit-at-quit:N     ends with exit code N when it is asked to quit
//   crash-at-quit      crashes then
//   ignore-quit        answers, and stays
//   leave-at-quit:N    does not answer and ends with exit code N, as a program
//                      does that was about to end by itself
//   refuse-quit:N      says that it is ending by itself, and ends with exit code N
//   crash-at-start     crashes ahead of its first word
//   ignore-term        is not ended by SIGTERM
//   log:TEXT           sends a line for the log with every call

#include "protocol/connection.h"
#include "protocol/endpoint.h"
#include "protocol/messages.h"
#include "protocol/objectmessages.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMap>
#include <QtCore/QSaveFile>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtNetwork/QLocalSocket>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

extern char **environ;

using namespace Vantle::Protocol;

namespace {

struct FakeObject
{
    QString className;
    QString name;
    QJsonObject properties;
};

QJsonObject json(const char *text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        std::_Exit(91);
    return document.object();
}

/// One overload, so that its numbers can be told from enumerators.
FunctionDescription clickWithButton()
{
    return {QStringLiteral("mouseClick"),
            {{{{QStringLiteral("objectName"), QStringLiteral("QString")},
               {QStringLiteral("x"), QStringLiteral("int")},
               {QStringLiteral("y"), QStringLiteral("int")},
               {QStringLiteral("button"), QStringLiteral("Qt::MouseButton")}},
              QStringLiteral("void")}}};
}

[[noreturn]] void crash()
{
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
    std::_Exit(99);
}

class FakeProgram : public QObject
{
public:
    explicit FakeProgram(const QStringList &arguments);

    void begin();

private:
    void awaitFile(const QString &file);
    void listen();
    void find(const QJsonObject &params, const Responder &responder);
    void call(const QJsonObject &params, const Responder &responder);
    void callOther(const QString &function, const QJsonArray &arguments, const Responder &responder);
    void invoke(const QJsonObject &params, const Responder &responder);
    void describe(const QJsonObject &params, const Responder &responder);
    void grab(const QJsonObject &params, const Responder &responder);
    void quit(const Responder &responder);
    void failNotFound(const QString &name, const Responder &responder);
    void sendStatement(const QString &function, const QJsonArray &arguments);
    int handleOf(const QJsonObject &params) const;
    static int windowOf(int handle) { return handle == 10 || handle == 11 ? 10 : 1; }
    QJsonObject reference(int handle, const QJsonObject &params) const;
    QString option(const char *name) const;

    const QStringList m_arguments;
    QMap<int, FakeObject> m_objects;
    Connection *m_connection = nullptr;
    bool m_record = false;
    bool m_strict = false;
    bool m_isPlaying = false;
    int m_looks = 0;
};

FakeProgram::FakeProgram(const QStringList &arguments) : m_arguments(arguments)
{
    m_objects.insert(1,
                     {QStringLiteral("Main"), QStringLiteral("Main"), json(R"({"title": "Fake", "visible": true})")});
    m_objects.insert(2, {QStringLiteral("QQuickButton"), QStringLiteral("Main Button#save"), json(R"({
        "text": "Save", "enabled": true, "width": 80.5, "missing": null,
        "parent": {"object": 1, "class": "Main", "name": "Main"},
        "color": {"type": "QColor", "text": "#ff4477aa"}, "veil": {"type": "QColor", "text": "#804477aa"},
        "position": {"type": "QPointF", "x": 3, "y": 4}, "area": {"type": "QRectF", "x": 0, "y": 1, "width": 2, "height": 3},
        "source": {"type": "QUrl", "text": "qrc:/save.png"}, "born": {"type": "QDateTime", "text": "2024-02-29T12:00:00Z"},
        "list": [1, "two", {"object": 1, "class": "Main", "name": "Main"}],
        "font": {"type": "QFont", "text": "Sans,12", "members": true}, "font.pixelSize": 12,
        "map": {"type": "map", "value": {"a": 1, "type": "b"}}, "odd": {"type": "Odd", "text": "odd one"}
    })")});
    m_objects.insert(3,
                     {QStringLiteral("QQuickLabel"), QStringLiteral("Main Label#status"),
                      json(R"({"text": "ready", "count": 0})")});
    // A second window, which never is the active one.
    m_objects.insert(10, {QStringLiteral("Dialog"), QStringLiteral("Dialog"), {}});
    m_objects.insert(11, {QStringLiteral("QQuickButton"), QStringLiteral("Dialog Button#ok"), {}});
    m_objects.insert(12, {QStringLiteral("QQuickButton"), QStringLiteral("Main Button#drifting"), {}});
    m_objects.insert(13, {QStringLiteral("QQuickButton"), QStringLiteral("Main Button#hidden"), {}});
}

QString FakeProgram::option(const char *name) const
{
    const QString head = QLatin1String(name) + QLatin1Char(':');
    for (const QString &argument : m_arguments) {
        if (argument.startsWith(head))
            return argument.mid(head.size());
    }
    return QString();
}

void FakeProgram::begin()
{
    if (m_arguments.contains(QStringLiteral("crash-at-start")))
        crash();
    if (m_arguments.contains(QStringLiteral("ignore-term")))
        std::signal(SIGTERM, SIG_IGN);
    if (!option("print").isEmpty())
        std::printf("%s\n", qPrintable(option("print")));
    if (!option("print-error").isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(option("print-error")));
    std::fflush(nullptr);
    if (!option("note").isEmpty()) {
        QFile file(option("note"));
        if (!file.open(QIODevice::Append) || file.write("started\n") < 0)
            std::_Exit(98);
    }
    if (!option("environment").isEmpty()) {
        // Whole or not at all: somebody waits for it.
        QSaveFile file(option("environment"));
        if (!file.open(QIODevice::WriteOnly))
            std::_Exit(98);
        for (char **entry = environ; *entry; ++entry)
            file.write(QByteArray(*entry) + '\n');
        if (!file.commit())
            std::_Exit(98);
    }
    if (!option("await").isEmpty())
        awaitFile(option("await"));
    else if (!m_arguments.contains(QStringLiteral("no-hello")))
        listen();
}

void FakeProgram::awaitFile(const QString &file)
{
    if (QFile::exists(file))
        listen();
    else
        QTimer::singleShot(2, this, [this, file] { awaitFile(file); });
}

void FakeProgram::listen()
{
    auto *socket = new QLocalSocket(this);
    socket->connectToServer(qEnvironmentVariable(Variable::socket));
    if (!socket->waitForConnected(5000))
        std::_Exit(97);
    m_connection = new Connection(socket, this);
    // The tool kills its programs; this is for a tool that was killed itself.
    connect(m_connection, &Connection::disconnected, this, [] { std::_Exit(0); });
    const auto on = [this](QLatin1String method, auto handler) {
        m_connection->onRequest(method, [this, handler](const QJsonObject &params, const Responder &responder) {
            (this->*handler)(params, responder);
        });
    };
    on(Method::find, &FakeProgram::find);
    on(Method::call, &FakeProgram::call);
    on(Method::invoke, &FakeProgram::invoke);
    on(Method::describe, &FakeProgram::describe);
    on(Method::grab, &FakeProgram::grab);
    m_connection->onRequest(Method::ping, [this](const QJsonObject &, const Responder &responder) {
        responder.respond(QJsonObject{{QStringLiteral("playing"), m_isPlaying}});
    });
    m_connection->onRequest(Method::quit, [this](const QJsonObject &, const Responder &responder) { quit(responder); });
    m_connection->onRequest(Method::stopRecording,
                            [](const QJsonObject &, const Responder &responder) { responder.respond(); });
    m_connection->onRequest(Method::functions, [](const QJsonObject &, const Responder &responder) {
        QJsonArray functions{clickWithButton().toJson()};
        for (const char *name : {"type", "crash", "leave", "leaveUncalled", "leaveQuietly", "leaveSlowly", "hang",
                                 "stall", "play", "fail", "echo", "forget", "snooze"})
            functions.append(QJsonObject{{QStringLiteral("name"), QLatin1String(name)},
                                         {QStringLiteral("overloads"), QJsonArray()}});
        responder.respond(QJsonObject{{QStringLiteral("functions"), functions}});
    });
    m_connection->onRequest(Method::properties, [this](const QJsonObject &params, const Responder &responder) {
        const int handle = handleOf(params);
        if (handle == 0)
            return responder.fail(ObjectGone, QStringLiteral("the object is gone"));
        QJsonObject found;
        const QJsonArray names = params.value(QLatin1String("names")).toArray();
        for (const QJsonValue &name : names) {
            const QJsonValue value = name == QLatin1String("join")
                ? QJsonValue(
                    QJsonObject{{QStringLiteral("type"), QStringLiteral("method")}, {QStringLiteral("text"), name}})
                : m_objects.value(handle).properties.value(name.toString());
            if (value.isUndefined()) {
                return responder.fail(InvalidParams,
                                      QStringLiteral("%1 has no property \"%2\"")
                                          .arg(m_objects.value(handle).className, name.toString()));
            }
            found.insert(name.toString(), value);
        }
        responder.respond(QJsonObject{{QStringLiteral("properties"), found}});
    });
    m_connection->onRequest(Method::setProperty, [this](const QJsonObject &params, const Responder &responder) {
        const int handle = handleOf(params);
        const QString property = params.value(QLatin1String("property")).toString();
        if (property == QLatin1String("readOnly"))
            return responder.fail(FunctionFailed, QStringLiteral("\"readOnly\" can't be written"));
        m_objects[handle].properties.insert(property, params.value(QLatin1String("value")));
        responder.respond();
    });
    m_connection->onRequest(Method::children, [this](const QJsonObject &params, const Responder &responder) {
        QJsonArray list;
        if (!params.contains(QLatin1String("object")) && !params.contains(QLatin1String("name")))
            list = {reference(1, params)};
        else if (handleOf(params) == 1)
            list = {reference(2, params), reference(3, params)};
        responder.respond(QJsonObject{{QStringLiteral("objects"), list}});
    });

    Hello hello;
    hello.token = qEnvironmentVariable(Variable::token);
    hello.version = QStringLiteral("0.1.0");
    hello.pid = QCoreApplication::applicationPid();
    hello.program = QStringLiteral("fake program");
    hello.qtVersion = QStringLiteral("6.4.2");
    hello.platform = QStringLiteral("none");
    m_connection->sendRequest(Method::hello, hello.toJson(), [this](const Reply &reply) {
        m_record = reply.result.toObject().value(QLatin1String("record")).toBool();
        m_strict = reply.result.toObject().value(QLatin1String("strict")).toBool();
    });
}

int FakeProgram::handleOf(const QJsonObject &params) const
{
    const int handle = params.value(QLatin1String("object")).toInt();
    if (m_objects.contains(handle))
        return handle;
    for (auto it = m_objects.cbegin(); it != m_objects.cend(); ++it) {
        if (it->name == params.value(QLatin1String("name")).toString())
            return it.key();
    }
    return 0;
}

QJsonObject FakeProgram::reference(int handle, const QJsonObject &params) const
{
    ObjectReference reference{handle, m_objects.value(handle).className, m_objects.value(handle).name};
    if (!params.value(QLatin1String("named")).toBool(true))
        reference.name.reset();
    return reference.toJson();
}

void FakeProgram::failNotFound(const QString &name, const Responder &responder)
{
    NotFound data{name, QStringLiteral("nothing has this id"), {}};
    data.candidates.append({QStringLiteral("Main Button#save"),
                            QStringLiteral("QQuickButton"),
                            {{QStringLiteral("id"), QStringLiteral("\"sav\""), QStringLiteral("\"save\"")},
                             {QStringLiteral("text"), QStringLiteral("\"<b>\""), QStringLiteral("\"Save\"")}}});
    responder.fail(ObjectNotFound, QStringLiteral("there is no object ") + name, data.toJson());
}

void FakeProgram::find(const QJsonObject &params, const Responder &responder)
{
    const QString name = params.value(QLatin1String("name")).toString();
    const int limit = params.value(QLatin1String("timeout")).toInt();
    if (name == QLatin1String("Main Button#covered")) {
        QTimer::singleShot(limit, this, [name, responder] {
            const NotReady data{name, QStringLiteral("it is covered"), QStringLiteral("Main Dialog#about")};
            responder.fail(ObjectNotReady, QStringLiteral("the object is not ready"), data.toJson());
        });
    } else if (name == QLatin1String("Main Button#late")) {
        if (!m_objects.contains(4) && limit == 0)
            return failNotFound(name, responder);
        QTimer::singleShot(100, this, [this, params, responder] {
            m_objects.insert(4, {QStringLiteral("QQuickButton"), QStringLiteral("Main Button#late"), {}});
            responder.respond(reference(4, params));
        });
    } else if (const int handle = handleOf(params)) {
        responder.respond(reference(handle, params));
    } else {
        QTimer::singleShot(limit, this, [this, name, responder] { failNotFound(name, responder); });
    }
}

void FakeProgram::sendStatement(const QString &function, const QJsonArray &arguments)
{
    Statement statement{function, arguments.at(0).toString(), {}, QStringLiteral("12:00:00.000")};
    for (qsizetype i = 1; i < arguments.size(); ++i)
        statement.arguments.append({QStringLiteral("value"), QStringLiteral("int"), arguments.at(i)});
    m_connection->notify(Method::statement, statement.toJson());
}

void FakeProgram::call(const QJsonObject &params, const Responder &responder)
{
    const QString function = params.value(QLatin1String("function")).toString();
    const QJsonArray arguments = params.value(QLatin1String("arguments")).toArray();
    if (!option("log").isEmpty())
        m_connection->notify(Method::log,
                             {{QStringLiteral("level"), QStringLiteral("warning")},
                              {QStringLiteral("message"), option("log")}});
    if (function == QLatin1String("leaveUncalled"))
        std::exit(0);
    m_connection->notify(Method::acting, {});
    m_connection->waitForSent(std::chrono::seconds(5));
    if (function != QLatin1String("mouseClick"))
        return callOther(function, arguments, responder);

    const QJsonObject target = arguments.at(0).isObject() ? arguments.at(0).toObject()
                                                          : QJsonObject{{QStringLiteral("name"), arguments.at(0)}};
    if (m_strict && target.value(QLatin1String("name")) == QLatin1String("Main Button")) {
        const NotFound data{QStringLiteral("Main Button"),
                            QStringLiteral("Main Button fits 2 objects"),
                            {{QStringLiteral("Main Button#save"), QStringLiteral("QQuickButton"), {}},
                             {QStringLiteral("Main Button#late"), QStringLiteral("QQuickButton"), {}}}};
        return responder.fail(AmbiguousName, data.reason, data.toJson());
    }
    if (handleOf(target) == 0)
        return failNotFound(target.value(QLatin1String("name")).toString(), responder);
    QJsonObject &status = m_objects[3].properties;
    const int count = status.value(QLatin1String("count")).toInt() + 1;
    status.insert(QStringLiteral("count"), count);
    if (m_record)
        sendStatement(function, arguments);
    // The program takes some time over it.
    QTimer::singleShot(60, this,
                       [this] { m_objects[3].properties.insert(QStringLiteral("text"), QStringLiteral("clicked")); });
    responder.respond(
        QJsonObject{{QStringLiteral("result"), QJsonValue::Null},
                    {QStringLiteral("action"), ActionPoint{windowOf(handleOf(target)), 30, 20}.toJson()}});
}

void FakeProgram::callOther(const QString &function, const QJsonArray &arguments, const Responder &responder)
{
    static QList<Responder> kept;
    if (function == QLatin1String("crash")) {
        std::fprintf(stderr, "about to crash\n");
        crash();
    } else if (function == QLatin1String("leave")) {
        std::exit(arguments.at(0).toInt());
    } else if (function == QLatin1String("leaveQuietly")) {
        responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue::Null}});
        m_connection->waitForSent(std::chrono::seconds(5));
        std::exit(arguments.at(0).toInt());
    } else if (function == QLatin1String("leaveSlowly")) {
        // The agent has gone, and the program takes some time over its end.
        responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue::Null}});
        m_connection->waitForSent(std::chrono::seconds(5));
        m_connection->disconnect(this);
        m_connection->close();
        ::usleep(300000);
        std::_Exit(arguments.at(0).toInt());
    } else if (function == QLatin1String("hang")) {
        for (;;)
            ::pause();
    } else if (function == QLatin1String("stall")) {
        kept.append(responder);
    } else if (function == QLatin1String("play")) {
        m_isPlaying = true;
        QTimer::singleShot(arguments.at(0).toInt(), this, [this, responder] {
            m_isPlaying = false;
            responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue::Null}});
        });
    } else if (function == QLatin1String("fail")) {
        responder.fail(FunctionFailed, QStringLiteral("it went wrong <here> & now"));
    } else if (function == QLatin1String("forget")) {
        m_objects.remove(2);
        responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue::Null}});
    } else {
        responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue(arguments)}});
    }
}

void FakeProgram::invoke(const QJsonObject &params, const Responder &responder)
{
    const QString method = params.value(QLatin1String("method")).toString();
    if (method == QLatin1String("join"))
        responder.respond(QJsonObject{{QStringLiteral("result"), params.value(QLatin1String("arguments"))}});
    else
        responder.fail(FunctionFailed, QStringLiteral("there is no method \"%1\"").arg(method));
}

void FakeProgram::describe(const QJsonObject &params, const Responder &responder)
{
    const int handle = handleOf(params);
    if (handle == 0)
        return responder.fail(ObjectGone, QStringLiteral("the object is gone"));
    Description description;
    description.className = m_objects.value(handle).className;
    description.name = m_objects.value(handle).name;
    // One of them comes to rest after a while, one never shows.
    description.visible = handle != 13;
    description.geometry = QRect(handle == 12 ? std::min(++m_looks, 4) : 0, 0, 20, 10);
    responder.respond(description.toJson());
}

void FakeProgram::grab(const QJsonObject &params, const Responder &responder)
{
    int handle = params.isEmpty() ? 1 : handleOf(params);
    if (handle == 0)
        return responder.fail(ObjectNotFound, QStringLiteral("there is nothing to take a picture of"));
    if (params.value(QLatin1String("window")).toBool())
        handle = windowOf(handle);
    std::fprintf(stderr, "picture taken\n");
    // The widths tell which of them it is, and how often it was looked at.
    const QMap<int, QSize> sizes{{1, QSize(160, 100)}, {10, QSize(60, 40)}, {12, QSize(20 + m_looks, 10)}};
    QImage image(sizes.value(handle, QSize(20, 10)), QImage::Format_RGB32);
    const int count = m_objects.value(3).properties.value(QLatin1String("count")).toInt();
    image.fill(QColor(68, 119, (170 + 20 * count) % 256));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    QJsonObject result{{QStringLiteral("png"), QString::fromLatin1(png.toBase64())},
                       {QStringLiteral("width"), image.width()},
                       {QStringLiteral("height"), image.height()},
                       {QStringLiteral("ratio"), 1}};
    if (handle == windowOf(handle))
        result.insert(QStringLiteral("window"), handle);
    responder.respond(result);
}

void FakeProgram::quit(const Responder &responder)
{
    if (m_arguments.contains(QStringLiteral("crash-at-quit")))
        crash();
    if (!option("leave-at-quit").isEmpty())
        std::_Exit(option("leave-at-quit").toInt());
    if (option("refuse-quit").isEmpty())
        responder.respond();
    else
        responder.fail(ProgramEnds, QStringLiteral("the program is ending by itself"));
    m_connection->waitForSent(std::chrono::seconds(5));
    if (!option("refuse-quit").isEmpty())
        std::_Exit(option("refuse-quit").toInt());
    if (!m_arguments.contains(QStringLiteral("ignore-quit")))
        std::_Exit(option("exit-at-quit").toInt());
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    FakeProgram program(QCoreApplication::arguments().mid(1));
    program.begin();
    return QCoreApplication::exec();
}
