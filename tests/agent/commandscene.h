#pragma once

#include "agent/commands.h"
#include "agent/host.h"
#include "protocol/connection.h"
#include "protocol/messages.h"
#include "protocol/objectmessages.h"
#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>
#include <optional>

namespace VantleTest {

/// The agent's half of a conversation over a QML document, and the tool's.
class CommandScene : public testing::Test
{
protected:
    using Reply = Vantle::Protocol::Reply;

    CommandScene() { connectEnds(); }
    ~CommandScene() override { endAgent(); }

    void SetUp() override { startAgent({}); }

    void startAgent(const Vantle::Protocol::HelloResult &settings)
    {
        endAgent();
        m_host = std::make_unique<Vantle::Agent::Host>(settings, m_agentEnd.get(), QDir::tempPath());
        m_commands = std::make_unique<Vantle::Agent::Commands>(m_host.get(), m_agentEnd.get());
    }
    void endAgent()
    {
        m_commands.reset();
        m_host.reset();
    }

    /// Makes the document \p qml; a window that it shows is on the screen afterwards.
    void load(const QByteArray &qml)
    {
        m_root.reset();
        QQmlComponent component(&m_engine);
        component.setData(qml, {});
        m_root.reset(component.create());
        ASSERT_TRUE(m_root) << qPrintable(component.errorString());
        const bool isShown = window() && window()->isVisible();
        ASSERT_TRUE(!isShown || waitUntil([this] { return window()->isExposed(); }));
    }

    QObject *root() const { return m_root.get(); }
    QQuickWindow *window() const { return qobject_cast<QQuickWindow *>(m_root.get()); }
    void destroyRoot() { m_root.reset(); }

    template<typename T = QQuickItem>
    T *find(const char *objectName) const
    {
        T *const object = m_root->findChild<T *>(QString::fromLatin1(objectName));
        EXPECT_TRUE(object) << "no object " << objectName;
        return object;
    }

    /// Sends a request; the answer, once it has come, goes to the result.
    std::shared_ptr<std::optional<Reply>> post(const char *method, const QJsonObject &params = {})
    {
        auto reply = std::make_shared<std::optional<Reply>>();
        m_toolEnd->sendRequest(QString::fromLatin1(method), params, [reply](const Reply &r) { *reply = r; });
        return reply;
    }
    Reply answerTo(const char *method, const QJsonObject &params = {})
    {
        const auto reply = post(method, params);
        EXPECT_TRUE(waitUntil([&] { return reply->has_value(); })) << method;
        return reply->value_or(Reply{QJsonValue(), Vantle::Protocol::Error{}});
    }
    /// The result of a request that has to succeed.
    QJsonObject ask(const char *method, const QJsonObject &params = {})
    {
        const Reply reply = answerTo(method, params);
        EXPECT_FALSE(reply.isError()) << method << ": "
                                      << qPrintable(reply.isError() ? reply.error->message : QString());
        return reply.result.toObject();
    }
    /// The error of a request that has to fail.
    Vantle::Protocol::Error failureOf(const char *method, const QJsonObject &params = {})
    {
        const Reply reply = answerTo(method, params);
        EXPECT_TRUE(reply.isError()) << method << " succeeded";
        return reply.error.value_or(Vantle::Protocol::Error{0, QString()});
    }

    int handleOf(const char *name)
    {
        return ask("find", {{QStringLiteral("name"), QString::fromUtf8(name)}}).value(QStringLiteral("object")).toInt();
    }

    Vantle::Protocol::Connection *toolEnd() { return m_toolEnd.get(); }
    Vantle::Protocol::Connection *agentEnd() { return m_agentEnd.get(); }
    Vantle::Agent::Host *host() { return m_host.get(); }

private:
    void connectEnds()
    {
        QLocalServer server;
        ASSERT_TRUE(server.listen(m_directory.filePath(QStringLiteral("s"))));
        auto near = std::make_unique<QLocalSocket>();
        near->connectToServer(server.fullServerName());
        ASSERT_TRUE(server.waitForNewConnection(5000));
        QLocalSocket *const far = server.nextPendingConnection();
        far->setParent(nullptr);
        ASSERT_TRUE(near->waitForConnected(5000));
        m_toolEnd = std::make_unique<Vantle::Protocol::Connection>(near.release());
        m_agentEnd = std::make_unique<Vantle::Protocol::Connection>(far);
    }

    QTemporaryDir m_directory;
    std::unique_ptr<Vantle::Protocol::Connection> m_toolEnd;
    std::unique_ptr<Vantle::Protocol::Connection> m_agentEnd;
    std::unique_ptr<Vantle::Agent::Host> m_host;
    std::unique_ptr<Vantle::Agent::Commands> m_commands;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

/// An object of JSON as it is written.
inline QJsonObject json(const char *text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text), &error);
    EXPECT_TRUE(document.isObject()) << text << ": " << qPrintable(error.errorString());
    return document.object();
}

} // namespace VantleTest
