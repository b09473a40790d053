#include "../toolrun.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <csignal>

using namespace VantleTest;

namespace {

const char *const aWindow = "answer:find:{\"object\":1,\"class\":\"QQuickWindow\",\"name\":\"W\"}";
const char *const settled = "answer:settle:{\"settled\":true}";
const char *const tree =
    "answer:tree:{\"windows\":[{\"class\":\"QQuickWindow\",\"type\":\"Window\",\"name\":\"W#w\",\"id\":\"w\","
    "\"geometry\":{\"x\":1,\"y\":2,\"width\":3,\"height\":4},\"visible\":true,\"notReady\":\"\",\"children\":[]}]}";
const char *const endsAtQuit = "end-at:quit";

/// `inspect OPTIONS -- fakeagent ACTIONS`, the fake agent staying until it is ended.
QStringList inspectFake(std::initializer_list<const char *> actions, const QStringList &options = {})
{
    QStringList words{QStringLiteral("inspect")};
    words << options << QStringLiteral("--") << QStringLiteral(VANTLE_FAKE_AGENT);
    for (const char *action : actions)
        words.append(QString::fromUtf8(action));
    return words << QStringLiteral("hello") << QStringLiteral("wait");
}

} // namespace

TEST(Inspect, PrintsTheTreeAndEndsTheProgram)
{
    ToolRun run(inspectFake({aWindow, settled, tree, endsAtQuit}));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_EQ(run.output(), QStringLiteral("Window  3x4 at (1, 2)  ready  W#w\n"));
}

TEST(Inspect, PrintsJson)
{
    ToolRun run(inspectFake({aWindow, settled, tree, endsAtQuit}, {QStringLiteral("--json")}));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    const QJsonObject json = QJsonDocument::fromJson(run.output().toUtf8()).object();
    EXPECT_EQ(json.value(QStringLiteral("windows")).toArray().size(), 1);
}

TEST(Inspect, PrintsOneObject)
{
    ToolRun run(inspectFake(
        {aWindow, settled,
         "answer:describe:{\"class\":\"C\",\"name\":\"W C\",\"geometry\":{\"x\":1,\"y\":2,\"width\":3,\"height\":4},"
         "\"visible\":true,\"enabled\":true,\"notReady\":\"\"}",
         "answer:properties:{\"class\":\"C\",\"name\":\"W C\",\"properties\":{\"text\":\"Käse\"}}", endsAtQuit},
        {QStringLiteral("--name"), QStringLiteral("W C")}));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(run.output().startsWith(QStringLiteral("name       W C\n"))) << qPrintable(run.output());
    EXPECT_TRUE(run.output().endsWith(QStringLiteral("\ntext  \"Käse\"\n"))) << qPrintable(run.output());
}

TEST(Inspect, PrintsFunctionsWithoutWaitingForAWindow)
{
    ToolRun run(
        inspectFake({"silent:find", endsAtQuit,
                     "answer:functions:{\"functions\":[{\"name\":\"f\",\"overloads\":[{\"arguments\":[{\"name\":"
                     "\"a\",\"type\":\"int\"}],\"result\":\"void\"}]}]}"},
                    {QStringLiteral("--functions")}));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_EQ(run.output(), QStringLiteral("f(a: int)\n"));
}

TEST(Inspect, TellsByItsExitCodeThatNamesFail)
{
    const char *const good = "answer:roundTrip:{\"items\":2,\"failures\":[]}";
    const char *const bad = "answer:roundTrip:{\"items\":2,\"failures\":[{\"name\":\"W A\",\"reason\":\"no\"}]}";
    ToolRun success(inspectFake({aWindow, settled, good, endsAtQuit}, {QStringLiteral("--check-names")}));
    EXPECT_EQ(success.exitCode(), 0);
    EXPECT_EQ(success.output(), QStringLiteral("2 of 2 objects are found by their names.\n"));
    ToolRun failure(inspectFake({aWindow, settled, bad, endsAtQuit}, {QStringLiteral("--check-names")}));
    EXPECT_EQ(failure.exitCode(), 1);
    EXPECT_TRUE(failure.output().contains(QStringLiteral("  W A: no\n"))) << qPrintable(failure.output());
}

