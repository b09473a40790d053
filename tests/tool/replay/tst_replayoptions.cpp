// What the options of `vantle replay` change.

#include "replayfixture.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QStandardPaths>

using VantleTest::contentOf;
using VantleTest::Replay;
using VantleTest::ToolRun;
using ReplayOptionsTest = Replay;

namespace {

QString variable(const QString &environment, const char *name)
{
    const QRegularExpression line(QStringLiteral("(?:^|\n)%1=([^\n]*)").arg(QLatin1String(name)));
    return line.match(environment).captured(1);
}

TEST_F(ReplayOptionsTest, mistakesEndWithThreeBeforeAnythingStarts)
{
    write("good.js", "test.pass();\n");
    const QString good = path("good.js");
    const QPair<QStringList, QString> mistakes[] = {
        {{}, QStringLiteral("the name of a file is missing ahead of \"--\"")},
        {{path("none.js")}, QStringLiteral("there is no script \"%1\" that can be read").arg(path("none.js"))},
        {{path(".")}, QStringLiteral("there is no script ")},
        {{good, QStringLiteral("--timeout=0")}, QStringLiteral("\"--timeout\" is a number of seconds above 0")},
        {{good, QStringLiteral("--workers=0")}, QStringLiteral("\"--workers\" is a number from 1 to 256, not \"0\"")},
        {{good, QStringLiteral("--junit=")}, QStringLiteral("option \"--junit\" needs the name of a file")},
        {{good, good, QStringLiteral("--record=a.js")},
         QStringLiteral("\"--record\" goes with one script, not with 2")},
        {{good, QStringLiteral("--offscreen"), QStringLiteral("--share-display")},
         QStringLiteral("exclude each other")},
        {{good, QStringLiteral("--"), QString()}, QStringLiteral("the program to start is missing")},
    };
    for (const auto &[words, message] : mistakes) {
        ToolRun &run = start(words);
        EXPECT_EQ(run.exitCode(), 3) << qPrintable(message);
        EXPECT_TRUE(run.errors().contains(message)) << qPrintable(run.errors());
        EXPECT_EQ(run.output(), QString());
    }
}

TEST_F(ReplayOptionsTest, noFileIsWrittenOverAScript)
{
    write("script.js", "test.pass();\n");
    QDir(path(".")).mkdir(QStringLiteral("sub"));
    ASSERT_TRUE(QFile::link(path("script.js"), path("link.js")));
    for (const char *option : {"--record", "--report", "--junit", "--tree"}) {
        for (const char *file : {"script.js", "sub/../script.js", "link.js"}) {
            ToolRun &run = start({QLatin1String(option), path(file), path("script.js"), QStringLiteral("--"),
                                  QStringLiteral(VANTLE_FAKE_PROGRAM), QStringLiteral("note:") + path("notes")});
            EXPECT_EQ(run.exitCode(), 3) << option;
            EXPECT_TRUE(run.errors().contains(QStringLiteral("\"%1 %2\" would overwrite the script \"%3\"")
                                                  .arg(QLatin1String(option), path(file), path("script.js"))))
                << qPrintable(run.errors());
        }
    }
    EXPECT_EQ(contentOf(path("script.js")), QStringLiteral("test.pass();\n"));
    EXPECT_FALSE(QFile::exists(path("notes")));
}

TEST_F(ReplayOptionsTest, aProgramAmongTheScriptsIsNamed)
{
    write("script.js", "test.pass();\n");
    write("run.sh", "#!/bin/sh\n");
    write("text.js", "test.pass();\n");
    const auto executable = QFile::ReadOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(path("run.sh"), executable));
    ASSERT_TRUE(QFile::setPermissions(path("text.js"), executable));
    for (const QString &program : {path("run.sh"), QStringLiteral(VANTLE_FAKE_PROGRAM)}) {
        ToolRun &run = start({path("script.js"), program});
        EXPECT_EQ(run.exitCode(), 3);
        EXPECT_TRUE(run.errors().contains(
            QStringLiteral("\"%1\" is a program and no script; put \"--\" ahead of the program").arg(program)));
        EXPECT_EQ(run.output(), QString());
    }
    EXPECT_TRUE(endsWith(0, replayFiles({path("text.js")})));
    write("binary.js", "test.log('\xff');\n");
    ToolRun &run = start({path("binary.js")});
    EXPECT_EQ(run.exitCode(), 3);
    EXPECT_TRUE(run.errors().contains(QStringLiteral("it is no UTF-8 text"))) << qPrintable(run.errors());
}

