#pragma once

#include "protocol/linesplitter.h"

#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Vantle::Protocol {

/// Codes of errors: those of JSON-RPC 2.0, and our own in the range that it
/// leaves to implementations.
enum ErrorCode : int {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    /// Never sent: what a caller gets when the connection ends before the answer.
    Disconnected = -32000,
    /// The peer understood the request and declines it, e.g. a wrong token.
    Refused = -32001,
    /// A name leads to nothing; the data is a NotFound.
    ObjectNotFound = -32010,
    /// The object is there, but could not be acted on in time; the data is a NotReady.
    ObjectNotReady = -32011,
    /// A function of the program or of ours was called and failed; the message is its own.
    FunctionFailed = -32012,
    /// A handle is not known (any more), or its object is gone.
    ObjectGone = -32013,
    /// The program has come to its end before all that was asked for was done.
    ProgramEnds = -32014,
    /// A name leaves open which of several objects it means; the data is a NotFound
    /// with these as candidates.
    AmbiguousName = -32015,
};

struct Error
{
    int code = InternalError;
    QString message;
    QJsonValue data = QJsonValue(QJsonValue::Undefined); ///< undefined if the peer sent none
};

/// Answer to a request: a result, or an error and then no result.
struct Reply
{
    QJsonValue result;
    std::optional<Error> error;

    bool isError() const { return error.has_value(); }
};

class Connection;

/// The right to answer one request, now or later. Copies share it. The first
/// answer counts, later ones do nothing, and so does every answer after the
/// connection has ended or died. If the last copy goes without an answer, the
/// peer gets an internal error instead of waiting for ever.
class Responder
{
public:
    void respond(const QJsonValue &result = QJsonObject()) const;
    /// \p data goes with the error unless it is undefined.
    void fail(int code, const QString &message, const QJsonValue &data = QJsonValue(QJsonValue::Undefined)) const;
    /// Whether an answer would do nothing: one was given, or nobody waits for it any more.
    bool isOver() const;

private:
    friend class Connection;
    struct State;
    explicit Responder(std::shared_ptr<State> state);

    std::shared_ptr<State> m_state;
};

/// One end of a JSON-RPC 2.0 conversation, one message a line. Both ends are
/// alike: each can send requests and notifications and answer the other's.
///
/// Lives on the thread of its device and is used from that thread only.
/// Messages are handled in the order in which they came, each from the event
/// loop. A handler may run an event loop of its own: the messages that follow
/// are then handled inside it. Every handler may close or delete the
/// connection. A blank line is skipped; batches are refused.
class Connection : public QObject
{
    Q_OBJECT

public:
    using ReplyHandler = std::function<void(const Reply &)>;
    using RequestHandler = std::function<void(const QJsonObject &params, const Responder &responder)>;
    using NotificationHandler = std::function<void(const QJsonObject &params)>;

    static constexpr qsizetype defaultMessageLimit = 64 * 1024 * 1024;

    /// Talks over \p device, which it takes over and which has to be open (a
    /// socket: connected) by now. Messages that are already there are handled
    /// from the event loop, so there is time to register handlers.
    explicit Connection(QIODevice *device, QObject *parent = nullptr);

    /// Drops pending requests without calling their handlers.
    ~Connection() override;

    /// Longest message accepted and sent, in bytes. A longer one of the peer is
    /// a protocol error: it ends the connection before it has been buffered. An
    /// own one isn't sent; an answer of that length becomes an error. While more
    /// than this waits for the peer to read it, the peer's messages wait too; a
    /// peer that sends on and on all the same is cut off.
    void setMessageLimit(qsizetype bytes);

    bool isOpen() const { return !m_closed; }

    /// Sends a request. \p handler is called exactly once, never from inside
    /// this function: with the answer, or with the error Disconnected when the
    /// connection ends before, or InvalidRequest if the request is too long. An
    /// empty handler is allowed.
    void sendRequest(const QString &method, const QJsonObject &params, ReplyHandler handler);

    /// Sends a notification; nothing happens if the connection has ended.
    void notify(const QString &method, const QJsonObject &params);

    /// Waits until the system has taken everything that was sent, so that it
    /// arrives even if this process ends next. False if \p limit passes before,
    /// or the connection has ended. The system holds back a sender that is far
    /// ahead of its reader; nobody else needs this.
    bool waitForSent(std::chrono::milliseconds limit);

    /// Registers what answers requests for \p method, in place of what was
    /// registered before. Requests without handler get MethodNotFound.
    void onRequest(const QString &method, RequestHandler handler);

    /// Registers what takes notifications called \p method.
    void onNotification(const QString &method, NotificationHandler handler);

    /// Ends the connection from this side. What was sent is handed to the
    /// system first; messages not handled yet are dropped. disconnected()
    /// follows from the event loop.
    void close();

    /// Ends the connection from this side, but handles what the peer has sent
    /// up to now; disconnected() follows after that.
    void closeAfterInput();

Q_SIGNALS:
    /// The connection has ended, whoever ended it. Comes once, after every
    /// complete message was handled and every pending request got its error.
    void disconnected();

    /// The peer broke the protocol so badly that the connection is over.
    void protocolError(const QString &message);

    /// A message of the peer was refused or made no sense; the connection
    /// goes on.
    void messageRefused(const QString &reason);

private:
    friend class Responder;

    void releaseDevice();
    void readAvailable();
    void readAll();
    void readWhileBacklogBelow(qsizetype limit);
    void cutOff(const QString &reason);
    void inputEnded();
    bool mustWaitForPeer() const;
    void scheduleDispatch();
    void dispatchNext();
    void finish();
    void handleLine(const QByteArray &line);
    void handleCall(const QJsonObject &message);
    void handleRequest(const QString &method, const QJsonValue &id, const QJsonObject &params);
    void handleNotification(const QString &method, const QJsonObject &params);
    void handleReply(const QJsonObject &message);
    void refuse(const QJsonValue &id, int code, const QString &message);
    void sendResult(const QJsonValue &id, const QJsonValue &result);
    void sendError(const QJsonValue &id, const Error &error);
    void failLater(ReplyHandler handler, const Error &error);
    bool send(const QJsonObject &message);

    QPointer<QIODevice> m_device;
    LineSplitter m_lines;
    qsizetype m_limit = defaultMessageLimit;
    QHash<qint64, ReplyHandler> m_pending;
    QHash<QString, RequestHandler> m_requestHandlers;
    QHash<QString, NotificationHandler> m_notificationHandlers;
    QString m_failure;
    qint64 m_lastId = 0;
    bool m_closed = false;
    bool m_inputEnded = false;
    bool m_finished = false;
    bool m_dispatchScheduled = false;
};

} // namespace Vantle::Protocol
