#include "toolrun.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>

#include <csignal>

using namespace VantleTest;

namespace {

const QString hello = QStringLiteral("hello");
const QString wait = QStringLiteral("wait");
const QString click = QStringLiteral("statement:mouseClick");
const QString clickLine = QStringLiteral("mouseClick(\"object\");\n");
const QString pendingLine = QStringLiteral("pending(\"object\");\n");
const QString stoppedLine = QStringLiteral("// The recording was stopped.\n");

/// How a recording comes to its end, and what is left then.
class RecordEnding : public testing::Test
{
protected:
    ~RecordEnding() override
    {
        // Programs that a test has left running on purpose.
        const auto program = static_cast<pid_t>(contentOf(path("pid")).toInt());
        if (program > 0 && isAlive(program))
            ::kill(program, SIGKILL);
    }

    QString path(const char *name) const { return directory.filePath(QLatin1String(name)); }
    QString action(const char *name, const char *file) const
    {
        return QLatin1String(name) + QLatin1Char(':') + path(file);
    }
    QStringList toFile() const { return {QStringLiteral("-o"), path("script.js")}; }
    QString script() const { return contentOf(path("script.js")); }
    qint64 program() const { return awaitFile(path("pid")).toLongLong(); }

    QTemporaryDir directory;
};

TEST_F(RecordEnding, aCrashIsNamedInTheScriptAndInTheExitCode)
{
    struct Crash
    {
        int signal;
        QString text;
    };
    const Crash crashes[] = {{SIGKILL, QStringLiteral("signal 9 (SIGKILL)")},
                             {SIGSEGV, QStringLiteral("signal 11 (SIGSEGV)")},
                             {SIGABRT, QStringLiteral("signal 6 (SIGABRT)")}};
    for (const Crash &crash : crashes) {
        ToolRun run(recordFake({hello, click, QStringLiteral("signal:%1").arg(crash.signal)}, toFile()));
        EXPECT_EQ(run.exitCode(), 2);
        EXPECT_TRUE(script().endsWith(clickLine
                                      + QStringLiteral("// The program ended with %1; everything recorded up "
                                                       "to then is above.\n")
                                            .arg(crash.text)))
            << qPrintable(script());
        EXPECT_TRUE(run.errors().contains(QStringLiteral("vantle: the program ended with %1\n").arg(crash.text)));
    }
}

TEST_F(RecordEnding, whatWasPendingWhenTheProgramDiedIsTheEndOfTheScript)
{
    const QString underWay = QStringLiteral("// This was still under way when the program ended.\n");
    const QString press = QStringLiteral("pending:mousePress");
    for (const char *end : {"signal:11", "exit:0", "exit:3"}) {
        ToolRun run(recordFake({hello, click, press, QLatin1String(end)}, toFile()));
        run.exitCode();
        EXPECT_TRUE(script().contains(clickLine + QStringLiteral("mousePress(\"object\");\n") + underWay
                                      + QStringLiteral("// The program ended with ")))
            << qPrintable(script());
    }
    ToolRun two(recordFake({hello, QStringLiteral("pending:one,two"), QStringLiteral("signal:11")}, toFile()));
    EXPECT_EQ(two.exitCode(), 2);
    EXPECT_TRUE(
        script().contains(QStringLiteral("one(\"object\");\ntwo(\"object\");\n// These 2 were still under way")))
        << qPrintable(script());
}

TEST_F(RecordEnding, whatIsPendingNoMoreIsNotWritten)
{
    const QString press = QStringLiteral("pending:mousePress");
    for (const QString &after : {click, QStringLiteral("pending:")}) {
        ToolRun run(recordFake({hello, press, after, QStringLiteral("signal:11")}, toFile()));
        EXPECT_EQ(run.exitCode(), 2);
        EXPECT_FALSE(script().contains(QStringLiteral("mousePress("))) << qPrintable(script());
    }
    ToolRun run(recordFake({hello, press, action("pid", "pid"), wait}, toFile()));
    ASSERT_GT(program(), 0);
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_FALSE(script().contains(QStringLiteral("mousePress("))) << qPrintable(script());
}

TEST_F(RecordEnding, whatIsPendingInAProgramThatHangsIsWritten)
{
    ToolRun run(recordFake({QStringLiteral("slow-stop"), hello, QStringLiteral("pending:mousePress"),
                            action("pid", "pid"), wait},
                           toFile()));
    ASSERT_GT(program(), 0);
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().contains(QStringLiteral("mousePress(\"object\");\n"))) << qPrintable(script());
}

