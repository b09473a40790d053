#include "connectionends.h"

#include <gtest/gtest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>

using namespace Vantle::Protocol;
using namespace VantleTest;

namespace {

const QString echo = QStringLiteral("echo");

/// Both ends are connections.
class ConnectionTest : public testing::Test
{
protected:
    SocketPair sockets;
    Watched near{sockets.near};
    Watched far{sockets.far};
};

void answerWithParams(const QJsonObject &params, const Responder &responder)
{
    responder.respond(params);
}

TEST_F(ConnectionTest, aRequestGetsItsResult)
{
    far.connection->onRequest(echo, answerWithParams);
    Reply reply;
    bool called = false;
    near.connection->sendRequest(echo, {{QStringLiteral("text"), QStringLiteral("zwölf\n\u2028")}},
                                 [&](const Reply &r) {
                                     reply = r;
                                     called = true;
                                 });
    EXPECT_FALSE(called);
    ASSERT_TRUE(waitUntil([&] { return called; }));
    EXPECT_FALSE(reply.isError());
    EXPECT_EQ(reply.result.toObject().value(QStringLiteral("text")).toString(), QStringLiteral("zwölf\n\u2028"));
}

TEST_F(ConnectionTest, bothEndsCanAskAtTheSameTime)
{
    near.connection->onRequest(echo, answerWithParams);
    far.connection->onRequest(echo, answerWithParams);
    int answers = 0;
    const auto count = [&](const Reply &reply) { answers += reply.isError() ? 0 : 1; };
    near.connection->sendRequest(echo, {}, count);
    far.connection->sendRequest(echo, {}, count);
    EXPECT_TRUE(waitUntil([&] { return answers == 2; }));
}

TEST_F(ConnectionTest, answersMayComeLaterAndInAnyOrder)
{
    QList<Responder> held;
    far.connection->onRequest(echo, [&](const QJsonObject &, const Responder &responder) { held.append(responder); });
    QStringList order;
    near.connection->sendRequest(echo, {}, [&](const Reply &r) { order << QLatin1Char('1') + r.result.toString(); });
    near.connection->sendRequest(echo, {}, [&](const Reply &r) { order << QLatin1Char('2') + r.result.toString(); });
    ASSERT_TRUE(waitUntil([&] { return held.size() == 2; }));
    held.at(1).respond(QStringLiteral("b"));
    held.at(0).respond(QStringLiteral("a"));
    ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, QStringList({QStringLiteral("2b"), QStringLiteral("1a")}));
}

TEST_F(ConnectionTest, onlyTheFirstAnswerCounts)
{
    far.connection->onRequest(echo, [](const QJsonObject &, const Responder &responder) {
        responder.fail(Refused, QStringLiteral("no"));
        responder.respond(1);
        responder.fail(InternalError, QStringLiteral("again"));
    });
    QList<Reply> replies;
    near.connection->sendRequest(echo, {}, [&](const Reply &reply) { replies.append(reply); });
    bool later = false;
    near.connection->sendRequest(QStringLiteral("unknown"), {}, [&](const Reply &) { later = true; });
    ASSERT_TRUE(waitUntil([&] { return later; }));
    ASSERT_EQ(replies.size(), 1);
    ASSERT_TRUE(replies.at(0).isError());
    EXPECT_EQ(replies.at(0).error->code, Refused);
    EXPECT_EQ(replies.at(0).error->message, QStringLiteral("no"));
    EXPECT_FALSE(near.events.contains(QStringLiteral("refused"))) << "a second answer would be refused";
}

TEST_F(ConnectionTest, anErrorTakesItsDataAlong)
{
    far.connection->onRequest(echo, [](const QJsonObject &params, const Responder &responder) {
        EXPECT_FALSE(responder.isOver());
        if (params.isEmpty())
            responder.fail(ObjectNotFound, QStringLiteral("no"));
        else
            responder.fail(ObjectNotFound, QStringLiteral("no"), params);
        EXPECT_TRUE(responder.isOver());
    });
    QList<Reply> replies;
    const auto keep = [&](const Reply &reply) { replies.append(reply); };
    const QJsonObject data{{QStringLiteral("lookedFor"), QStringLiteral("Käse")}};
    near.connection->sendRequest(echo, data, keep);
    near.connection->sendRequest(echo, {}, keep);
    ASSERT_TRUE(waitUntil([&] { return replies.size() == 2; }));
    EXPECT_EQ(replies.at(0).error->code, ObjectNotFound);
    EXPECT_EQ(replies.at(0).error->data.toObject(), data);
    EXPECT_TRUE(replies.at(1).error->data.isUndefined());
}

