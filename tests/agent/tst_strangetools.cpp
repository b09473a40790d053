#include "agent/agent.h"

#include "support/waiting.h"
#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

#include <unistd.h>

using namespace Vantle::Agent;

// Where another user can make the socket, he is not let into the program.
TEST(StrangeTools, OfAnotherUserGetNoToken)
{
    const QString runuser = QStandardPaths::findExecutable(QStringLiteral("runuser"), {QStringLiteral("/usr/sbin")});
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"), {QStringLiteral("/usr/bin")});
    if (::geteuid() != 0 || runuser.isEmpty() || python.isEmpty())
        GTEST_SKIP() << "only root can become somebody else";
    const QTemporaryDir directory;
    ASSERT_EQ(::chown(QFile::encodeName(directory.path()).constData(), 65534, 65534), 0);
    const QString socket = directory.filePath(QStringLiteral("agent"));
    QProcess tool;
    tool.start(runuser,
               {QStringLiteral("-u"), QStringLiteral("nobody"), QStringLiteral("--"), python, QStringLiteral("-c"),
                QStringLiteral("import socket, sys\n"
                               "s = socket.socket(socket.AF_UNIX); s.bind(sys.argv[1]); s.listen(); s.settimeout(20)\n"
                               "print('listening', flush=True)\n"
                               "c, _ = s.accept(); c.settimeout(20)\n"
                               "print('got', len(c.recv(1000)), flush=True)\n"),
                socket});
    QByteArray output;
    const auto says = [&](const char *text) {
        return VantleTest::waitUntil(
            [&] {
                output += tool.readAllStandardOutput();
                return output.contains(text);
            },
            std::chrono::seconds(20));
    };
    ASSERT_TRUE(says("listening")) << tool.readAllStandardError().constData();
    VantleTest::expectWarning(QStringLiteral("belongs to another user"));
    const Agent agent({socket, "secret"});
    EXPECT_TRUE(says("got 0\n")) << output.constData();
    tool.waitForFinished();
}
