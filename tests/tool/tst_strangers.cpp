#include "toolrun.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtNetwork/QLocalSocket>

#include <csignal>
#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using namespace VantleTest;

namespace {

const QString clickLine = QStringLiteral("mouseClick(\"object\");\n");

/// Others than the agent at the tool's socket, while the program has not called
/// yet, or has.
class Strangers : public testing::Test
{
protected:
    /// Actions of an agent that calls when it is told to.
    QStringList waitingAgent() const
    {
        return {action("environment", "environment"),
                action("pid", "pid"),
                action("until", "call"),
                QStringLiteral("hello"),
                QStringLiteral("statement:mouseClick"),
                action("until", "end")};
    }
    QString path(const char *name) const { return directory.filePath(QLatin1String(name)); }
    QString action(const char *name, const char *file) const
    {
        return QLatin1String(name) + QLatin1Char(':') + path(file);
    }
    void let(const char *name) const { QFile(path(name)).open(QIODevice::WriteOnly); }

    QString variable(const char *name) const
    {
        const QString start = QLatin1String(name) + QLatin1Char('=');
        const QStringList lines = awaitFile(path("environment")).split(QLatin1Char('\n'));
        for (const QString &line : lines) {
            if (line.startsWith(start))
                return line.mid(start.size());
        }
        ADD_FAILURE() << "the program has no " << name;
        return {};
    }

    std::unique_ptr<QLocalSocket> connected() const
    {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(variable("VANTLE_AGENT_SOCKET"));
        EXPECT_TRUE(socket->waitForConnected(5000)) << qPrintable(socket->errorString());
        return socket;
    }

    /// How many files the tool, the parent of its program, has open.
    qsizetype filesOfTool() const
    {
        const QString status = contentOf(QStringLiteral("/proc/%1/stat").arg(awaitFile(path("pid"))));
        const QString parent = status.section(QLatin1Char(')'), -1).section(QLatin1Char(' '), 2, 2);
        return QDir(QStringLiteral("/proc/%1/fd").arg(parent)).entryList(QDir::Files | QDir::System).size();
    }

    QTemporaryDir directory;
};

bool isGone(const QLocalSocket *socket)
{
    return waitUntil([&] { return socket->state() == QLocalSocket::UnconnectedState; });
}

/// A hello with everything but \p token right.
QByteArray helloWith(const QString &token)
{
    const QJsonObject params{{QStringLiteral("token"), token},
                             {QStringLiteral("protocol"), 1},
                             {QStringLiteral("version"), QStringLiteral("1")},
                             {QStringLiteral("pid"), 1},
                             {QStringLiteral("program"), QStringLiteral("stranger")},
                             {QStringLiteral("qtVersion"), QStringLiteral("6")},
                             {QStringLiteral("platform"), QStringLiteral("none")}};
    return QJsonDocument(QJsonObject{{QStringLiteral("jsonrpc"), QStringLiteral("2.0")},
                                     {QStringLiteral("id"), 1},
                                     {QStringLiteral("method"), QStringLiteral("hello")},
                                     {QStringLiteral("params"), params}})
        .toJson(QJsonDocument::Compact);
}

TEST_F(Strangers, getOneErrorAndThenTheEndWhateverTheySay)
{
    struct Case
    {
        QByteArray line;
        int code;
    };
    const Case cases[] = {
        {"garbage", -32700},
        {QByteArray(256, '\0'), -32700},
        {"{\"a\":\"\xff\xfe\"}", -32700},
        {QByteArray(50000, '['), -32700},
        {"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"ping\"}", -32601},
        {"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"hello\"}", -32602},
        {"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"hello\",\"params\":{\"token\":7}}", -32602},
        {helloWith(QStringLiteral("wrong")), -32001},
        {helloWith(QString()), -32001},
        {helloWith(QString(64, QLatin1Char('0'))), -32001},
        {QByteArray(70000, 'x'), -32600},
    };
    ToolRun run(recordFake(waitingAgent()));
    for (const Case &c : cases) {
        const auto socket = connected();
        // The second line shows whether anything behind the first is looked at.
        socket->write(c.line + "\ngarbage\n");
        ASSERT_TRUE(isGone(socket.get())) << c.line.left(80).constData();
        const QList<QByteArray> answers = socket->readAll().trimmed().split('\n');
        EXPECT_EQ(answers.size(), 1) << c.line.left(80).constData();
        const QJsonObject error =
            QJsonDocument::fromJson(answers.constFirst()).object().value(QStringLiteral("error")).toObject();
        EXPECT_EQ(error.value(QStringLiteral("code")).toInt(), c.code) << answers.constFirst().constData();
    }
    let("call");
    EXPECT_TRUE(run.printed(clickLine));
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
}

TEST_F(Strangers, whoSendNotificationsAreNotHeard)
{
    ToolRun run(recordFake(waitingAgent()));
    const auto socket = connected();
    socket->write("{\"jsonrpc\":\"2.0\",\"method\":\"statement\",\"params\":{\"function\":\"evil\",\"object\":\"\","
                  "\"arguments\":[],\"time\":\"\"}}\n");
    EXPECT_TRUE(isGone(socket.get()));
    let("call");
    EXPECT_TRUE(run.printed(clickLine));
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_FALSE(run.output().contains(QStringLiteral("evil")));
}

TEST_F(Strangers, whoSendHalfAMessageHoldNobodyUp)
{
    ToolRun run(recordFake(waitingAgent()));
    const auto silent = connected();
    silent->write("{\"jsonrpc\":");
    {
        const auto gone = connected();
        gone->write("{\"jsonrpc\":");
        EXPECT_TRUE(gone->waitForBytesWritten(5000));
    }
    let("call");
    EXPECT_TRUE(run.printed(clickLine));
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
}

TEST_F(Strangers, inGreatNumbersDoNotKeepTheAgentOut)
{
    ToolRun run(recordFake(waitingAgent()));
    std::vector<std::unique_ptr<QLocalSocket>> silent;
    for (int i = 0; i < 300; ++i)
        silent.push_back(connected());
    EXPECT_TRUE(isGone(silent.front().get()));
    EXPECT_EQ(silent.back()->state(), QLocalSocket::ConnectedState);
    EXPECT_TRUE(waitUntil([this] { return filesOfTool() < 200; })) << filesOfTool();
    let("call");
    EXPECT_TRUE(run.printed(clickLine));
    // Nor do they push it out.
    for (int i = 0; i < 200; ++i)
        silent.push_back(connected());
    EXPECT_LT(filesOfTool(), 250);
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_FALSE(run.errors().contains(QStringLiteral("lost"))) << qPrintable(run.errors());
}

TEST_F(Strangers, whoComeAndGoByTheThousandLeaveNothingBehind)
{
    ToolRun run(recordFake(waitingAgent()));
    const QString server = variable("VANTLE_AGENT_SOCKET");
    const qsizetype before = filesOfTool();
    for (int i = 0; i < 3000; ++i) {
        QLocalSocket socket;
        socket.connectToServer(server);
        ASSERT_TRUE(socket.waitForConnected(5000)) << i;
    }
    EXPECT_TRUE(waitUntil([&] { return filesOfTool() <= before + 1; })) << before << " " << filesOfTool();
    let("call");
    EXPECT_TRUE(run.printed(clickLine));
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
}

TEST_F(Strangers, whoStayDoNotHoldTheEndUpWhenAScriptHasStartedTheProgram)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" environment:$1 hello statement:mouseClick until:$2 & "
                                "while [ ! -e $1 ]; do sleep 0.01; done; echo $$ >$3"),
                 QStringLiteral(VANTLE_FAKE_AGENT), path("environment"), path("end"), path("pid")});
    const auto stranger = connected();
    ASSERT_TRUE(run.printed(clickLine));
    const qint64 script = awaitFile(path("pid")).toLongLong();
    ASSERT_TRUE(waitUntil([&] { return !isAlive(script); }));
    let("end");
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(isGone(stranger.get()));
}

} // namespace