TEST_F(ConnectionTest, aRequestIsOverWhenNobodyWaitsForItAnyMore)
{
    QList<Responder> held;
    far.connection->onRequest(echo, [&](const QJsonObject &, const Responder &responder) { held.append(responder); });
    near.connection->sendRequest(echo, {}, nullptr);
    ASSERT_TRUE(waitUntil([&] { return held.size() == 1; }));
    EXPECT_FALSE(held.first().isOver());
    near.connection->close();
    ASSERT_TRUE(waitUntil([&] { return held.first().isOver(); }));
    delete far.connection;
    EXPECT_TRUE(held.first().isOver());
}

TEST_F(ConnectionTest, aForgottenRequestIsAnsweredWithAnError)
{
    far.connection->onRequest(echo, [](const QJsonObject &, const Responder &) {});
    std::optional<Reply> reply;
    near.connection->sendRequest(echo, {}, [&](const Reply &r) { reply = r; });
    ASSERT_TRUE(waitUntil([&] { return reply.has_value(); }));
    ASSERT_TRUE(reply->isError());
    EXPECT_EQ(reply->error->code, InternalError);
}

TEST_F(ConnectionTest, anUnknownMethodIsAnError)
{
    std::optional<Reply> reply;
    near.connection->sendRequest(QStringLiteral("fly"), {}, [&](const Reply &r) { reply = r; });
    ASSERT_TRUE(waitUntil([&] { return reply.has_value(); }));
    ASSERT_TRUE(reply->isError());
    EXPECT_EQ(reply->error->code, MethodNotFound);
    EXPECT_EQ(reply->error->message, QStringLiteral("there is no method \"fly\""));
}

TEST_F(ConnectionTest, notificationsArriveInOrderAndUnknownOnesAreSkipped)
{
    QList<int> seen;
    far.connection->onNotification(echo, [&](const QJsonObject &params) {
        seen.append(params.value(QStringLiteral("n")).toInt());
    });
    near.connection->notify(QStringLiteral("unknown"), {});
    QList<int> expected;
    for (int i = 0; i < 500; ++i) {
        near.connection->notify(echo, {{QStringLiteral("n"), i}});
        expected.append(i);
    }
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 500; }));
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(far.events, QStringList(QStringLiteral("refused")));
    EXPECT_TRUE(far.connection->isOpen());
}

TEST_F(ConnectionTest, everythingSentBeforeTheEndArrivesBeforeTheEnd)
{
    int seen = 0;
    int seenAtEnd = -1;
    far.connection->onNotification(echo, [&](const QJsonObject &) { ++seen; });
    QObject::connect(far.connection, &Connection::disconnected, far.connection, [&] { seenAtEnd = seen; });
    for (int i = 0; i < 200; ++i)
        near.connection->notify(echo, {});
    near.connection->close();
    ASSERT_TRUE(waitUntil([&] { return seenAtEnd >= 0; }));
    EXPECT_EQ(seenAtEnd, 200);
    EXPECT_FALSE(near.connection->isOpen());
    EXPECT_FALSE(far.connection->isOpen());
    EXPECT_EQ(near.events, QStringList(QStringLiteral("end")));
    EXPECT_EQ(far.events, QStringList(QStringLiteral("end")));
}

TEST_F(ConnectionTest, pendingRequestsFailWhenTheConnectionEnds)
{
    QList<Responder> held;
    far.connection->onRequest(echo, [&](const QJsonObject &, const Responder &responder) { held.append(responder); });
    int failed = 0;
    const auto count = [&](const Reply &reply) {
        EXPECT_TRUE(near.events.isEmpty()) << "requests fail before the end is announced";
        failed += reply.isError() && reply.error->code == Disconnected ? 1 : 0;
    };
    near.connection->sendRequest(echo, {}, count);
    near.connection->sendRequest(echo, {}, count);
    near.connection->sendRequest(echo, {}, nullptr);
    ASSERT_TRUE(waitUntil([&] { return held.size() == 3; }));
    delete far.connection;
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(failed, 2);
    held.at(0).respond();
    held.at(1).fail(InternalError, QString());
}