TEST_F(ReplayOptionsTest, optionsMayStandBehindScripts)
{
    write("good.js", "test.pass();\n");
    ToolRun &run = start({path("good.js"), QStringLiteral("--offscreen"), path("good.js"), QStringLiteral("--"),
                          QStringLiteral(VANTLE_FAKE_PROGRAM), QStringLiteral("--timeout")});
    EXPECT_TRUE(endsWith(0, run));
    EXPECT_TRUE(says(run, QStringLiteral("2 scripts: 2 passed")));
}

TEST_F(ReplayOptionsTest, theTimeoutIsThatOfEveryWaitWithoutOne)
{
    ToolRun &run = replay("waitFor(() => false);\n", {QStringLiteral("--timeout"), QStringLiteral("0.07")});
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("did not come true within 0.07 s")));
}

TEST_F(ReplayOptionsTest, offscreenIsSaidToTheProgram)
{
    EXPECT_TRUE(passes("test.pass();\n", {}, {QStringLiteral("environment:") + path("env")}));
    EXPECT_EQ(variable(contentOf(path("env")), "QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
}

TEST_F(ReplayOptionsTest, theProgramKeepsTheUsersSettingsUnlessFreshOnesAreAskedFor)
{
    const QMap<QString, QString> mine{{QStringLiteral("XDG_CONFIG_HOME"), path("mine")}};
    const QStringList actions{QStringLiteral("environment:") + path("env")};
    EXPECT_TRUE(endsWith(0, replay("test.pass();\n", {}, actions, mine)));
    EXPECT_EQ(variable(contentOf(path("env")), "XDG_CONFIG_HOME"), path("mine"));

    EXPECT_TRUE(endsWith(0, replay("test.pass();\n", {QStringLiteral("--fresh-settings")}, actions, mine)));
    QSet<QString> directories;
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        const QString directory = variable(contentOf(path("env")), name);
        EXPECT_NE(directory, QString());
        EXPECT_NE(directory, path("mine"));
        EXPECT_FALSE(QFile::exists(directory)) << "is left behind";
        directories.insert(directory);
    }
    EXPECT_EQ(directories.size(), 3);
}

TEST_F(ReplayOptionsTest, aSecondStartInAScriptFindsTheSettingsOfTheFirst)
{
    EXPECT_TRUE(passes("startApplication('" VANTLE_FAKE_PROGRAM "', 'environment:" + path("one").toUtf8()
                           + "');\n"
                             "startApplication('" VANTLE_FAKE_PROGRAM "', 'environment:"
                           + path("two").toUtf8() + "');\n",
                       {QStringLiteral("--fresh-settings")}));
    EXPECT_EQ(variable(contentOf(path("one")), "XDG_CONFIG_HOME"), variable(contentOf(path("two")), "XDG_CONFIG_HOME"));
}

TEST_F(ReplayOptionsTest, workersRunScriptsSideBySideWithSettingsOfTheirOwn)
{
    // Each waits for the other: one after the other they would never end.
    write("one.js",
          "startApplication('" VANTLE_FAKE_PROGRAM "', 'environment:" + path("one").toUtf8()
              + "', 'await:" + path("two").toUtf8() + "');\n");
    write("two.js",
          "startApplication('" VANTLE_FAKE_PROGRAM "', 'environment:" + path("two").toUtf8()
              + "', 'await:" + path("one").toUtf8() + "');\n");
    ToolRun &run = replayFiles({path("one.js"), path("two.js")}, {QStringLiteral("--workers"), QStringLiteral("2")});
    EXPECT_TRUE(endsWith(0, run));
    const QString one = contentOf(path("one"));
    const QString two = contentOf(path("two"));
    EXPECT_NE(variable(one, "XDG_CONFIG_HOME"), variable(two, "XDG_CONFIG_HOME"));
    EXPECT_NE(variable(one, "XDG_RUNTIME_DIR"), variable(two, "XDG_RUNTIME_DIR"));
    EXPECT_FALSE(variable(one, "VANTLE_AGENT_SOCKET").startsWith(variable(one, "XDG_RUNTIME_DIR")));
    EXPECT_NE(variable(one, "VANTLE_AGENT_SOCKET"), variable(two, "VANTLE_AGENT_SOCKET"));
}

TEST_F(ReplayOptionsTest, workersHaveDisplaysOfTheirOwn)
{
    if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty())
        GTEST_SKIP() << "Xvfb is not installed";
    for (const char *name : {"one", "two"}) {
        const char *other = qstrcmp(name, "one") == 0 ? "two" : "one";
        write(qPrintable(QLatin1String(name) + QStringLiteral(".js")),
              "startApplication('" VANTLE_FAKE_PROGRAM "', 'environment:" + path(name).toUtf8()
                  + "', 'await:" + path(other).toUtf8() + "');\n");
    }
    ToolRun &run = start({path("one.js"), path("two.js"), QStringLiteral("--workers=2")},
                         {{QStringLiteral("DISPLAY"), QStringLiteral(":4711")}});
    EXPECT_TRUE(endsWith(0, run));
    const QString one = variable(contentOf(path("one")), "DISPLAY");
    const QString two = variable(contentOf(path("two")), "DISPLAY");
    static const QRegularExpression display(QStringLiteral("^:\\d+$"));
    EXPECT_TRUE(one.contains(display)) << qPrintable(one);
    EXPECT_TRUE(two.contains(display)) << qPrintable(two);
    EXPECT_NE(one, two);
    EXPECT_NE(one, QStringLiteral(":4711"));
    EXPECT_EQ(variable(contentOf(path("one")), "QT_QPA_PLATFORM"), QStringLiteral("xcb"));
}

