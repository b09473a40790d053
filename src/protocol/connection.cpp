#include "protocol/connection.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QJsonDocument>
#include <QtNetwork/QLocalSocket>

#include <limits>
#include <utility>

namespace Vantle::Protocol {

namespace {

// Bounds what the socket reads ahead while a handler is busy; the rest waits
// in the peer.
constexpr qint64 readAhead = 1024 * 1024;
constexpr qint64 chunkSize = 64 * 1024;

// What has been read and not been handled: enough that a peer that dies has
// nothing left in the system, little enough for any program.
constexpr qsizetype mostBacklog = 8 * 1024 * 1024;

// An id is repeated in the answer, and must not be what makes that too long.
constexpr qsizetype longestId = 1024;

constexpr int mostReadsAtEnd = 64;

// A peer that floods us must not keep the program from its other events.
constexpr int messagesPerTurn = 64;

const QString versionKey = QStringLiteral("jsonrpc");
const QString versionValue = QStringLiteral("2.0");
const QString idKey = QStringLiteral("id");
const QString methodKey = QStringLiteral("method");
const QString paramsKey = QStringLiteral("params");
const QString resultKey = QStringLiteral("result");
const QString errorKey = QStringLiteral("error");
const QString codeKey = QStringLiteral("code");
const QString messageKey = QStringLiteral("message");
const QString dataKey = QStringLiteral("data");

bool isValidId(const QJsonValue &id)
{
    return (id.isString() && id.toString().size() <= longestId) || id.isDouble() || id.isNull();
}

/// The id of a message if it can be repeated in an answer, else null.
QJsonValue answerableId(const QJsonObject &message)
{
    const QJsonValue id = message.value(idKey);
    return isValidId(id) ? id : QJsonValue(QJsonValue::Null);
}

Reply replyFrom(const QJsonObject &message)
{
    if (!message.contains(errorKey))
        return {message.value(resultKey), std::nullopt};
    const QJsonObject error = message.value(errorKey).toObject();
    const int code = error.value(codeKey).toInt(InternalError);
    const QString text = error.value(messageKey).toString(QStringLiteral("the peer sent an error without a message"));
    return {QJsonValue(), Error{code, text, error.value(dataKey)}};
}

} // namespace

struct Responder::State
{
    State(Connection *target, const QJsonValue &requestId) : connection(target), id(requestId) {}
    State(const State &) = delete;
    State &operator=(const State &) = delete;

    ~State()
    {
        if (connection && !answered)
            connection->sendError(id, {InternalError, QStringLiteral("the request was dropped without an answer")});
    }