TEST_F(ConnectionTest, aRequestAfterTheEndFailsFromTheEventLoop)
{
    near.connection->close();
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    std::optional<Reply> reply;
    near.connection->sendRequest(echo, {}, [&](const Reply &r) { reply = r; });
    near.connection->notify(echo, {});
    EXPECT_FALSE(reply.has_value());
    ASSERT_TRUE(waitUntil([&] { return reply.has_value(); }));
    ASSERT_TRUE(reply->isError());
    EXPECT_EQ(reply->error->code, Disconnected);
}

TEST_F(ConnectionTest, destructionDropsPendingRequestsWithoutCalls)
{
    bool called = false;
    near.connection->sendRequest(echo, {}, [&](const Reply &) { called = true; });
    delete near.connection;
    ASSERT_TRUE(waitUntil([&] { return far.events.contains(QStringLiteral("end")); }));
    EXPECT_FALSE(called);
}

TEST_F(ConnectionTest, aNotificationHandlerMayDeleteTheConnection)
{
    int seen = 0;
    far.connection->onNotification(echo, [&](const QJsonObject &) {
        ++seen;
        delete far.connection;
    });
    near.connection->notify(echo, {});
    near.connection->notify(echo, {});
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(seen, 1);
}

TEST_F(ConnectionTest, aRequestHandlerMayDeleteTheConnectionAndAnswer)
{
    far.connection->onRequest(echo, [&](const QJsonObject &, const Responder &responder) {
        delete far.connection;
        responder.respond(1);
    });
    std::optional<Reply> reply;
    near.connection->sendRequest(echo, {}, [&](const Reply &r) { reply = r; });
    ASSERT_TRUE(waitUntil([&] { return reply.has_value(); }));
    ASSERT_TRUE(reply->isError());
    EXPECT_EQ(reply->error->code, Disconnected);
}

TEST_F(ConnectionTest, aHandlerMayHoldTheResponderOfItsOwnConnection)
{
    auto kept = std::make_shared<std::optional<Responder>>();
    far.connection->onRequest(echo, [kept](const QJsonObject &, const Responder &responder) { *kept = responder; });
    near.connection->sendRequest(echo, {}, nullptr);
    ASSERT_TRUE(waitUntil([&] { return kept->has_value(); }));
    kept.reset();
    delete far.connection;
    EXPECT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
}

TEST_F(ConnectionTest, aReplyHandlerMayDeleteTheConnection)
{
    far.connection->onRequest(echo, answerWithParams);
    bool called = false;
    near.connection->sendRequest(echo, {}, [&](const Reply &) {
        called = true;
        delete near.connection;
    });
    ASSERT_TRUE(waitUntil([&] { return called; }));
    EXPECT_TRUE(near.connection.isNull());
}

TEST_F(ConnectionTest, aHandlerOfTheLastErrorMayDeleteTheConnection)
{
    int called = 0;
    const auto handler = [&](const Reply &) {
        ++called;
        delete near.connection;
    };
    near.connection->sendRequest(QStringLiteral("never"), {}, handler);
    near.connection->sendRequest(QStringLiteral("never"), {}, handler);
    near.connection->close();
    ASSERT_TRUE(waitUntil([&] { return near.connection.isNull(); }));
    EXPECT_EQ(called, 1);
}

