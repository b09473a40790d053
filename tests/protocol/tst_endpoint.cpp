#include "protocol/endpoint.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include <sys/stat.h>
#include <unistd.h>

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

TEST(SocketDirectory, isNotMadeWhereOthersCouldTamperWithIt)
{
    const QTemporaryDir runtime;
    const QByteArray path = QFile::encodeName(runtime.path());
    const RuntimeDirectory variable(path);
    const auto isUsed = [&] { return SocketDirectory().socketPath().startsWith(runtime.path() + u'/'); };
    EXPECT_TRUE(isUsed());
    for (const mode_t mode : {0777, 0722, 0770, 0702}) {
        ASSERT_EQ(::chmod(path.constData(), mode), 0);
        EXPECT_FALSE(isUsed()) << std::oct << mode;
    }
    ASSERT_EQ(::chmod(path.constData(), 0700), 0);
    ASSERT_TRUE(QDir(runtime.path()).mkdir(QStringLiteral("inner")));
    const RuntimeDirectory inner(path + "/inner");
    EXPECT_TRUE(isUsed());
    ASSERT_EQ(::chmod(path.constData(), 0777), 0);
    EXPECT_FALSE(isUsed());
    ASSERT_EQ(::chmod(path.constData(), 0700), 0);
}

TEST(SocketDirectory, isNotMadeInADirectoryOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a directory away";
    const QTemporaryDir runtime;
    const QByteArray path = QFile::encodeName(runtime.path());
    ASSERT_EQ(::chown(path.constData(), 65534, 65534), 0);
    const RuntimeDirectory variable(path);
    const SocketDirectory directory;
    EXPECT_TRUE(directory.isValid());
    EXPECT_FALSE(directory.socketPath().startsWith(runtime.path()));
}

TEST(SocketDirectory, removesWhatAToolThatWasKilledLeftAndNothingElse)
{
    const QTemporaryDir runtime;
    const RuntimeDirectory variable(QFile::encodeName(runtime.path()));
    const QDir dir(runtime.path());
    // Of a killed tool, of one that has only begun, and of somebody else.
    for (const char *name : {"vantle-killed", "vantle-begins", "vantle-theirs-a"})
        ASSERT_TRUE(dir.mkdir(QLatin1String(name)));
    for (const char *name : {"vantle-killed/in-use", "vantle-killed/agent", "vantle-theirs-a/in-use"})
        ASSERT_TRUE(QFile(dir.filePath(QLatin1String(name))).open(QIODevice::WriteOnly));
    const SocketDirectory used;
    const SocketDirectory other;
    EXPECT_TRUE(QFileInfo::exists(QFileInfo(used.socketPath()).path()));
    EXPECT_FALSE(dir.exists(QStringLiteral("vantle-killed")));
    EXPECT_TRUE(dir.exists(QStringLiteral("vantle-begins")));
    EXPECT_TRUE(dir.exists(QStringLiteral("vantle-theirs-a")));
}

TEST(Peers, areKnownByTheSystem)
{
    const SocketDirectory directory;
    QLocalServer server;
    ASSERT_TRUE(server.listen(directory.socketPath()));
    QLocalSocket client;
    client.connectToServer(directory.socketPath());
    ASSERT_TRUE(client.waitForConnected());
    const auto peer = peerOf(client.socketDescriptor());
    ASSERT_TRUE(peer);
    EXPECT_TRUE(peer->isSameUser);
    EXPECT_EQ(peer->process, ::getpid());
    EXPECT_FALSE(peerOf(-1));
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
