#include "connectionends.h"
#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonDocument>

using namespace Vantle::Protocol;
using namespace VantleTest;

namespace {

const QString echo = QStringLiteral("echo");
const QString textKey = QStringLiteral("t");

/// Peers that send or ask for more than anybody can hold.
class Floods : public testing::Test
{
protected:
    Floods()
    {
        near.connection->onNotification(echo, [this](const QJsonObject &) { ++seen; });
        near.connection->onRequest(echo, [this](const QJsonObject &params, const Responder &responder) {
            ++seen;
            responder.respond(params);
        });
    }
    ~Floods() override { delete raw; }

    void write(const QByteArray &bytes)
    {
        raw->write(bytes);
        raw->flush();
    }
    QByteArray request(int id, qsizetype textLength) const
    {
        return QJsonDocument(QJsonObject{{QStringLiteral("jsonrpc"), QStringLiteral("2.0")},
                                         {QStringLiteral("id"), id},
                                         {QStringLiteral("method"), echo},
                                         {QStringLiteral("params"), textOf(textLength)}})
                   .toJson(QJsonDocument::Compact)
            + '\n';
    }
    static QJsonObject textOf(qsizetype length) { return {{textKey, QString(length, QLatin1Char('x'))}}; }
    QJsonObject nextMessage()
    {
        EXPECT_TRUE(waitUntil([this] { return raw->canReadLine(); }));
        return QJsonDocument::fromJson(raw->readLine()).object();
    }
    static QJsonObject errorIn(const QJsonObject &message) { return message.value(QStringLiteral("error")).toObject(); }

    SocketPair sockets;
    QLocalSocket *raw = sockets.far;
    Watched near{sockets.near};
    int seen = 0;
};

TEST_F(Floods, shortMessagesWaitInThePeerUntilTheirTurn)
{
    const QByteArray line = "{\"jsonrpc\":\"2.0\",\"method\":\"echo\"}\n";
    constexpr int count = 600000;
    write(line.repeated(count));
    // By now far more turns have passed than it takes to read all of it.
    ASSERT_TRUE(waitUntil([&] { return seen >= 10000; }));
    EXPECT_GT(raw->bytesToWrite(), 4 * 1024 * 1024);
}

TEST_F(Floods, everyMessageOfALongQueueIsHandledThoughItsPeerHasGone)
{
    const QByteArray line = "{\"jsonrpc\":\"2.0\",\"method\":\"echo\",\"params\":{\"t\":\"" + QByteArray(100000, 'x')
        + "\"}}\n";
    constexpr int count = 300;
    write(line.repeated(count));
    raw->disconnectFromServer();
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }, std::chrono::seconds(30)));
    EXPECT_EQ(seen, count);
    EXPECT_EQ(near.events, QStringList(QStringLiteral("end")));
}

TEST_F(Floods, whoReadsNoAnswersWaitsUntilItDoes)
{
    constexpr int count = 2000;
    constexpr qsizetype limit = 100000;
    near.connection->setMessageLimit(limit);
    raw->setReadBufferSize(1000);
    for (int id = 1; id <= count; ++id)
        write(request(id, 1000));
    ASSERT_TRUE(waitUntil([&] { return sockets.near->bytesToWrite() > limit; }));
    const int seenAtTheLimit = seen;
    EXPECT_LT(seenAtTheLimit, count);
    for (int turn = 0; turn < 500; ++turn)
        QCoreApplication::processEvents();
    EXPECT_EQ(seen, seenAtTheLimit);
    EXPECT_LT(sockets.near->bytesToWrite(), 2 * limit);

    raw->setReadBufferSize(0);
    for (int id = 1; id <= count; ++id)
        ASSERT_EQ(nextMessage().value(QStringLiteral("id")).toInt(), id);
    EXPECT_TRUE(near.connection->isOpen());
}

