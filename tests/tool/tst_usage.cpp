#include "toolrun.h"

#include <gtest/gtest.h>

using VantleTest::ToolRun;

namespace {

struct Usage
{
    QStringList words;
    QString message;
};

TEST(Usage, helpGoesToStandardOutputWithSuccess)
{
    for (const QString &option : {QStringLiteral("--help"), QStringLiteral("-h")}) {
        ToolRun run({option});
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_TRUE(run.output().startsWith(QStringLiteral("Usage: vantle COMMAND")));
        EXPECT_EQ(run.errors(), QString());
    }
}

TEST(Usage, everyCommandExplainsItselfWithExamples)
{
    for (const QString &command : {QStringLiteral("record"), QStringLiteral("replay"), QStringLiteral("doctor")}) {
        ToolRun run({command, QStringLiteral("--help")});
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_TRUE(run.output().startsWith(QStringLiteral("Usage: vantle %1 ").arg(command)));
        EXPECT_TRUE(run.output().contains(QStringLiteral("Examples:\n  ")));
        EXPECT_EQ(run.errors(), QString());
    }
}

TEST(Usage, versionIsOneLine)
{
    ToolRun run({QStringLiteral("--version")});
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_EQ(run.output(), QStringLiteral("vantle 0.1.0\n"));
}

TEST(Usage, mistakesAreNamedAndEndWithThree)
{
    const Usage mistakes[] = {
        {{}, QStringLiteral("vantle: a command is missing; there are: record, replay, inspect, doctor. See \"vantle --help\"\n")},
        {{QStringLiteral("fly")}, QStringLiteral("vantle: unknown command \"fly\"; there are: record, replay, inspect, doctor\n")},
        {{QStringLiteral("--fly")}, QStringLiteral("vantle: unknown option \"--fly\"; see \"vantle --help\"\n")},
        {{QStringLiteral("record")},
         QStringLiteral("vantle: the program to start is missing; see \"vantle record --help\"\n")},
        {{QStringLiteral("record"), QStringLiteral("--fly"), QStringLiteral("x")},
         QStringLiteral("vantle: unknown option \"--fly\"; see \"vantle record --help\"\n")},
        {{QStringLiteral("record"), QStringLiteral("--start-timeout=soon"), QStringLiteral("x")},
         QStringLiteral("vantle: \"--start-timeout\" is a number of seconds above 0 and up to 86400, not \"soon\"\n")},
        {{QStringLiteral("doctor"), QStringLiteral("now")},
         QStringLiteral("vantle: unexpected argument \"now\"; see \"vantle doctor --help\"\n")},
    };
    for (const Usage &mistake : mistakes) {
        ToolRun run(mistake.words);
        EXPECT_EQ(run.exitCode(), 3) << qPrintable(mistake.message);
        EXPECT_EQ(run.errors(), mistake.message);
        EXPECT_EQ(run.output(), QString());
    }
}

} // namespace