TEST_F(ConnectionTest, aHandlerMayReplaceItself)
{
    QStringList seen;
    far.connection->onNotification(echo, [&](const QJsonObject &) {
        far.connection->onNotification(echo, [&](const QJsonObject &) { seen << QStringLiteral("second"); });
        seen << QStringLiteral("first");
    });
    near.connection->notify(echo, {});
    near.connection->notify(echo, {});
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

TEST_F(ConnectionTest, messagesAreHandledInsideAHandlersOwnEventLoop)
{
    QEventLoop modal;
    QStringList order;
    far.connection->onRequest(QStringLiteral("open"), [&](const QJsonObject &, const Responder &responder) {
        // Sent from inside the handler, so its bytes can only arrive there.
        near.connection->sendRequest(QStringLiteral("close"), {}, [&](const Reply &) {
            order << QStringLiteral("answered");
            modal.quit();
        });
        QTimer::singleShot(std::chrono::seconds(10), &modal, &QEventLoop::quit);
        modal.exec();
        order << QStringLiteral("left");
        responder.respond();
    });
    far.connection->onRequest(QStringLiteral("close"), [&](const QJsonObject &, const Responder &responder) {
        order << QStringLiteral("handled");
        responder.respond();
    });
    bool opened = false;
    near.connection->sendRequest(QStringLiteral("open"), {}, [&](const Reply &) { opened = true; });
    ASSERT_TRUE(waitUntil([&] { return opened; }, std::chrono::seconds(20)));
    EXPECT_EQ(order, QStringList({QStringLiteral("handled"), QStringLiteral("answered"), QStringLiteral("left")}));
}

TEST_F(ConnectionTest, aMessageOfTheLimitPassesAndALongerOneEndsTheConnection)
{
    const auto lengthOf = [](int n) {
        return QJsonDocument(QJsonObject{{QStringLiteral("jsonrpc"), QStringLiteral("2.0")},
                                         {QStringLiteral("method"), echo},
                                         {QStringLiteral("params"),
                                          QJsonObject{{QStringLiteral("t"), QString(n, QLatin1Char('x'))}}}})
            .toJson(QJsonDocument::Compact)
            .size();
    };
    far.connection->setMessageLimit(lengthOf(100000));
    int seen = 0;
    far.connection->onNotification(echo, [&](const QJsonObject &) { ++seen; });
    near.connection->notify(echo, {{QStringLiteral("t"), QString(100000, QLatin1Char('x'))}});
    near.connection->notify(echo, {{QStringLiteral("t"), QString(100001, QLatin1Char('x'))}});
    ASSERT_TRUE(waitUntil([&] { return far.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(far.events, QStringList({QStringLiteral("error"), QStringLiteral("end")}));
    EXPECT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
}

TEST_F(ConnectionTest, aMessageOfSeveralMegabytesArrivesWhole)
{
    QString text;
    far.connection->onNotification(echo, [&](const QJsonObject &params) {
        text = params.value(QStringLiteral("t")).toString();
    });
    const QString sent(5 * 1024 * 1024, QLatin1Char('y'));
    near.connection->notify(echo, {{QStringLiteral("t"), sent}});
    ASSERT_TRUE(waitUntil([&] { return !text.isEmpty(); }));
    EXPECT_TRUE(text == sent);
}

TEST(Connection, takesWhatWasThereBeforeIt)
{
    const SocketPair sockets;
    sockets.far->write("{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n");
    sockets.far->flush();
    ASSERT_TRUE(waitUntil([&] { return sockets.near->bytesAvailable() > 0; }));
    Connection connection(sockets.near);
    int seen = 0;
    connection.onNotification(echo, [&](const QJsonObject &) { ++seen; });
    EXPECT_TRUE(waitUntil([&] { return seen == 1; }));
    delete sockets.far;
}

TEST(Connection, overAnUnconnectedSocketEndsAtOnce)
{
    Watched watched(new QLocalSocket);
    EXPECT_FALSE(watched.connection->isOpen());
    std::optional<Reply> reply;
    watched.connection->sendRequest(echo, {}, [&](const Reply &r) { reply = r; });
    EXPECT_TRUE(waitUntil([&] { return reply.has_value() && watched.events.contains(QStringLiteral("end")); }));
    EXPECT_TRUE(reply->isError());
}

TEST(Connection, survivesTheDeathOfItsSocket)
{
    const SocketPair sockets;
    Watched watched(sockets.near);
    delete sockets.near;
    watched.connection->notify(echo, {});
    EXPECT_TRUE(waitUntil([&] { return watched.events.contains(QStringLiteral("end")); }));
    EXPECT_FALSE(watched.connection->isOpen());
    delete sockets.far;
}

} // namespace
