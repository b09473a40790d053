#pragma once

#include "protocol/connection.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

namespace VantleTest {

/// Two connected sockets.
struct SocketPair
{
    SocketPair()
    {
        server.listen(directory.filePath(QStringLiteral("s")));
        near = new QLocalSocket;
        near->connectToServer(server.fullServerName());
        EXPECT_TRUE(server.waitForNewConnection(5000));
        far = server.nextPendingConnection();
        far->setParent(nullptr);
        EXPECT_TRUE(waitUntil([this] { return near->state() == QLocalSocket::ConnectedState; }));
    }

    QTemporaryDir directory;
    QLocalServer server;
    QLocalSocket *near = nullptr;
    QLocalSocket *far = nullptr;
};

/// A connection, and what it says about its own state.
struct Watched
{
    explicit Watched(QIODevice *device) : connection(new Vantle::Protocol::Connection(device))
    {
        using Vantle::Protocol::Connection;
        QObject::connect(connection, &Connection::disconnected, connection,
                         [this] { events << QStringLiteral("end"); });
        QObject::connect(connection, &Connection::protocolError, connection,
                         [this](const QString &text) { events << QStringLiteral("error"); lastText = text; });
        QObject::connect(connection, &Connection::messageRefused, connection,
                         [this](const QString &text) { events << QStringLiteral("refused"); lastText = text; });
    }
    ~Watched() { delete connection; }
    Q_DISABLE_COPY_MOVE(Watched)

    QPointer<Vantle::Protocol::Connection> connection;
    QStringList events;
    QString lastText;
};

} // namespace VantleTest