    QPointer<Connection> connection;
    QJsonValue id;
    bool answered = false;
};

Responder::Responder(std::shared_ptr<State> state) : m_state(std::move(state))
{
}

void Responder::respond(const QJsonValue &result) const
{
    if (!std::exchange(m_state->answered, true) && m_state->connection)
        m_state->connection->sendResult(m_state->id, result);
}

void Responder::fail(int code, const QString &message, const QJsonValue &data) const
{
    if (!std::exchange(m_state->answered, true) && m_state->connection)
        m_state->connection->sendError(m_state->id, {code, message, data});
}

bool Responder::isOver() const
{
    return m_state->answered || !m_state->connection || !m_state->connection->isOpen();
}

Connection::Connection(QIODevice *device, QObject *parent) : QObject(parent), m_device(device)
{
    m_lines.setLimit(m_limit);
    device->setParent(this);
    connect(device, &QIODevice::readyRead, this, &Connection::readAvailable);
    connect(device, &QIODevice::bytesWritten, this, &Connection::scheduleDispatch);
    connect(device, &QIODevice::readChannelFinished, this, &Connection::inputEnded);
    connect(device, &QObject::destroyed, this, &Connection::inputEnded);
    if (auto *socket = qobject_cast<QLocalSocket *>(device)) {
        socket->setReadBufferSize(readAhead);
        connect(socket, &QLocalSocket::disconnected, this, &Connection::inputEnded);
        if (socket->state() != QLocalSocket::ConnectedState)
            inputEnded();
    } else if (!device->isOpen()) {
        inputEnded();
    }
    if (device->bytesAvailable() > 0)
        QMetaObject::invokeMethod(this, &Connection::readAvailable, Qt::QueuedConnection);
}

Connection::~Connection()
{
    // Handlers may hold responders of this connection: they have to find it
    // closed, not half destroyed.
    m_closed = true;
    m_pending.clear();
    m_requestHandlers.clear();
    m_notificationHandlers.clear();
    if (m_device)
        m_device->disconnect(this);
}

void Connection::setMessageLimit(qsizetype bytes)
{
    m_limit = bytes;
    m_lines.setLimit(bytes);
}

void Connection::sendRequest(const QString &method, const QJsonObject &params, ReplyHandler handler)
{
    const qint64 id = ++m_lastId;
    if (m_finished) {
        failLater(std::move(handler), {Disconnected, QStringLiteral("the connection has ended")});
    } else if (send({{idKey, id}, {methodKey, method}, {paramsKey, params}})) {
        m_pending.insert(id, std::move(handler));
    } else {
        failLater(std::move(handler),
                  {InvalidRequest,
                   QStringLiteral("the request has more than the %1 bytes that a message may have").arg(m_limit)});
    }
}

void Connection::failLater(ReplyHandler handler, const Error &error)
{
    QMetaObject::invokeMethod(
        this,
        [handler = std::move(handler), error] {
            if (handler)
                handler({QJsonValue(), error});
        },
        Qt::QueuedConnection);
}

void Connection::notify(const QString &method, const QJsonObject &params)
{
    if (!send({{methodKey, method}, {paramsKey, params}}))
        qWarning("vantle: a message \"%s\" was not sent: it has more than %lld bytes", qPrintable(method),
                 static_cast<long long>(m_limit));
}

bool Connection::waitForSent(std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    while (!m_closed && m_device && m_device->bytesToWrite() > 0 && !deadline.hasExpired())
        m_device->waitForBytesWritten(static_cast<int>(deadline.remainingTime()));
    return !m_closed && m_device && m_device->bytesToWrite() == 0;
}

void Connection::onRequest(const QString &method, RequestHandler handler)
{
    m_requestHandlers.insert(method, std::move(handler));
}

void Connection::onNotification(const QString &method, NotificationHandler handler)
{
    m_notificationHandlers.insert(method, std::move(handler));
}

void Connection::close()
{
    m_lines.clear();
    if (!m_closed)
        releaseDevice();
}

void Connection::closeAfterInput()
{
    if (m_closed)
        return;
    readAll();
    // A peer that sends without end must not keep us here.
    for (int i = 0; i < mostReadsAtEnd && m_device && !m_closed && m_device->waitForReadyRead(0); ++i)
        readAll();
    releaseDevice();
}

void Connection::releaseDevice()
{
    m_closed = true;
    if (m_device) {
        m_device->disconnect(this);
        if (auto *socket = qobject_cast<QLocalSocket *>(m_device.data())) {
            socket->flush();
            socket->disconnectFromServer();
        } else {
            m_device->close();
        }
    }
    m_inputEnded = true;
    scheduleDispatch();
}

void Connection::readAvailable()
{
    readWhileBacklogBelow(mostBacklog);
}

void Connection::readAll()
{
    readWhileBacklogBelow(std::numeric_limits<qsizetype>::max());
}

void Connection::readWhileBacklogBelow(qsizetype limit)
{
    while (!m_closed && m_device && m_device->bytesAvailable() > 0 && m_lines.backlog() < limit) {
        const QByteArray chunk = m_device->read(chunkSize);
        if (chunk.isEmpty())
            break;
        if (!m_lines.feed(chunk))
            cutOff(QStringLiteral("a message has more than %1 bytes; the connection is closed").arg(m_limit));
    }
    // A full socket isn't watched any more, and would not tell that the peer goes.
    if (mustWaitForPeer() && m_device->bytesAvailable() > 0 && m_lines.backlog() >= mostBacklog)
        cutOff(QStringLiteral("requests come and their answers are not read; the connection is closed"));
    scheduleDispatch();
}

void Connection::cutOff(const QString &reason)
{
    m_device->disconnect(this);
    sendError(QJsonValue::Null, {InvalidRequest, reason});
    m_failure = reason;
    m_closed = true;
    m_inputEnded = true;
    // What the system has not taken by now would wait for a peer that may never read.
    if (auto *socket = qobject_cast<QLocalSocket *>(m_device.data()))
        socket->abort();
    else
        m_device->close();
}

void Connection::inputEnded()
{
    if (m_inputEnded)
        return;
    readAll();
    m_inputEnded = true;
    m_closed = true;
    scheduleDispatch();
}

/// Whether the peer has to read answers before it may send more: one that never
/// does would have us keep them all.
bool Connection::mustWaitForPeer() const
{
    return !m_closed && m_device && m_device->bytesToWrite() > m_limit;
}

void Connection::scheduleDispatch()
{
    if (m_dispatchScheduled || m_finished || (!m_lines.hasLine() && !m_inputEnded) || mustWaitForPeer())
        return;
    m_dispatchScheduled = true;
    QMetaObject::invokeMethod(this, &Connection::dispatchNext, Qt::QueuedConnection);
}

void Connection::dispatchNext()
{
    m_dispatchScheduled = false;
    if (!m_lines.hasLine()) {
        if (m_inputEnded)
            finish();
        return;
    }
    const QPointer<Connection> self(this);
    for (int handled = 0; handled < messagesPerTurn && m_lines.hasLine() && !mustWaitForPeer(); ++handled) {
        const QByteArray line = m_lines.takeLine();
        // Ahead of the handler, which may run an event loop: what follows goes
        // on inside it.
        scheduleDispatch();
        handleLine(line);
        if (!self)
            return;
    }
    // Nothing tells again of what was left in the socket.
    readAvailable();
}

void Connection::finish()
{
    if (std::exchange(m_finished, true))
        return;
    const QPointer<Connection> self(this);
    if (m_failure.isEmpty() && m_lines.hasPartialLine())
        Q_EMIT messageRefused(QStringLiteral("the connection ended in the middle of a message"));
    else if (!m_failure.isEmpty())
        Q_EMIT protocolError(m_failure);
    if (!self)
        return;
    const QHash<qint64, ReplyHandler> pending = std::exchange(m_pending, {});
    for (const ReplyHandler &handler : pending) {
        if (handler)
            handler({QJsonValue(), Error{Disconnected, QStringLiteral("the connection ended before the answer")}});
        if (!self)
            return;
    }
    Q_EMIT disconnected();
}

void Connection::handleLine(const QByteArray &line)
{
    if (line.trimmed().isEmpty())
        return;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(line, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        refuse(QJsonValue::Null, ParseError,
               QStringLiteral("invalid JSON at byte %1: %2").arg(parseError.offset).arg(parseError.errorString()));
        return;
    }
    if (!document.isObject()) {
        refuse(QJsonValue::Null, InvalidRequest, QStringLiteral("a message has to be one JSON object"));
        return;
    }
    const QJsonObject message = document.object();
    if (message.contains(methodKey))
        handleCall(message);
    else if (message.contains(resultKey) || message.contains(errorKey))
        handleReply(message);
    else
        refuse(answerableId(message), InvalidRequest, QStringLiteral("neither a method nor a result nor an error"));
}

void Connection::handleCall(const QJsonObject &message)
{
    const QJsonValue method = message.value(methodKey);
    const QJsonValue id = message.value(idKey);
    const QJsonValue params = message.contains(paramsKey) ? message.value(paramsKey) : QJsonValue(QJsonObject());
    if (message.value(versionKey).toString() != versionValue) {
        refuse(answerableId(message), InvalidRequest, QStringLiteral("\"jsonrpc\" has to be \"2.0\""));
    } else if (!method.isString()) {
        refuse(answerableId(message), InvalidRequest, QStringLiteral("\"method\" has to be a string"));
    } else if (!id.isUndefined() && !isValidId(id)) {
        refuse(QJsonValue::Null, InvalidRequest, QStringLiteral("\"id\" has to be a string, a number or null"));
    } else if (!params.isObject()) {
        const QString reason = QStringLiteral("the parameters of \"%1\" have to be an object").arg(method.toString());
        if (id.isUndefined())
            Q_EMIT messageRefused(reason);
        else
            refuse(id, InvalidParams, reason);
    } else if (id.isUndefined()) {
        handleNotification(method.toString(), params.toObject());
    } else {
        handleRequest(method.toString(), id, params.toObject());
    }
}

void Connection::handleRequest(const QString &method, const QJsonValue &id, const QJsonObject &params)
{
    // A copy: the handler may replace itself or delete the connection.
    const RequestHandler handler = m_requestHandlers.value(method);
    if (!handler) {
        refuse(id, MethodNotFound, QStringLiteral("there is no method \"%1\"").arg(method));
        return;
    }
    handler(params, Responder(std::make_shared<Responder::State>(this, id)));
}

void Connection::handleNotification(const QString &method, const QJsonObject &params)
{
    const NotificationHandler handler = m_notificationHandlers.value(method);
    if (handler)
        handler(params);
    else
        Q_EMIT messageRefused(QStringLiteral("there is no notification \"%1\"").arg(method));
}

void Connection::handleReply(const QJsonObject &message)
{
    const QJsonValue id = message.value(idKey);
    const qint64 number = id.isDouble() ? id.toInteger(0) : 0;
    const auto pending = m_pending.constFind(number);
    if (pending == m_pending.constEnd()) {
        // Never answered, or two peers could answer each other's errors for ever.
        const Reply reply = replyFrom(message);
        Q_EMIT messageRefused(reply.isError() ? reply.error->message
                                              : QStringLiteral("an answer to a request that was not sent"));
        return;
    }
    const ReplyHandler handler = *pending;
    m_pending.erase(pending);
    if (handler)
        handler(replyFrom(message));
}

void Connection::refuse(const QJsonValue &id, int code, const QString &message)
{
    sendError(id, {code, message});
    Q_EMIT messageRefused(message);
}

void Connection::sendResult(const QJsonValue &id, const QJsonValue &result)
{
    // An undefined value would leave the key out, which is no answer at all.
    if (!send({{idKey, id}, {resultKey, result.isUndefined() ? QJsonValue(QJsonValue::Null) : result}})) {
        const QString reason = QStringLiteral("the answer has more than the %1 bytes that a message may have");
        sendError(id, {InternalError, reason.arg(m_limit)});
    }
}

void Connection::sendError(const QJsonValue &id, const Error &error)
{
    QJsonObject object{{codeKey, error.code}, {messageKey, error.message}};
    if (!error.data.isUndefined())
        object.insert(dataKey, error.data);
    if (!send({{idKey, id}, {errorKey, object}})) {
        const QJsonObject shorter{{codeKey, error.code}, {messageKey, error.message.left(longestId) + QChar(0x2026)}};
        send({{idKey, id}, {errorKey, shorter}});
    }
}

/// False if the message is too long, and so was not sent.
bool Connection::send(const QJsonObject &message)
{
    if (m_closed || !m_device)
        return true;
    QJsonObject versioned = message;
    versioned.insert(versionKey, versionValue);
    const QByteArray line = QJsonDocument(versioned).toJson(QJsonDocument::Compact);
    if (line.size() > m_limit)
        return false;
    m_device->write(line + '\n');
    // From here on the system has it: it arrives even if this process dies now.
    if (auto *socket = qobject_cast<QLocalSocket *>(m_device.data()))
        socket->flush();
    return true;
}

} // namespace Vantle::Protocol
