// `vantle record --verify`, on a program that plays its agent.

#include "tool/toolrun.h"

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

#include <csignal>
#include <memory>

using namespace VantleTest;

namespace {

/// A program that gives the same answers each time, and clicks once by itself.
class RecordVerify : public testing::Test
{
protected:
    QString path(const char *name) const { return directory.filePath(QLatin1String(name)); }

    QStringList program(const QStringList &actions, const QString &digest = QStringLiteral("d1")) const
    {
        return QStringList{QStringLiteral("answer:settle:{}"),
                           QStringLiteral("answer:functions:{\"functions\":[{\"name\":\"mouseClick\",\"overloads\":[]},"
                                          "{\"name\":\"pending\",\"overloads\":[]}]}"),
                           QStringLiteral("answer:call:{\"result\":null}"),
                           QStringLiteral("answer:digest:{\"value\":\"%1\",\"objects\":1}").arg(digest),
                           QStringLiteral("end-at:quit")}
        + actions;
    }

    /// Records the one click, ends the recording, and gives the exit code.
    int verify(const QStringList &actions, const QStringList &options = {})
    {
        run = std::make_unique<ToolRun>(
            recordFake(actions,
                       QStringList{QStringLiteral("--verify"), QStringLiteral("-o"), path("script.js")} + options));
        EXPECT_TRUE(run->printed(QStringLiteral("mouseClick(\"object\");\n"))) << qPrintable(run->errors());
        awaitFile(path("pid"));
        run->sendSignal(SIGINT);
        return run->exitCode();
    }

    QString snapshot() const
    {
        return QStringLiteral("answer:snapshot:{\"objects\":[{\"name\":\"Main\",\"class\":\"Main\",\"values\":{}}]}");
    }

    QTemporaryDir directory;
    std::unique_ptr<ToolRun> run;
    const QStringList session{QStringLiteral("hello"), QStringLiteral("statement:mouseClick"),
                              QStringLiteral("digest:d1"), QStringLiteral("pid:") + path("pid"),
                              QStringLiteral("wait")};
};

TEST_F(RecordVerify, whatCameBackIsToldWithZero)
{
    EXPECT_EQ(verify(program(QStringList{snapshot()} + session)), 0) << qPrintable(run->errors());
    EXPECT_TRUE(run->errors().contains(
        QStringLiteral("vantle: came back: 2 statements, 1 object and 0 pictures are as recorded\n")))
        << qPrintable(run->errors());
}

TEST_F(RecordVerify, whatDiffersIsListedWithOne)
{
    const QString starts = QStringLiteral("starts:") + path("starts");
    EXPECT_EQ(verify(program(QStringList{starts} + session)), 1) << qPrintable(run->errors());
    EXPECT_TRUE(run->errors().contains(QStringLiteral("vantle: did not come back: 1 difference; nothing of it showed")))
        << qPrintable(run->errors());
    EXPECT_TRUE(run->errors().contains(QStringLiteral("vantle:   Main: start was \"1\", is \"2\"\n")));
}

TEST_F(RecordVerify, theStatementIsNamedSinceWhichItDiffered)
{
    const QString starts = QStringLiteral("starts:") + path("starts");
    EXPECT_EQ(verify(program(QStringList{starts} + session, QStringLiteral("d2"))), 1);
    EXPECT_TRUE(
        run->errors().contains(QStringLiteral("it first differed after statement 1, mouseClick(\"object\");\n")))
        << qPrintable(run->errors());
}

TEST_F(RecordVerify, aDifferenceThatIsOverAtTheEndIsNone)
{
    EXPECT_EQ(verify(program(QStringList{snapshot()} + session, QStringLiteral("d2"))), 0) << qPrintable(run->errors());
}

TEST_F(RecordVerify, aReplayThatEndsHalfwayDidNotComeBack)
{
    const QString refuse = QStringLiteral(
        "error:call:{\"code\":-32010,\"message\":\"cannot find object\",\"data\":{}}");
    EXPECT_EQ(verify(program(QStringList{snapshot(), refuse} + session)), 1);
    EXPECT_TRUE(run->errors().contains(QStringLiteral("the replay ended at line 3\n"))) << qPrintable(run->errors());
    EXPECT_TRUE(run->errors().contains(QStringLiteral("cannot find object")));
}

TEST_F(RecordVerify, ctrlCEndsTheVerification)
{
    const QString hang = QStringLiteral("silent:call");
    run = std::make_unique<ToolRun>(recordFake(program(QStringList{snapshot(), hang} + session),
                                               {QStringLiteral("--verify"), QStringLiteral("-o"), path("script.js")}));
    EXPECT_TRUE(run->printed(QStringLiteral("mouseClick(\"object\");\n")));
    awaitFile(path("pid"));
    run->sendSignal(SIGINT);
    ASSERT_TRUE(run->said(QStringLiteral("verifying: ")));
    run->sendSignal(SIGINT);
    EXPECT_EQ(run->exitCode(), 3);
    EXPECT_TRUE(run->errors().contains(QStringLiteral("could not verify: stopped by the user")));
}

TEST_F(RecordVerify, keepRunningAndVerifyExcludeEachOther)
{
    ToolRun both(
        recordFake({QStringLiteral("exit:0")}, {QStringLiteral("--verify"), QStringLiteral("--keep-running")}));
    EXPECT_EQ(both.exitCode(), 3);
    EXPECT_TRUE(both.errors().contains(QStringLiteral("exclude each other")));
}

TEST_F(RecordVerify, freshSettingsAreThoseOfTheRecordingAlone)
{
    ToolRun fresh(
        recordFake({QStringLiteral("environment:") + path("env"), QStringLiteral("hello"), QStringLiteral("exit:0")},
                   {QStringLiteral("--fresh-settings")}));
    EXPECT_EQ(fresh.exitCode(), 0);
    const QString environment = contentOf(path("env"));
    for (const char *name : {"XDG_CONFIG_HOME=", "XDG_DATA_HOME=", "XDG_CACHE_HOME=", "XDG_STATE_HOME="})
        EXPECT_TRUE(environment.contains(QLatin1String(name))) << name;
}

} // namespace