TEST_F(RecordEnding, inputThatBecameNoStatementIsACommentAndALineOnTheTerminal)
{
    ToolRun run(recordFake({hello, click, QStringLiteral("comment:a press\u2028on \u001bnothing\nno item took it"),
                            click, QStringLiteral("exit:0")},
                           toFile()));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(
        script().contains(clickLine + QStringLiteral("// a press on  nothing\n// no item took it\n") + clickLine))
        << qPrintable(script());
    EXPECT_TRUE(run.errors().contains(QStringLiteral("vantle: not recorded: a press"))) << qPrintable(run.errors());
    EXPECT_FALSE(run.errors().contains(QChar(0x1b)));
}

TEST_F(RecordEnding, aProgramThatIsKilledFromOutsideLosesNoStatement)
{
    ToolRun run(recordFake({hello, QStringLiteral("flood:300"), action("pid", "pid"), wait}, toFile()));
    ::kill(static_cast<pid_t>(program()), SIGKILL);
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(script().contains(QStringLiteral("type(\"object\", \"299\");\n// The program ended with signal 9")));
}

TEST_F(RecordEnding, anExitCodeOfTheProgramIsToldButIsNoFailure)
{
    ToolRun run(recordFake({hello, click, QStringLiteral("exit:7")}, toFile()));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(clickLine + QStringLiteral("// The program ended with exit code 7.\n")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("vantle: the program ended with exit code 7\n")));
}

TEST_F(RecordEnding, ctrlCTakesThePendingStatementsAndEndsTheProgram)
{
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP}) {
        QFile::remove(path("pid"));
        ToolRun run(recordFake({hello, click, action("pid", "pid"), wait}, toFile()));
        const qint64 process = program();
        ASSERT_TRUE(run.printed(clickLine));
        run.sendSignal(signal);
        EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
        EXPECT_TRUE(script().endsWith(clickLine + pendingLine + stoppedLine)) << qPrintable(script());
        EXPECT_FALSE(isAlive(process));
    }
}

TEST_F(RecordEnding, aBackgroundJobOfAScriptCanBeStoppedTheSameWay)
{
    // Where SIGINT is ignored from the start.
    QProcess shell;
    shell.start(QStringLiteral("sh"),
                QStringList({QStringLiteral("-c"), QStringLiteral("trap '' INT; exec \"$0\" \"$@\""),
                             QStringLiteral(VANTLE_TOOL)})
                    + recordFake({hello, click, action("pid", "pid"), wait}, toFile()));
    ASSERT_GT(program(), 0);
    ::kill(static_cast<pid_t>(shell.processId()), SIGINT);
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(pendingLine + stoppedLine)) << qPrintable(script());
}

TEST_F(RecordEnding, nohupKeepsTheRecordingAlive)
{
    QProcess shell;
    shell.start(QStringLiteral("sh"),
                QStringList({QStringLiteral("-c"), QStringLiteral("trap '' HUP; exec \"$0\" \"$@\""),
                             QStringLiteral(VANTLE_TOOL)})
                    + recordFake({hello, action("pid", "pid"), action("until", "go"), click}, toFile()));
    ASSERT_GT(program(), 0);
    ::kill(static_cast<pid_t>(shell.processId()), SIGHUP);
    QFile go(path("go"));
    ASSERT_TRUE(go.open(QIODevice::WriteOnly));
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(clickLine + QStringLiteral("// The program ended with exit code 0.\n")));
}

TEST_F(RecordEnding, keepRunningLeavesTheProgramAlone)
{
    ToolRun run(recordFake({hello, click, action("orphan", "orphan"), action("pid", "pid"), wait},
                           toFile() + QStringList{QStringLiteral("--keep-running")}));
    ASSERT_GT(program(), 0);
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(pendingLine + stoppedLine));
    // It writes this after it has seen the tool go, and only if it lives then.
    EXPECT_EQ(awaitFile(path("orphan")), QStringLiteral("orphan\n"));
}

TEST_F(RecordEnding, aProgramThatIsTooBusyForItsObjectsIsAFailure)
{
    const QStringList tree{QStringLiteral("--tree"), path("tree.json")};
    ToolRun run(recordFake({QStringLiteral("slow-stop"), hello, click, wait}, toFile() + tree));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 3) << qPrintable(run.errors());
    EXPECT_TRUE(run.errors().contains(path("tree.json") + QStringLiteral(" is not written")))
        << qPrintable(run.errors());
}

TEST_F(RecordEnding, outputsThatCannotBeWrittenAreFoundAheadOfTheRun)
{
    const QStringList tree{QStringLiteral("--tree"), path("nowhere/tree.json")};
    ToolRun run(recordFake({action("pid", "pid"), hello, click}, toFile() + tree));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(path("nowhere/tree.json"))) << qPrintable(run.errors());
    EXPECT_FALSE(QFile::exists(path("pid")));
}

