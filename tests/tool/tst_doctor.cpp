#include "toolrun.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

using namespace VantleTest;

namespace {

TEST(Doctor, findsNothingWrongWithThisInstallation)
{
    ToolRun run({QStringLiteral("doctor")});
    EXPECT_EQ(run.exitCode(), 0) << qPrintable(run.output() + run.errors());
    EXPECT_FALSE(run.output().contains(QStringLiteral("FAILED"))) << qPrintable(run.output());
    EXPECT_TRUE(run.output().contains(QStringLiteral("ok     self-test: the agent was loaded into a program with Qt 6.")))
        << qPrintable(run.output());
    EXPECT_TRUE(run.output().endsWith(QStringLiteral("All is well.\n")));
}

TEST(Doctor, hasOneLineForEachCheck)
{
    ToolRun run({QStringLiteral("doctor")});
    run.exitCode();
    const QStringList lines = run.output().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 11);
    static const QRegularExpression form(QStringLiteral("^(ok    |note  |FAILED) [A-Za-z' -]+: .+$"));
    for (const QString &line : lines.first(10))
        EXPECT_TRUE(form.match(line).hasMatch()) << qPrintable(line);
}

TEST(Doctor, saysThatACommandThatWasCopiedAloneIsNotInstalled)
{
    const QTemporaryDir directory;
    const QString copy = directory.filePath(QStringLiteral("vantle"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(VANTLE_TOOL), copy));
    QProcess process;
    process.start(copy, {QStringLiteral("doctor")});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 3);
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_TRUE(output.contains(QStringLiteral("FAILED prefix: "))) << qPrintable(output);
    EXPECT_TRUE(output.contains(QStringLiteral("don't copy the command alone"))) << qPrintable(output);
    EXPECT_TRUE(output.contains(QStringLiteral("note   self-test: left out"))) << qPrintable(output);
    EXPECT_TRUE(output.endsWith(QStringLiteral("Recording will not work here.\n")));
}

} // namespace
