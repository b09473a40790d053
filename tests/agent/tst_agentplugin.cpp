#include "protocol/endpoint.h"
#include "support/waiting.h"
#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QPluginLoader>
#include <QtGui/QGenericPlugin>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include <memory>

using namespace Vantle;

namespace {

/// The plugin as the build made it, and the environment as a tool leaves it.
class AgentPlugin : public testing::Test
{
protected:
    void SetUp() override
    {
        m_loader.setFileName(QStringLiteral(VANTLE_AGENT_PLUGIN));
        m_plugin = qobject_cast<QGenericPlugin *>(m_loader.instance());
        ASSERT_NE(m_plugin, nullptr) << qPrintable(m_loader.errorString());
    }
    void TearDown() override
    {
        qunsetenv(Protocol::Variable::socket);
        qunsetenv(Protocol::Variable::token);
    }

    std::unique_ptr<QObject> create(const char *key)
    {
        return std::unique_ptr<QObject>(m_plugin->create(QString::fromLatin1(key), QString()));
    }
    QJsonObject metaData() const { return m_loader.metaData(); }

private:
    QPluginLoader m_loader;
    QGenericPlugin *m_plugin = nullptr;
};

} // namespace

TEST_F(AgentPlugin, IsFoundUnderItsKey)
{
    const QJsonArray keys = metaData().value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("Keys"))
                                .toArray();
    EXPECT_EQ(keys, QJsonArray{QStringLiteral("vantle")});
    EXPECT_NE(create("vantle"), nullptr);
    EXPECT_NE(create("Vantle"), nullptr);
    EXPECT_EQ(create("tslib"), nullptr);
    EXPECT_EQ(create(""), nullptr);
}

TEST_F(AgentPlugin, WithoutInvitationDoesNothing)
{
    const std::unique_ptr<QObject> agent = create("vantle");
    ASSERT_NE(agent, nullptr);
    EXPECT_STREQ(agent->metaObject()->className(), "QObject");
    EXPECT_TRUE(agent->children().isEmpty());
}

TEST_F(AgentPlugin, LeavesTheProgramAloneWhenNoToolCanBeReached)
{
    qputenv(Protocol::Variable::socket, "/nowhere/vantle/socket");
    qputenv(Protocol::Variable::token, "secret");
    VantleTest::expectWarning(QStringLiteral("cannot reach the tool"));
    const std::unique_ptr<QObject> agent = create("vantle");
    ASSERT_NE(agent, nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(agent->children().isEmpty());
}

TEST_F(AgentPlugin, CallsTheToolFromTheEventLoopOnly)
{
    const Protocol::SocketDirectory directory;
    QLocalServer server;
    ASSERT_TRUE(server.listen(directory.socketPath()));
    qputenv(Protocol::Variable::socket, directory.socketPath().toLocal8Bit());
    qputenv(Protocol::Variable::token, "secret");

    const std::unique_ptr<QObject> agent = create("vantle");
    EXPECT_FALSE(server.waitForNewConnection(0));
    ASSERT_TRUE(VantleTest::waitUntil([&] { return server.hasPendingConnections(); }));
    QLocalSocket *const call = server.nextPendingConnection();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return call->canReadLine(); }));
    const QByteArray hello = call->readLine();
    EXPECT_TRUE(hello.contains("\"hello\"")) << hello.constData();
    EXPECT_TRUE(hello.contains("\"secret\"")) << hello.constData();
}

TEST_F(AgentPlugin, MayGoBeforeItHasCalled)
{
    qputenv(Protocol::Variable::socket, "/nowhere/vantle/socket");
    qputenv(Protocol::Variable::token, "secret");
    create("vantle").reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(qEnvironmentVariableIsSet(Protocol::Variable::token));
}