TEST_F(RecordEnding, aProgramThatDoesNotAnswerIsGivenUpAfterALimit)
{
    ToolRun run(recordFake({QStringLiteral("slow-stop"), hello, click, action("pid", "pid"), wait}, toFile()));
    const qint64 process = program();
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("did not answer within 3 s"))) << qPrintable(run.errors());
    EXPECT_TRUE(script().endsWith(clickLine + stoppedLine));
    EXPECT_FALSE(isAlive(process));
}

TEST_F(RecordEnding, theObjectsOfALargeSceneAreWaitedForBeyondTheLimitOfTheScript)
{
    const QStringList tree{QStringLiteral("--tree"), path("tree.json")};
    ToolRun run(recordFake({QStringLiteral("late:tree:3500"), hello, click, wait}, toFile() + tree));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(script().endsWith(stoppedLine));
    EXPECT_TRUE(QFile::exists(path("tree.json")));
}

TEST_F(RecordEnding, aCrashWhileTheObjectsAreToldIsACrash)
{
    const QStringList tree{QStringLiteral("--tree"), path("tree.json")};
    ToolRun run(recordFake({QStringLiteral("crash-at:tree"), hello, click, wait}, toFile() + tree));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("SIGSEGV"))) << qPrintable(run.errors());
    EXPECT_TRUE(run.errors().contains(path("tree.json") + QStringLiteral(" is not written")))
        << qPrintable(run.errors());
    EXPECT_FALSE(QFile::exists(path("tree.json")));
}

TEST_F(RecordEnding, objectsThatAnotherCtrlCGivesUpAreAFailure)
{
    const QStringList tree{QStringLiteral("--tree"), path("tree.json")};
    ToolRun run(recordFake({QStringLiteral("silent:tree"), hello, click, wait}, toFile() + tree));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    ASSERT_TRUE(run.printed(QStringLiteral("asked for tree\n")));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(path("tree.json") + QStringLiteral(" is not written")))
        << qPrintable(run.errors());
    EXPECT_FALSE(QFile::exists(path("tree.json")));
}

TEST_F(RecordEnding, aProgramThatIgnoresSigtermIsKilled)
{
    ToolRun run(recordFake({QStringLiteral("ignore-term"), hello, click, action("pid", "pid"), wait}, toFile()));
    const qint64 process = program();
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(pendingLine + stoppedLine)) << "being killed by the tool is no crash";
    EXPECT_FALSE(isAlive(process));
}

TEST_F(RecordEnding, aSecondCtrlCEndsAtOnce)
{
    ToolRun run(recordFake({QStringLiteral("ignore-term"), QStringLiteral("slow-stop"), hello, click,
                            action("pid", "pid"), wait},
                           toFile()));
    const qint64 process = program();
    ASSERT_TRUE(run.printed(clickLine));
    QElapsedTimer timer;
    timer.start();
    run.sendSignal(SIGINT);
    run.sendSignal(SIGTERM);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_LT(timer.elapsed(), 2500) << "neither limit was waited for";
    EXPECT_TRUE(script().endsWith(
        clickLine + QStringLiteral("// The recording was stopped; the last statements may be missing.\n")));
    EXPECT_TRUE(waitUntil([&] { return !isAlive(process); }));
}

TEST_F(RecordEnding, anAgentThatCannotStopIsEndedAllTheSame)
{
    ToolRun run(recordFake({QStringLiteral("refuse-stop"), hello, click, wait}, toFile()));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("could not end the recording properly: no idea how")));
    EXPECT_TRUE(script().endsWith(clickLine + stoppedLine));
}

TEST_F(RecordEnding, aCrashDuringTheStopIsStillACrash)
{
    ToolRun run(recordFake({QStringLiteral("crash-stop"), hello, click, wait}, toFile()));
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(script().contains(clickLine + QStringLiteral("// The program ended with signal 11 (SIGSEGV);")));
}

TEST_F(RecordEnding, ctrlCBeforeTheAgentCameEndsTheProgram)
{
    ToolRun run(recordFake({action("pid", "pid"), wait}, toFile()));
    const qint64 process = program();
    ASSERT_GT(process, 0);
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_FALSE(isAlive(process));
    EXPECT_FALSE(QFile::exists(path("script.js")));
}

TEST_F(RecordEnding, theProgramOutlivesAToolThatIsKilled)
{
    ToolRun run(recordFake({hello, action("orphan", "orphan"), click, action("pid", "pid"), wait}, toFile()));
    ASSERT_GT(program(), 0);
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGKILL);
    EXPECT_EQ(run.exitCode(), -2);
    EXPECT_EQ(awaitFile(path("orphan")), QStringLiteral("orphan\n"));
    EXPECT_TRUE(script().endsWith(clickLine)) << "what was recorded is there";
}

TEST_F(RecordEnding, anAgentThatGoesEarlyIsReported)
{
    ToolRun run(recordFake({hello, click, QStringLiteral("disconnect"), wait}, toFile()));
    EXPECT_TRUE(run.said(QStringLiteral("the agent has gone while the program runs on")));
    EXPECT_TRUE(run.isRunning());
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(clickLine + stoppedLine));
}