TEST_F(Strangers, OfAnotherUserAreNotTalkedTo)
{
    const QString runuser = QStandardPaths::findExecutable(QStringLiteral("runuser"), {QStringLiteral("/usr/sbin")});
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"), {QStringLiteral("/usr/bin")});
    if (::geteuid() != 0 || runuser.isEmpty() || python.isEmpty())
        GTEST_SKIP() << "only root can become somebody else";
    ToolRun run(recordFake(waitingAgent()));
    const QString socket = variable("VANTLE_AGENT_SOCKET");
    // What the system would not let him near to begin with.
    const QByteArray folder = QFile::encodeName(QFileInfo(socket).path());
    const QByteArray above = QFile::encodeName(QFileInfo(QFileInfo(socket).path()).path());
    for (const QByteArray &way : {folder, above})
        ASSERT_EQ(::chmod(way.constData(), 0711), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(socket).constData(), 0666), 0);
    const QString script = QStringLiteral(
        "import socket, sys\n"
        "s = socket.socket(socket.AF_UNIX); s.settimeout(20); s.connect(sys.argv[1])\n"
        "try:\n"
        "    s.sendall(('{\"jsonrpc\": \"2.0\", \"id\": 1, \"method\": \"hello\", \"params\": {\"protocol\": 1, "
        "\"token\": \"%s\", \"version\": \"1\", \"pid\": 1}}\\n' % sys.argv[2]).encode())\n"
        "    answer = s.recv(1000)\n"
        "except ConnectionError:\n"
        "    answer = b''\n"
        "print('answered' if answer else 'ignored')\n");
    QProcess attacker;
    attacker.start(runuser,
                   {QStringLiteral("-u"), QStringLiteral("nobody"), QStringLiteral("--"), python, QStringLiteral("-c"),
                    script, socket, variable("VANTLE_AGENT_TOKEN")});
    ASSERT_TRUE(attacker.waitForFinished(30000));
    EXPECT_EQ(attacker.readAllStandardOutput(), "ignored\n") << attacker.readAllStandardError().constData();
    // The agent itself still gets through.
    let("call");
    EXPECT_TRUE(run.printed(clickLine)) << qPrintable(run.errors());
    let("end");
    EXPECT_EQ(run.exitCode(), 0);
}