TEST(Inspect, TellsHowManyNamesOnlyCount)
{
    const char *const names = "answer:roundTrip:{\"items\":9,\"failures\":[],\"pressable\":8,"
                              "\"counted\":[\"W B:nth(2)\"]}";
    ToolRun run(inspectFake({aWindow, settled, names, endsAtQuit}, {QStringLiteral("--check-names")}));
    EXPECT_EQ(run.exitCode(), 0) << "such names are no failures";
    EXPECT_EQ(run.output(), QStringLiteral("9 of 9 objects are found by their names.\n"
                                           "1 of 8 items that take presses are named by :nth (12.5 %).\n"
                                           "  W B:nth(2)\n"));
}

TEST(Inspect, SaysHowCloseALookupCame)
{
    // Settling is asked for between the two lookups, so both may answer alike.
    ToolRun run(
        inspectFake({aWindow, endsAtQuit,
                     "error:settle:{\"code\":-32010,\"message\":\"cannot find W#a: no\",\"data\":{\"lookedFor\":"
                     "\"W#a\",\"reason\":\"no\",\"candidates\":[{\"name\":\"W#b\",\"class\":\"C\","
                     "\"differences\":[{\"key\":\"id\",\"expected\":\"\\\"a\\\"\",\"found\":\"\\\"b\\\"\"}]}]}}"},
                    {QStringLiteral("--name"), QStringLiteral("W#a")}));
    EXPECT_EQ(run.exitCode(), 1);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("vantle: cannot find W#a: no\n"))) << qPrintable(run.errors());
    EXPECT_EQ(run.output(), QStringLiteral("Closest to it:\n  W#b (C)\n    id  expected \"a\", found \"b\"\n"));
}

TEST(Inspect, GivesUpOnAProgramWithoutWindow)
{
    ToolRun run(inspectFake({"error:find:{\"code\":-32010,\"message\":\"no window\"}"},
                            {QStringLiteral("--timeout"), QStringLiteral("0.5")}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("showed no window within 0.5 s"))) << qPrintable(run.errors());
    EXPECT_EQ(run.output(), QString());
}

TEST(Inspect, ReportsACrashInTheMiddle)
{
    ToolRun run(inspectFake({aWindow, settled, "crash-at:tree"}));
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("SIGSEGV"))) << qPrintable(run.errors());
}

TEST(Inspect, ReportsAnEndInTheMiddle)
{
    ToolRun run(inspectFake({aWindow, "end-at:settle", "silent:tree"}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("ended with exit code 0 before"))) << qPrintable(run.errors());
}

TEST(Inspect, TerminatesAProgramThatDoesNotQuit)
{
    ToolRun run(inspectFake({aWindow, settled, tree, "silent:quit"}));
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.errors());
    EXPECT_TRUE(run.output().startsWith(QStringLiteral("Window")));
}

TEST(Inspect, CanBeInterrupted)
{
    ToolRun run(inspectFake({"silent:find"}));
    // What the program prints stays out of the result.
    ASSERT_TRUE(run.said(QStringLiteral("\"record\":false}")));
    EXPECT_EQ(run.output(), QString());
    run.sendSignal(SIGINT);
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("stopped"))) << qPrintable(run.errors());
}

TEST(Inspect, ReportsAnAgentThatKnowsNothingOfIt)
{
    ToolRun run(inspectFake({aWindow, settled}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("\"tree\""))) << qPrintable(run.errors());
}

TEST(Inspect, ShowsWarningsOfTheAgent)
{
    QStringList words = inspectFake({aWindow, "silent:settle"});
    words.insert(words.size() - 1, QStringLiteral("log:warning:no aliases are known"));
    ToolRun run(words);
    EXPECT_TRUE(run.said(QStringLiteral("vantle: warning: no aliases are known"))) << qPrintable(run.errors());
}

TEST(Inspect, StartsNothingWhenExtensionsAreNotThere)
{
    ToolRun run(inspectFake({}, {QStringLiteral("--extensions"), QStringLiteral("/nowhere/at/all")}));
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_FALSE(run.errors().contains(QStringLiteral("settings"))) << "the program ran";
    EXPECT_TRUE(run.errors().contains(QStringLiteral("/nowhere/at/all"))) << qPrintable(run.errors());
}

TEST(Inspect, SaysWhyAProgramCannotBeStarted)
{
    ToolRun run({QStringLiteral("inspect"), QStringLiteral("--"), QStringLiteral("/nowhere/program")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("/nowhere/program"))) << qPrintable(run.errors());
}