TEST_F(RecordEnding, aForgottenChildWithTheConnectionDoesNotHoldTheToolUp)
{
    ToolRun run(recordFake({hello, click, action("leave-child", "go")}, toFile()));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(script().endsWith(clickLine + QStringLiteral("// The program ended with exit code 0.\n")));
    QFile go(path("go"));
    EXPECT_TRUE(go.open(QIODevice::WriteOnly));
}

TEST_F(RecordEnding, aMissingProgramIsNamed)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("/nowhere/at/all")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_EQ(run.errors(),
              QStringLiteral("vantle: cannot start \"/nowhere/at/all\": No such file or directory. "
                             "Give the full path of a program, or one that is found in PATH.\n"));
    EXPECT_EQ(run.output(), QString());
}

TEST_F(RecordEnding, aFileThatIsNoProgramIsNamed)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("/etc/passwd")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().startsWith(QStringLiteral("vantle: cannot start \"/etc/passwd\": Permission denied")))
        << qPrintable(run.errors());
}

TEST_F(RecordEnding, aProgramThatEndsWithoutAgentGetsTheLikelyCauses)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("exit 5")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().startsWith(
        QStringLiteral("vantle: \"sh\" ended with exit code 5 before the agent reported. Likely causes:\n")));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("no Qt 6 program")));
    EXPECT_EQ(run.output(), QString());
}

TEST_F(RecordEnding, aProgramThatCrashesWithoutAgentIsACrash)
{
    ToolRun run(recordFake({QStringLiteral("signal:11")}));
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("ended with signal 11 (SIGSEGV) before the agent reported")));
}

TEST_F(RecordEnding, aProgramThatNeverLoadsTheAgentIsEndedAfterTheLimit)
{
    ToolRun run(recordFake({action("pid", "pid"), wait}, {QStringLiteral("--start-timeout"), QStringLiteral("0.3")}));
    const qint64 process = program();
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("within 0.3 s. Likely causes:\n"))) << qPrintable(run.errors());
    EXPECT_FALSE(isAlive(process));
}

TEST_F(RecordEnding, anAgentThatConnectsAndSaysNothingIsMissing)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--start-timeout=0.3"), QStringLiteral("--"),
                 QStringLiteral(VANTLE_FAKE_AGENT), QStringLiteral("token:wrong"), QStringLiteral("refused"), wait});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("settings the token is wrong"))) << qPrintable(run.errors());
    EXPECT_EQ(run.output(), QString());
}

TEST_F(RecordEnding, aStrangerDoesNotKeepTheRealAgentOut)
{
    const QString fake = QStringLiteral(VANTLE_FAKE_AGENT);
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" token: refused; \"$0\" hello statement:mouseClick"), fake});
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(run.output().contains(clickLine));
}

TEST_F(RecordEnding, aSecondAgentIsRefused)
{
    const QString fake = QStringLiteral(VANTLE_FAKE_AGENT);
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" hello pid:$1 until:$2 & while [ ! -e $1 ]; do sleep 0.01; done; "
                                "\"$0\" refused print:second; touch $2; wait"),
                 fake, path("pid"), path("go")});
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(run.errors().contains(QStringLiteral("settings another agent has called already\nsecond\n")));
}

TEST_F(RecordEnding, anAgentOfAnotherProtocolIsNamed)
{
    ToolRun run(recordFake({QStringLiteral("protocol:2"), QStringLiteral("refused"), action("pid", "pid"), wait}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("the agent speaks protocol 2, this tool speaks 1")));
}

TEST_F(RecordEnding, aCrashInsideAShellIsStillACrash)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" hello statement:mouseClick signal:11; exit $?"),
                 QStringLiteral(VANTLE_FAKE_AGENT)});
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(run.output().contains(clickLine + QStringLiteral("// The program ended with signal 11 (SIGSEGV);")));
}

TEST_F(RecordEnding, ctrlCEndsAProgramThatAShellHasStarted)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" hello statement:mouseClick pid:$1 wait; exit $?"),
                 QStringLiteral(VANTLE_FAKE_AGENT), path("pid")});
    const qint64 process = program();
    ASSERT_TRUE(run.printed(clickLine));
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(waitUntil([&] { return !isAlive(process); }));
}

TEST_F(RecordEnding, aScriptThatStartsTheProgramMayEndFirst)
{
    ToolRun run({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("\"$0\" hello pid:$1 until:$2 statement:mouseClick & "
                                "while [ ! -e $1 ]; do sleep 0.01; done; echo $$ >$2"),
                 QStringLiteral(VANTLE_FAKE_AGENT), path("pid"), path("go")});
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(run.output().contains(clickLine));
}

} // namespace
