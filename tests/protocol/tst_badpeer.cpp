#include "connectionends.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonDocument>

using namespace Vantle::Protocol;
using namespace VantleTest;

namespace {

const QString echo = QStringLiteral("echo");

/// The far end is raw bytes, for a peer that breaks the rules.
class RawPeerTest : public testing::Test
{
protected:
    ~RawPeerTest() override { delete raw; }

    void write(const QByteArray &bytes)
    {
        raw->write(bytes);
        raw->flush();
    }

    QJsonObject nextMessage()
    {
        EXPECT_TRUE(waitUntil([this] { return raw->canReadLine(); }));
        return QJsonDocument::fromJson(raw->readLine()).object();
    }

    int nextErrorCode()
    {
        const QJsonObject message = nextMessage();
        EXPECT_EQ(message.value(QStringLiteral("jsonrpc")).toString(), QStringLiteral("2.0"));
        lastId = message.value(QStringLiteral("id"));
        return message.value(QStringLiteral("error")).toObject().value(QStringLiteral("code")).toInt();
    }

    SocketPair sockets;
    QLocalSocket *raw = sockets.far;
    Watched near{sockets.near};
    QJsonValue lastId;
};

void answerWithParams(const QJsonObject &params, const Responder &responder)
{
    responder.respond(params);
}

TEST_F(RawPeerTest, aRequestIsOneLineOfJsonRpc)
{
    near.connection->sendRequest(echo, {{QStringLiteral("a"), QStringLiteral("1\n2")}}, nullptr);
    const QJsonObject message = nextMessage();
    EXPECT_EQ(message.value(QStringLiteral("jsonrpc")).toString(), QStringLiteral("2.0"));
    EXPECT_EQ(message.value(QStringLiteral("method")).toString(), echo);
    EXPECT_TRUE(message.value(QStringLiteral("id")).isDouble());
    EXPECT_EQ(message.value(QStringLiteral("params")).toObject().value(QStringLiteral("a")).toString(),
              QStringLiteral("1\n2"));
    EXPECT_EQ(raw->bytesAvailable(), 0);
}

TEST_F(RawPeerTest, stringIdsAndNullIdsComeBackAsTheyWere)
{
    near.connection->onRequest(echo, answerWithParams);
    write("{\"jsonrpc\":\"2.0\",\"id\":\"x-1\",\"method\":\"echo\"}\r\n"
          "{\"jsonrpc\":\"2.0\",\"id\":null,\"method\":\"echo\",\"params\":{}}\n");
    const QJsonObject first = nextMessage();
    EXPECT_EQ(first.value(QStringLiteral("id")), QJsonValue(QStringLiteral("x-1")));
    EXPECT_TRUE(first.value(QStringLiteral("result")).isObject());
    const QJsonObject second = nextMessage();
    EXPECT_TRUE(second.value(QStringLiteral("id")).isNull());
    EXPECT_TRUE(second.contains(QStringLiteral("result")));
}

TEST_F(RawPeerTest, badMessagesGetTheirErrorCodeAndTheConnectionGoesOn)
{
    struct Case
    {
        QByteArray line;
        int code;
        QJsonValue id;
    };
    const QJsonValue null(QJsonValue::Null);
    const Case cases[] = {
        {"garbage", ParseError, null},
        {"{\"jsonrpc\":\"2.0\",", ParseError, null},
        {"{\"a\":\"\xff\xfe\"}", ParseError, null},
        {QByteArray(5000, '['), ParseError, null},
        {QByteArray(100000, '['), ParseError, null},
        {QByteArray("{\"a\":").repeated(100000), ParseError, null},
        {"{\"jsonrpc\":\"2.0\",\"id\":\"" + QByteArray(1025, 'i') + "\",\"method\":\"echo\"}", InvalidRequest, null},
        {QByteArray("\0\0\0", 3), ParseError, null},
        {"[]", InvalidRequest, null},
        {"[{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"echo\"}]", InvalidRequest, null},
        {"{}", InvalidRequest, null},
        {"{\"jsonrpc\":\"2.0\",\"id\":5}", InvalidRequest, 5},
        {"{\"id\":6,\"method\":\"echo\"}", InvalidRequest, 6},
        {"{\"jsonrpc\":\"1.0\",\"id\":7,\"method\":\"echo\"}", InvalidRequest, 7},
        {"{\"jsonrpc\":2,\"id\":8,\"method\":\"echo\"}", InvalidRequest, 8},
        {"{\"jsonrpc\":\"2.0\",\"id\":9,\"method\":1}", InvalidRequest, 9},
        {"{\"jsonrpc\":\"2.0\",\"id\":{},\"method\":\"echo\"}", InvalidRequest, null},
        {"{\"jsonrpc\":\"2.0\",\"id\":10,\"method\":\"echo\",\"params\":[1]}", InvalidParams, 10},
        {"{\"jsonrpc\":\"2.0\",\"id\":11,\"method\":\"echo\",\"params\":null}", InvalidParams, 11},
        {"{\"jsonrpc\":\"2.0\",\"id\":12,\"method\":\"other\"}", MethodNotFound, 12},
    };
    near.connection->onRequest(echo, [](const QJsonObject &, const Responder &) { ADD_FAILURE(); });
    for (const Case &c : cases) {
        write(c.line + '\n');
        EXPECT_EQ(nextErrorCode(), c.code) << c.line.constData();
        EXPECT_EQ(lastId, c.id) << c.line.constData();
    }
    EXPECT_TRUE(near.connection->isOpen());
    EXPECT_EQ(near.events.size(), qsizetype(std::size(cases)));
}

TEST_F(RawPeerTest, answersAreNeverAnswered)
{
    near.connection->onRequest(echo, answerWithParams);
    write("{\"jsonrpc\":\"2.0\",\"id\":99,\"result\":{}}\n"
          "{\"jsonrpc\":\"2.0\",\"id\":null,\"error\":{\"code\":-32700,\"message\":\"broken\"}}\n"
          "{\"jsonrpc\":\"2.0\",\"id\":1.5,\"result\":{}}\n"
          "{\"error\":[]}\n"
          "\n   \n"
          "{\"jsonrpc\":\"2.0\",\"method\":\"unknown notification\"}\n"
          "{\"jsonrpc\":\"2.0\",\"method\":\"echo\",\"params\":[]}\n"
          "{\"jsonrpc\":\"2.0\",\"id\":\"mark\",\"method\":\"echo\"}\n");
    EXPECT_EQ(nextMessage().value(QStringLiteral("id")), QJsonValue(QStringLiteral("mark")));
    EXPECT_EQ(near.events.size(), 6);
}

TEST_F(RawPeerTest, anErrorWithoutItsFieldsIsStillAnError)
{
    QList<Reply> replies;
    for (int i = 0; i < 3; ++i)
        near.connection->sendRequest(echo, {}, [&](const Reply &reply) { replies.append(reply); });
    QList<QByteArray> ids;
    for (int i = 0; i < 3; ++i)
        ids.append(QByteArray::number(nextMessage().value(QStringLiteral("id")).toInteger()));
    write("{\"jsonrpc\":\"2.0\",\"id\":" + ids.at(0) + ",\"error\":\"no object\"}\n");
    write("{\"jsonrpc\":\"2.0\",\"id\":" + ids.at(1) + ",\"error\":{\"code\":\"x\",\"message\":3}}\n");
    write("{\"jsonrpc\":\"2.0\",\"id\":" + ids.at(2) + ",\"error\":null,\"result\":1}\n");
    ASSERT_TRUE(waitUntil([&] { return replies.size() == 3; }));
    for (const Reply &reply : replies) {
        ASSERT_TRUE(reply.isError());
        EXPECT_EQ(reply.error->code, InternalError);
        EXPECT_FALSE(reply.error->message.isEmpty());
    }
}

TEST_F(RawPeerTest, aMessageMayComeByteByByte)
{
    int seen = 0;
    near.connection->onNotification(echo, [&](const QJsonObject &) { ++seen; });
    const QByteArray line = "{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n";
    for (const char byte : line) {
        EXPECT_EQ(seen, 0);
        write(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(waitUntil([&] { return seen == 1; }));
}

TEST_F(RawPeerTest, halfAMessageAtTheEndIsReportedAndNotHandled)
{
    int seen = 0;
    near.connection->onNotification(echo, [&](const QJsonObject &) { ++seen; });
    write("{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}");
    raw->disconnectFromServer();
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(near.events, QStringList({QStringLiteral("refused"), QStringLiteral("end")}));
}

TEST_F(RawPeerTest, anEndlessLineEndsTheConnectionAtTheLimit)
{
    near.connection->setMessageLimit(1000);
    write(QByteArray(2000, 'x'));
    EXPECT_EQ(nextErrorCode(), InvalidRequest);
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_TRUE(near.lastText.contains(QStringLiteral("more than 1000 bytes"))) << qPrintable(near.lastText);
    EXPECT_EQ(near.events, QStringList({QStringLiteral("error"), QStringLiteral("end")}));
    EXPECT_FALSE(near.connection->isOpen());
    EXPECT_TRUE(waitUntil([&] { return raw->state() == QLocalSocket::UnconnectedState; }));
}

TEST_F(RawPeerTest, anErrorSentJustBeforeClosingArrives)
{
    near.connection->onRequest(echo, [&](const QJsonObject &, const Responder &responder) {
        responder.fail(Refused, QStringLiteral("go away"));
        near.connection->close();
    });
    write("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"echo\"}\n");
    EXPECT_EQ(nextErrorCode(), Refused);
    EXPECT_TRUE(waitUntil([&] { return raw->state() == QLocalSocket::UnconnectedState; }));
}

TEST_F(RawPeerTest, aClosedConnectionHandlesNothingMore)
{
    int seen = 0;
    near.connection->onNotification(echo, [&](const QJsonObject &) {
        ++seen;
        near.connection->close();
    });
    write("{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n");
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    near.connection->close();
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(near.events, QStringList(QStringLiteral("end")));
}

TEST_F(RawPeerTest, waitingForTheSystemToTakeWhatWasSentHasALimit)
{
    near.connection->notify(echo, {});
    EXPECT_TRUE(near.connection->waitForSent(std::chrono::seconds(5)));
    // More than the system holds for a reader that does not read.
    for (int i = 0; i < 5000; ++i)
        near.connection->notify(echo, {{QStringLiteral("t"), QString(1000, QLatin1Char('x'))}});
    EXPECT_FALSE(near.connection->waitForSent(std::chrono::milliseconds(1)));
    near.connection->close();
    EXPECT_FALSE(near.connection->waitForSent(std::chrono::seconds(5)));
}

TEST_F(RawPeerTest, closingAfterInputHandlesWhatHasArrived)
{
    int seen = 0;
    near.connection->onNotification(echo, [&](const QJsonObject &) { ++seen; });
    for (int i = 0; i < 200; ++i)
        write("{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n");
    near.connection->closeAfterInput();
    EXPECT_FALSE(near.connection->isOpen());
    near.connection->closeAfterInput();
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(seen, 200);
    EXPECT_EQ(near.events, QStringList(QStringLiteral("end")));
    EXPECT_TRUE(waitUntil([&] { return raw->state() == QLocalSocket::UnconnectedState; }));
}

} // namespace