TEST_F(Floods, whoSendsOnWithoutReadingAnswersIsCutOff)
{
    near.connection->setMessageLimit(100000);
    raw->setReadBufferSize(1000);
    write(request(1, 1000).repeated(20000));
    ASSERT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
    EXPECT_EQ(near.events.constFirst(), QStringLiteral("error"));
    EXPECT_TRUE(near.lastText.contains(QStringLiteral("not read"))) << qPrintable(near.lastText);
    EXPECT_TRUE(waitUntil([&] { return raw->state() == QLocalSocket::UnconnectedState; }));
}

TEST_F(Floods, whoReadsNoAnswersMayLeave)
{
    near.connection->setMessageLimit(1000);
    raw->setReadBufferSize(1000);
    for (int id = 1; id <= 2000; ++id)
        write(request(id, 500));
    ASSERT_TRUE(waitUntil([&] { return sockets.near->bytesToWrite() > 1000; }));
    raw->abort();
    EXPECT_TRUE(waitUntil([&] { return near.events.contains(QStringLiteral("end")); }));
}

TEST_F(Floods, anAnswerThatIsTooLongBecomesAnError)
{
    near.connection->onRequest(QStringLiteral("grow"), [](const QJsonObject &, const Responder &responder) {
        responder.respond(textOf(2000));
    });
    near.connection->setMessageLimit(1000);
    write("{\"jsonrpc\":\"2.0\",\"id\":\"big\",\"method\":\"grow\"}\n");
    const QJsonObject answer = nextMessage();
    EXPECT_EQ(answer.value(QStringLiteral("id")), QJsonValue(QStringLiteral("big")));
    EXPECT_EQ(errorIn(answer).value(QStringLiteral("code")).toInt(), InternalError);
    EXPECT_EQ(errorIn(answer).value(QStringLiteral("message")).toString(),
              QStringLiteral("the answer has more than the 1000 bytes that a message may have"));
    write(request(1, 100));
    EXPECT_TRUE(nextMessage().contains(QStringLiteral("result")));
}

TEST_F(Floods, anErrorThatIsTooLongLosesItsDataAndItsEnd)
{
    near.connection->onRequest(QStringLiteral("fail"), [](const QJsonObject &, const Responder &responder) {
        responder.fail(ObjectNotFound, QString(20000, QLatin1Char('m')), textOf(20000));
    });
    near.connection->setMessageLimit(10000);
    write("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"fail\"}\n");
    const QJsonObject error = errorIn(nextMessage());
    EXPECT_EQ(error.value(QStringLiteral("code")).toInt(), ObjectNotFound);
    EXPECT_TRUE(error.value(QStringLiteral("message")).toString().startsWith(QStringLiteral("mmm")));
    EXPECT_FALSE(error.contains(QStringLiteral("data")));
}

TEST_F(Floods, aRequestThatIsTooLongFailsAndIsNotSent)
{
    near.connection->setMessageLimit(1000);
    std::optional<Reply> reply;
    near.connection->sendRequest(echo, textOf(2000), [&](const Reply &r) { reply = r; });
    EXPECT_FALSE(reply.has_value());
    ASSERT_TRUE(waitUntil([&] { return reply.has_value(); }));
    ASSERT_TRUE(reply->isError());
    EXPECT_EQ(reply->error->code, InvalidRequest);
    near.connection->notify(QStringLiteral("mark"), {});
    EXPECT_EQ(nextMessage().value(QStringLiteral("method")).toString(), QStringLiteral("mark"));
}

TEST_F(Floods, aNotificationThatIsTooLongIsNotSentButNamed)
{
    near.connection->setMessageLimit(1000);
    expectWarning(QStringLiteral("a message \"echo\" was not sent"));
    near.connection->notify(echo, textOf(2000));
    near.connection->notify(QStringLiteral("mark"), {});
    EXPECT_EQ(nextMessage().value(QStringLiteral("method")).toString(), QStringLiteral("mark"));
}

} // namespace
