#include "protocol/endpoint.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

using namespace Vantle::Protocol;

namespace {

class RuntimeDirectory
{
public:
    explicit RuntimeDirectory(const QByteArray &value) : m_before(qgetenv("XDG_RUNTIME_DIR"))
    {
        qputenv("XDG_RUNTIME_DIR", value);
    }
    ~RuntimeDirectory() { qputenv("XDG_RUNTIME_DIR", m_before); }
    Q_DISABLE_COPY_MOVE(RuntimeDirectory)

private:
    QByteArray m_before;
};

TEST(Token, has32BytesInHexadecimalAndIsNewEachTime)
{
    const QByteArray token = createToken();
    EXPECT_EQ(token.size(), 64);
    EXPECT_EQ(QByteArray::fromHex(token).toHex(), token);
    EXPECT_NE(createToken(), token);
}

TEST(Token, isTheSameOnlyIfEveryByteIs)
{
    EXPECT_TRUE(sameToken("abcd", "abcd"));
    EXPECT_FALSE(sameToken("abcd", "abce"));
    EXPECT_FALSE(sameToken("abcd", "bbcd"));
    EXPECT_FALSE(sameToken("abcd", "abc"));
    EXPECT_FALSE(sameToken("abcd", ""));
}

TEST(Token, emptyTokensAreNeverTheSame)
{
    EXPECT_FALSE(sameToken("", ""));
    EXPECT_FALSE(sameToken(QByteArrayView(), QByteArrayView()));
}

TEST(SocketDirectory, onlyItsOwnerCanEnterAndItGoesWithTheObject)
{
    QString path;
    {
        const SocketDirectory directory;
        ASSERT_TRUE(directory.isValid()) << qPrintable(directory.errorString());
        path = QFileInfo(directory.socketPath()).path();
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
            | QFile::WriteOther | QFile::ExeOther;
        EXPECT_FALSE(QFileInfo(path).permissions() & others);
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST(SocketDirectory, twoDirectoriesDontMeet)
{
    const SocketDirectory one;
    const SocketDirectory other;
    EXPECT_NE(one.socketPath(), other.socketPath());
}

TEST(SocketDirectory, usesTheRuntimeDirectoryOfTheSession)
{
    const QTemporaryDir runtime;
    const RuntimeDirectory variable(QFile::encodeName(runtime.path()));
    const SocketDirectory directory;
    EXPECT_TRUE(directory.socketPath().startsWith(runtime.path() + QLatin1Char('/')));
}

TEST(SocketDirectory, fallsBackWhereTheRuntimeDirectoryIsMissingOrTooDeep)
{
    const QTemporaryDir base;
    const QString deep = base.path() + QLatin1Char('/') + QString(90, QLatin1Char('d'));
    ASSERT_TRUE(QDir().mkpath(deep));
    const QByteArray unusable[] = {QFile::encodeName(deep), "/nowhere/at/all", "relative", ""};
    for (const QByteArray &value : unusable) {
        const RuntimeDirectory variable(value);
        const SocketDirectory directory;
        ASSERT_TRUE(directory.isValid()) << value.constData();
        EXPECT_LE(QFile::encodeName(directory.socketPath()).size(), 90) << value.constData();
    }
}

TEST(SocketDirectory, aServerCanListenThereAndBeReached)
{
    const SocketDirectory directory;
    QLocalServer server;
    server.setSocketOptions(QLocalServer::UserAccessOption);
    ASSERT_TRUE(server.listen(directory.socketPath())) << qPrintable(server.errorString());
    QLocalSocket socket;
    socket.connectToServer(directory.socketPath());
    EXPECT_TRUE(socket.waitForConnected(5000));
}

} // namespace