TEST_F(ReplayOptionsTest, workersShareTheDisplayIfTheyAreToldTo)
{
    write("one.js", "test.pass();\n");
    ToolRun &run = start({path("one.js"), path("one.js"), QStringLiteral("--workers=2"),
                          QStringLiteral("--share-display"), QStringLiteral("--"), QStringLiteral(VANTLE_FAKE_PROGRAM),
                          QStringLiteral("environment:") + path("env")},
                         {{QStringLiteral("DISPLAY"), QStringLiteral(":4711")}});
    EXPECT_TRUE(endsWith(0, run));
    EXPECT_EQ(variable(contentOf(path("env")), "DISPLAY"), QStringLiteral(":4711"));
}

TEST_F(ReplayOptionsTest, aReplayCanBeRecorded)
{
    const QByteArray text = "mouseClick(\"Main Button#save\", 12, 9, 1);\nmouseClick(\"Main Button#save\", 3, 4, 1);\n";
    EXPECT_TRUE(passes(text, {QStringLiteral("--record"), path("second.js")}));
    const QStringList lines = contentOf(path("second.js")).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 6) << qPrintable(lines.join(QLatin1Char('\n')));
    EXPECT_TRUE(lines.at(0).startsWith(QStringLiteral("// Recorded by vantle ")));
    EXPECT_EQ(lines.at(2), QStringLiteral("mouseClick(\"Main Button#save\", 12, 9, 1);"));
    EXPECT_EQ(lines.at(3), QStringLiteral("mouseClick(\"Main Button#save\", 3, 4, 1);"));
    EXPECT_TRUE(lines.at(4).startsWith(QStringLiteral("// Recorded while ")));
}

TEST_F(ReplayOptionsTest, aRecordingThatCannotBeWrittenIsThree)
{
    ToolRun &run = replay("test.pass();\n", {QStringLiteral("--record"), path("none/second.js")});
    EXPECT_TRUE(endsWith(3, run));
    EXPECT_TRUE(run.errors().contains(QStringLiteral("cannot write \"%1\": ").arg(path("none/second.js"))))
        << qPrintable(run.errors());
}

TEST_F(ReplayOptionsTest, aReportThatCannotBeWrittenIsThree)
{
    for (const char *option : {"--junit", "--report"}) {
        ToolRun &run = replay("test.pass();\n", {QLatin1String(option), path("none/report")});
        EXPECT_TRUE(endsWith(3, run)) << option;
        EXPECT_TRUE(run.errors().contains(QStringLiteral("cannot write \"%1\": ").arg(path("none/report"))));
    }
}

} // namespace
