#include "toolrun.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <csignal>

#include <unistd.h>

using namespace VantleTest;

namespace {

const QString hello = QStringLiteral("hello");
const QString wait = QStringLiteral("wait");
const QString click = QStringLiteral("statement:mouseClick");
const QString clickLine = QStringLiteral("mouseClick(\"object\");\n");

class Record : public testing::Test
{
protected:
    QString path(const char *name) const { return directory.filePath(QLatin1String(name)); }
    QString action(const char *name, const char *file) const
    {
        return QLatin1String(name) + QLatin1Char(':') + path(file);
    }
    QStringList toFile() const { return {QStringLiteral("-o"), path("script.js")}; }
    QString script() const { return contentOf(path("script.js")); }

    QTemporaryDir directory;
};

TEST_F(Record, theScriptHasAHeadTheStatementsAndAnEnd)
{
    ToolRun run(recordFake({hello, click, QStringLiteral("statement:closeWindow")}, toFile()));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    const QStringList lines = script().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 6) << qPrintable(script());
    static const QRegularExpression head(
        QStringLiteral("^// Recorded by vantle 0\\.1\\.0 on \\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d([+-]\\d\\d:\\d\\d|Z)$"));
    EXPECT_TRUE(head.match(lines.at(0)).hasMatch()) << qPrintable(lines.at(0));
    EXPECT_EQ(lines.at(1), QStringLiteral("// Program: %1 hello statement:mouseClick statement:closeWindow")
                               .arg(QStringLiteral(VANTLE_FAKE_AGENT)));
    EXPECT_EQ(lines.at(2), QStringLiteral("mouseClick(\"object\");"));
    EXPECT_EQ(lines.at(3), QStringLiteral("closeWindow(\"object\");"));
    EXPECT_EQ(lines.at(4), QStringLiteral("// The program ended with exit code 0."));
    EXPECT_EQ(lines.at(5), QString());
}

TEST_F(Record, withoutAFileTheScriptAloneIsOnStandardOutput)
{
    ToolRun run(recordFake({hello, QStringLiteral("print:chatter"), click}));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.output().startsWith(QStringLiteral("// Recorded by vantle")));
    EXPECT_TRUE(run.output().endsWith(clickLine + QStringLiteral("// The program ended with exit code 0.\n")));
    EXPECT_FALSE(run.output().contains(QStringLiteral("chatter\n")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("chatter\n")));
}

TEST_F(Record, withAFileTheProgramsOutputStaysWhereItWas)
{
    ToolRun run(recordFake({hello, QStringLiteral("print:chatter"), click}, toFile()));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.output().contains(QStringLiteral("chatter\n")));
    EXPECT_TRUE(run.output().contains(clickLine));
    EXPECT_FALSE(script().contains(QStringLiteral("chatter\n")));
}

TEST_F(Record, eachStatementIsInTheFileWhileTheProgramRuns)
{
    ToolRun run(recordFake({hello, click, wait}, toFile()));
    EXPECT_TRUE(waitUntil([&] { return script().endsWith(clickLine); })) << qPrintable(run.errors());
    EXPECT_TRUE(run.isRunning());
}

TEST_F(Record, aBurstOfStatementsAheadOfTheEndArrivesWholeAndInOrder)
{
    ToolRun run(recordFake({hello, QStringLiteral("flood:2000")}, toFile()));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    QStringList expected;
    for (int i = 0; i < 2000; ++i)
        expected.append(QStringLiteral("type(\"object\", \"%1\");").arg(i));
    const QStringList lines = script().split(QLatin1Char('\n'));
    EXPECT_TRUE(lines.mid(2, 2000) == expected) << lines.size() << " lines";
}

TEST_F(Record, anOldScriptIsReplaced)
{
    QFile file(path("script.js"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(10000, 'x'));
    file.close();
    ToolRun run(recordFake({hello, click}, toFile()));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().startsWith(QStringLiteral("// Recorded by")));
    EXPECT_FALSE(script().contains(QLatin1Char('x') + QString(QLatin1Char('x'))));
}

TEST_F(Record, anOldScriptSurvivesAProgramThatCannotBeRecorded)
{
    QFile file(path("script.js"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("precious();\n");
    file.close();
    for (const QString &program : {QStringLiteral("/nowhere/at/all"), QStringLiteral("true")}) {
        ToolRun run(QStringList{QStringLiteral("record")} + toFile() + QStringList{program});
        EXPECT_EQ(run.exitCode(), 3);
        EXPECT_EQ(script(), QStringLiteral("precious();\n"));
    }
}

TEST_F(Record, noEmptyScriptIsLeftBehindByAProgramThatCannotBeRecorded)
{
    ToolRun run(QStringList{QStringLiteral("record")} + toFile() + QStringList{QStringLiteral("true")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_FALSE(QFile::exists(path("script.js")));
}

TEST_F(Record, aFileThatCannotBeWrittenIsSaidBeforeTheProgramStarts)
{
    const QString impossible[] = {path("missing/script.js"), directory.path()};
    for (const QString &file : impossible) {
        ToolRun run(recordFake({action("pid", "pid")}, {QStringLiteral("-o"), file}));
        EXPECT_EQ(run.exitCode(), 3);
        EXPECT_TRUE(run.errors().startsWith(QStringLiteral("vantle: cannot write \"%1\": ").arg(file)))
            << qPrintable(run.errors());
        EXPECT_FALSE(QFile::exists(path("pid")));
    }
}

TEST_F(Record, aFullDiskIsReportedOnceAndTheRecordingGoesOn)
{
    ToolRun run(recordFake({hello, click, click}, {QStringLiteral("-o"), QStringLiteral("/dev/full")}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_EQ(run.errors().count(QStringLiteral("cannot write \"/dev/full\": No space left on device")), 1)
        << qPrintable(run.errors());
    EXPECT_TRUE(run.output().contains(clickLine + clickLine));
}

TEST_F(Record, theAgentGetsWhatTheOptionsSay)
{
    ToolRun run(recordFake({hello}, {QStringLiteral("--debug-compression"), QStringLiteral("2"),
                                     QStringLiteral("--without-coordinates=QQuickButton"),
                                     QStringLiteral("--without-coordinates"), QStringLiteral("Tile")}));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.errors().contains(QStringLiteral(
        "settings {\"classesWithoutCoordinates\":[\"QQuickButton\",\"Tile\"],\"debugCompression\":2,\"record\":true}")))
        << qPrintable(run.errors());
}

TEST_F(Record, logLinesOfTheAgentGoToStandardError)
{
    ToolRun run(recordFake({hello, QStringLiteral("log:info:all: fine"), QStringLiteral("log:warning:hm"),
                            QStringLiteral("log:fatal:never shown")}));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("vantle: all: fine\nvantle: warning: hm\n")))
        << qPrintable(run.errors());
    EXPECT_FALSE(run.errors().contains(QStringLiteral("never shown")));
}

TEST_F(Record, theEnvironmentIsExtendedAndNotOverwritten)
{
    ToolRun run(recordFake({hello, action("environment", "env")}),
                {{QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("evdevmouse")},
                 {QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral("/opt/plugins")}});
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    const QStringList environment = contentOf(path("env")).split(QLatin1Char('\n'));
    const QString prefix = QFileInfo(QFileInfo(QStringLiteral(VANTLE_TOOL)).path()).path();
    EXPECT_TRUE(environment.contains(QStringLiteral("QT_QPA_GENERIC_PLUGINS=evdevmouse,vantle")));
    EXPECT_TRUE(environment.contains(QStringLiteral("VANTLE_PREFIX=") + prefix));
    const QStringList pluginPaths = environment.filter(QStringLiteral("QT_PLUGIN_PATH="));
    ASSERT_EQ(pluginPaths.size(), 1);
    EXPECT_TRUE(pluginPaths.first().startsWith(QStringLiteral("QT_PLUGIN_PATH=%1/").arg(prefix)));
    EXPECT_TRUE(pluginPaths.first().endsWith(QStringLiteral("/vantle/plugins:/opt/plugins")));
}

TEST_F(Record, anEmptyEnvironmentGetsNoStraySeparators)
{
    ToolRun run(recordFake({hello, action("environment", "env")}), {{QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QString()},
                                                                    {QStringLiteral("QT_PLUGIN_PATH"), QString()}});
    EXPECT_EQ(run.exitCode(), 0);
    const QStringList environment = contentOf(path("env")).split(QLatin1Char('\n'));
    EXPECT_TRUE(environment.contains(QStringLiteral("QT_QPA_GENERIC_PLUGINS=vantle")));
    EXPECT_TRUE(environment.filter(QStringLiteral("QT_PLUGIN_PATH=")).first().endsWith(QStringLiteral("/vantle/plugins")));
}

TEST_F(Record, theAgentIsNotNamedTwiceInANestedRecording)
{
    ToolRun run(recordFake({hello, action("environment", "env")}),
                {{QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vantle,evdevmouse")}});
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(contentOf(path("env")).contains(QStringLiteral("\nQT_QPA_GENERIC_PLUGINS=vantle,evdevmouse\n")));
}

TEST_F(Record, theProgramReadsTheStandardInputOfTheTool)
{
    ToolRun run(recordFake({hello, QStringLiteral("copy-input")}, toFile()), {}, "from the pipe");
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.output().contains(QStringLiteral("from the pipe\n")));
}

TEST_F(Record, theProgramIsInAProcessGroupOfItsOwn)
{
    ToolRun run(recordFake({hello, action("pid", "pid"), wait}));
    const auto program = static_cast<pid_t>(awaitFile(path("pid")).toInt());
    ASSERT_GT(program, 0);
    EXPECT_EQ(::getpgid(program), program);
}

TEST_F(Record, nobodyElseCanReachTheSocket)
{
    ToolRun run(recordFake({hello, action("environment", "env"), wait}));
    static const QRegularExpression variable(QStringLiteral("(?:^|\n)VANTLE_AGENT_SOCKET=([^\n]+)\n"));
    const QString socket = variable.match(awaitFile(path("env"))).captured(1);
    ASSERT_FALSE(socket.isEmpty());
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther
        | QFile::ExeOther;
    EXPECT_FALSE(QFileInfo(socket).permissions() & others);
    EXPECT_FALSE(QFileInfo(QFileInfo(socket).path()).permissions() & others);
}

TEST_F(Record, theSocketIsGoneAfterwards)
{
    ToolRun run(recordFake({hello, action("environment", "env")}));
    EXPECT_EQ(run.exitCode(), 0);
    static const QRegularExpression variable(QStringLiteral("(?:^|\n)VANTLE_AGENT_SOCKET=([^\n]+)\n"));
    const QString socket = variable.match(contentOf(path("env"))).captured(1);
    ASSERT_FALSE(socket.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(socket).path()));
}

TEST_F(Record, wordsThatQtWouldTakeForItselfReachTheProgram)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("echo \"$1\" >\"$0\""), path("word"), QStringLiteral("-qmljsdebugger=port:1")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_EQ(contentOf(path("word")), QStringLiteral("-qmljsdebugger=port:1\n"));
}

TEST_F(Record, nonsenseFromTheAgentIsReportedAndTheRecordingGoesOn)
{
    ToolRun run(recordFake({hello, QStringLiteral("raw:garbage"), QStringLiteral("bad-statement"),
                            QStringLiteral("function:alert(1);x"), QStringLiteral("ping"),
                            QStringLiteral("hello-again"), click}));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.output().contains(clickLine));
    EXPECT_FALSE(run.output().contains(QStringLiteral("\nalert")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("a message of the agent was not understood: invalid JSON")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("a statement of the agent was not understood: \"function\"")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("\"alert(1);x\", which is no function's name")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("there is no method \"fly\"")));
}

TEST_F(Record, halfAMessageIsNoStatement)
{
    ToolRun run(recordFake({hello, click, QStringLiteral("half:{\"jsonrpc\":\"2.0\",\"method\":\"statement\"")}));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.output().endsWith(clickLine + QStringLiteral("// The program ended with exit code 0.\n")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("in the middle of a message"))) << qPrintable(run.errors());
}

} // namespace
