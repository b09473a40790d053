// How scripts and programs end, and what is said about it.

#include "replayfixture.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>

#include <csignal>

using VantleTest::Replay;
using VantleTest::ToolRun;
using ReplayEndings = Replay;

namespace {

const QStringList shortWait{QStringLiteral("--timeout"), QStringLiteral("0.2")};

TEST_F(ReplayEndings, anErrorEndsTheScriptWithPlaceAndStatement)
{
    ToolRun &run = replay("test.pass();\n"
                          "\n"
                          "  mouseClick(\"Main Button#sav\", 1, 2,\n"
                          "             Qt.LeftButton);\n"
                          "test.fail('not reached');\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run,
                     QStringLiteral("failed: ") + path("script.js")
                         + QStringLiteral(":3:3\n"
                                          "    mouseClick(\"Main Button#sav\", 1, 2,\n"
                                          "               Qt.LeftButton);\n"
                                          "  there is no object Main Button#sav\n"
                                          "  looked for: Main Button#sav\n"
                                          "  reason:     nothing has this id\n"
                                          "  closest:    Main Button#save (QQuickButton)\n"
                                          "              id    expected \"sav\", found \"save\"\n"
                                          "              text  expected \"<b>\", found \"Save\"\n")));
    EXPECT_FALSE(says(run, QStringLiteral("not reached")));
}

TEST_F(ReplayEndings, theColumnIsThatOfTheCall)
{
    ToolRun &run = replay("const a = 1; test.verify(a === 2); /* test.verify() */\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js:1:14\n")));
}

TEST_F(ReplayEndings, whatCoversAnObjectIsNamed)
{
    ToolRun &run = replay("waitForObject('Main Button#covered', 20);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("covered by: Main Dialog#about\n")));
}

TEST_F(ReplayEndings, anImportThatFailsNamesItsOwnLine)
{
    write("shared.mjs", "\nmouseClick('Main Button#nowhere', 1, 1);\nexport const a = 1;\n");
    for (const char *import : {"import { a } from './none.mjs';", "import { b } from './shared.mjs';",
                               "import './shared.mjs';", "export * from './none.mjs';"}) {
        ToolRun &run = replay(QByteArray("test.log('1');\n\n") + import + "\n\ntest.log('5');\n");
        EXPECT_TRUE(endsWith(1, run)) << import;
        EXPECT_TRUE(says(run, QStringLiteral("script.js:3"))) << import;
    }
}

TEST_F(ReplayEndings, anErrorInAModuleNamesBothPlaces)
{
    write("shared.mjs", "\nexport function go() {\n    mouseClick('Main Button#nowhere', 1, 1);\n}\n");
    ToolRun &run = replay("import { go } from './shared.mjs';\n\ngo();\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, path("shared.mjs") + QStringLiteral(":3:5\n")));
    EXPECT_TRUE(says(run, QStringLiteral("called from ") + path("script.js") + QStringLiteral(":3\n")));
}

TEST_F(ReplayEndings, mistakesOfTheScriptNameTheirPlace)
{
    const QPair<QByteArray, QString> mistakes[] = {
        {"\n\nlet x = = 3;\n", QStringLiteral("script.js:3:")},
        {"\nnull.text;\n", QStringLiteral("script.js:2:1\n    null.text;\n  TypeError: ")},
        {"\n\nthrow 'a text';\n", QStringLiteral("script.js:3:1\n    throw 'a text';\n  a text\n")},
        {"function f() {\n    noSuchFunction();\n}\nf();\n", QStringLiteral("script.js:2:5\n")},
        {"fail();\n", QStringLiteral("it went wrong <here> & now")},
    };
    for (const auto &[text, place] : mistakes) {
        ToolRun &run = replay(text);
        EXPECT_TRUE(endsWith(1, run)) << text.constData();
        EXPECT_TRUE(says(run, place)) << text.constData();
    }
}

TEST_F(ReplayEndings, theValuesOfTheArgumentsAreShownAndNotTheLineOfTheLoop)
{
    ToolRun &run = replay("for (const id of ['save', 'sav'])\n    mouseClick(`Main Button#${id}`, 1, 2);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(
        says(run, QStringLiteral("script.js:2:5\n    mouseClick(\"Main Button#sav\", 1, 2)\n  there is no object")));
    EXPECT_FALSE(run.output().contains(QStringLiteral("${id}")));
    ToolRun &object = replay("const save = findObject('Main Button#save');\nfail(save);\n");
    EXPECT_TRUE(endsWith(1, object));
    EXPECT_TRUE(says(object, QStringLiteral("    fail(\"Main Button#save\")\n")));
    ToolRun &literal = replay("fail( 'as it stands' );\n");
    EXPECT_TRUE(says(literal, QStringLiteral("    fail( 'as it stands' );\n")));
}

TEST_F(ReplayEndings, eachOfSeveralStatementsInALineHasItsColumn)
{
    ToolRun &run = replay("test.pass(); test.verify(true); test.verify(false); test.pass();\n"
                          "echo(1); if (true) { echo(2); fail(); }\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js:1:33\n    test.verify(false);\n")));
    EXPECT_TRUE(says(run, QStringLiteral("script.js:2:31\n    fail();\n")));
    EXPECT_TRUE(says(replay("let a = 1; let b = 2; null.text;\n"), QStringLiteral("script.js:1:23\n    null.text;\n")));
}

TEST_F(ReplayEndings, anUnknownFunctionComesWithTheOneThatWasMeant)
{
    ToolRun &run = replay("mouseClik('Main Button#save', 1, 1);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("ReferenceError: mouseClik is not defined; did you mean mouseClick?")));
    EXPECT_TRUE(says(replay("waitForObjekt('Main');\n"), QStringLiteral("did you mean waitForObject?")));
    ToolRun &far = replay("somethingElse();\n");
    EXPECT_TRUE(says(far, QStringLiteral("somethingElse is not defined")));
    EXPECT_FALSE(far.output().contains(QStringLiteral("did you mean")));
}

TEST_F(ReplayEndings, aConditionThatDoesNotComeTrueSaysWhatItHasSeen)
{
    ToolRun &run = replay("waitFor(() => findObject('Main Label#status').text === 'done', 100);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run,
                     QStringLiteral("the condition did not come true within 0.1 s; the last time it was false; "
                                    "Main Label#status.text was \"ready\"")));
    EXPECT_TRUE(says(replay("waitFor(() => '', 50);\n"), QStringLiteral("the last time it was \"\"\n")));
}

TEST_F(ReplayEndings, aProgramThatCrashesWhileItStartsIsToldAsThat)
{
    ToolRun &run = replay("test.pass();\n", {}, {QStringLiteral("crash-at-start")});
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_TRUE(says(run, QStringLiteral("crashed while it was starting: it ended with signal 11 (SIGSEGV)")));
    EXPECT_FALSE(run.output().contains(QStringLiteral("Likely causes")));
}

TEST_F(ReplayEndings, strictNamesAreAskedForAndTheirErrorsTellAllThatFit)
{
    ToolRun &run = replay("mouseClick('Main Button', 1, 1);\n", {QStringLiteral("--strict")});
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("Main Button fits 2 objects")));
    EXPECT_TRUE(says(run, QStringLiteral("one of:     Main Button#save (QQuickButton)\n")));
    EXPECT_TRUE(says(run, QStringLiteral("one of:     Main Button#late (QQuickButton)\n")));
    EXPECT_TRUE(passes("try { mouseClick('Main Button', 1, 1); test.fail(); }\n"
                       "catch (error) { test.compare(error.name, 'AmbiguousName'); }\n",
                       {QStringLiteral("--strict")}));
    EXPECT_FALSE(replay("mouseClick('Main Button', 1, 1);\n").output().contains(QStringLiteral("fits 2 objects")));
}

TEST_F(ReplayEndings, anObjectThatIsGoneIsAnErrorAndTheToolLivesOn)
{
    ToolRun &run = replay("const save = findObject('Main Button#save'); forget(); save.text;\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("the object is gone")));
}

TEST_F(ReplayEndings, aCrashIsNamedWithTheLastOutput)
{
    ToolRun &run = replay("mouseClick('Main Button#save', 1, 1);\ncrash();\ntest.pass();\n", {},
                          {QStringLiteral("print:hello there")});
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_TRUE(
        says(run, QStringLiteral("script.js:2:1\n    crash();\n  the program ended with signal 11 (SIGSEGV)\n")));
    EXPECT_TRUE(says(run, QStringLiteral("  | hello there\n  | about to crash\n")));
}

TEST_F(ReplayEndings, aCrashThatIsCaughtIsStillACrash)
{
    EXPECT_TRUE(endsWith(2, replay("try { crash(); } catch (error) { test.compare(error.name, 'ProgramEnded'); }\n")));
}

TEST_F(ReplayEndings, aProgramThatLeavesWithTheLastStatementIsFine)
{
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1);\nleave(0);\n"));
    EXPECT_TRUE(passes("leaveQuietly(0);\n"));
}

TEST_F(ReplayEndings, aProgramThatIsStillNeededMustNotLeave)
{
    for (const char *leave : {"leave(0)", "leaveQuietly(0)"}) {
        ToolRun &run = replay(QByteArray(leave) + ";\nfindObject('Main Button#save');\n");
        EXPECT_TRUE(endsWith(2, run)) << leave;
        EXPECT_TRUE(says(run, QStringLiteral("script.js:2:1")));
        EXPECT_TRUE(says(run, QStringLiteral("the program ended with exit code 0")));
    }
}

TEST_F(ReplayEndings, aProgramThatEndsAheadOfTheLastStatementIsNotFine)
{
    ToolRun &run = replay("leaveUncalled();\n");
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_TRUE(says(run, QStringLiteral("the program ended with exit code 0")));
}

TEST_F(ReplayEndings, anExitCodeThatIsNotZeroIsADeath)
{
    ToolRun &run = replay("leave(5);\n");
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_TRUE(says(run, QStringLiteral("the program ended with exit code 5")));
}

TEST_F(ReplayEndings, theExitCodeOfAProgramThatLeavesWithTheLastStatementCounts)
{
    for (const char *leave : {"leave(5)", "leaveQuietly(5)", "leaveSlowly(5)", "try { leave(5); } catch (error) { }"}) {
        ToolRun &run = replay(QByteArray(leave) + ";\n");
        EXPECT_TRUE(endsWith(2, run)) << leave;
        EXPECT_TRUE(says(run, QStringLiteral("the program ended with exit code 5"))) << leave;
    }
    EXPECT_TRUE(passes("leaveSlowly(0);\n"));
}

TEST_F(ReplayEndings, aProgramThatIsAboutToEndWhenItIsAskedToQuitHasItsOwnExitCode)
{
    for (const char *quit : {"leave-at-quit:7", "refuse-quit:7"}) {
        ToolRun &run = replay("test.pass();\n", {}, {QLatin1String(quit)});
        EXPECT_TRUE(endsWith(2, run)) << quit;
        EXPECT_TRUE(says(run, QStringLiteral("the program ended with exit code 7"))) << quit;
    }
    EXPECT_TRUE(passes("test.pass();\n", {}, {QStringLiteral("refuse-quit:0")}));
}

TEST_F(ReplayEndings, theNextProgramDoesNotHideHowTheOneBeforeEnded)
{
    for (const char *end : {"leaveQuietly(5);", "try { crash(); } catch (error) { }"}) {
        ToolRun &run = replay(QByteArray(end) + "\nstartApplication();\ntest.pass();\n");
        EXPECT_TRUE(endsWith(2, run)) << end;
        EXPECT_TRUE(says(run, QStringLiteral("before the script started another one"))) << end;
    }
    EXPECT_TRUE(passes("leaveQuietly(5);\nwaitForExit(5000);\nstartApplication();\n"));
}

TEST_F(ReplayEndings, aCrashAfterTheScriptCounts)
{
    ToolRun &run = replay("test.pass();\n", {}, {QStringLiteral("crash-at-quit")});
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_TRUE(says(run, QStringLiteral("the program ended with signal 11 (SIGSEGV)")));
}

TEST_F(ReplayEndings, theExitCodeAfterTheScriptDoesNotCount)
{
    EXPECT_TRUE(passes("test.pass();\n", {}, {QStringLiteral("exit-at-quit:4")}));
}

TEST_F(ReplayEndings, aProgramThatDoesNotQuitIsEnded)
{
    EXPECT_TRUE(passes("test.pass();\n", {}, {QStringLiteral("ignore-quit")}));
}

TEST_F(ReplayEndings, aProgramThatHangsIsSaidToHang)
{
    ToolRun &run = replay("hang();\n", shortWait);
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("the program did not answer within 10.2 s: its event loop hangs")));
}

TEST_F(ReplayEndings, aLongActionIsNoHang)
{
    // Longer than a program may leave a call without an answer.
    EXPECT_TRUE(passes("play(12000);\ntest.pass();\n", shortWait));
}

TEST_F(ReplayEndings, aCallThatNeverComesBackIsNotBlamedOnTheEventLoop)
{
    ToolRun &run = replay("stall();\n", shortWait);
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("did not answer within 10.2 s: its event loop runs, but what was called")));
}

TEST_F(ReplayEndings, aProgramDiesWhileTheScriptSnoozes)
{
    // The answer comes first, and the end while nobody asks for anything.
    ToolRun &run = replay("leaveQuietly(6);\nsnooze(30);\n");
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(endsWith(2, run));
    EXPECT_LT(clock.elapsed(), 20000);
}

TEST_F(ReplayEndings, theWorstOfSeveralScriptsCounts)
{
    write("good.js", "test.pass();\n");
    write("bad.js", "test.fail();\n");
    write("dead.js", "crash();\n");
    EXPECT_TRUE(endsWith(1, replayFiles({path("good.js"), path("bad.js"), path("good.js")})));
    EXPECT_TRUE(endsWith(2, replayFiles({path("dead.js"), path("bad.js"), path("good.js")})));
    ToolRun &run = replayFiles({path("dead.js"), path("bad.js"), path("good.js")});
    EXPECT_TRUE(says(run, QStringLiteral("3 scripts: 1 passed, 1 failed, 1 the program died; ")));
}

TEST_F(ReplayEndings, aProgramThatCannotBeStartedIsThree)
{
    write("script.js", "test.pass();\n");
    const QString script = path("script.js");
    ToolRun &missing = start(
        {QStringLiteral("--offscreen"), script, QStringLiteral("--"), QStringLiteral("/nowhere/at/all")});
    EXPECT_TRUE(endsWith(3, missing));
    EXPECT_TRUE(says(missing, QStringLiteral("cannot start \"/nowhere/at/all\": No such file or directory")));
    ToolRun &silent = start({QStringLiteral("--offscreen"), script, QStringLiteral("--"), QStringLiteral("true")});
    EXPECT_TRUE(endsWith(3, silent));
    EXPECT_TRUE(says(silent, QStringLiteral("\"true\" ended with exit code 0 before its agent reported")));
    ToolRun &none = start({QStringLiteral("--offscreen"), script});
    EXPECT_TRUE(endsWith(0, none));
}

TEST_F(ReplayEndings, aProgramWithoutAnAgentIsGivenUpAndKilled)
{
    ToolRun &run = replay("test.pass();\n", {QStringLiteral("--start-timeout"), QStringLiteral("0.3")},
                          {QStringLiteral("no-hello")});
    EXPECT_TRUE(endsWith(3, run));
    EXPECT_TRUE(says(run, QStringLiteral("the agent did not report from ")));
}

TEST_F(ReplayEndings, aForgottenProgramIsThreeAndSaysWhereItGoes)
{
    for (const char *text : {"findObject('Main');\n", "mouseClick('Main', 1, 1);\n", "closeApplication();\n",
                             "const f = () => type(\n  'Main', 'x');\nf();\n", "waitForExit(10);\n"}) {
        write("script.js", text);
        ToolRun &run = start({QStringLiteral("--offscreen"), path("script.js")});
        EXPECT_TRUE(endsWith(3, run)) << text;
        EXPECT_TRUE(says(run,
                         QStringLiteral("no program was started: put \"-- PROGRAM\" behind the scripts, or call "
                                        "startApplication first")))
            << text;
    }
    write("script.js", "test.log(nothing);\n");
    EXPECT_TRUE(endsWith(1, start({QStringLiteral("--offscreen"), path("script.js")}))) << "is no call";
    write("script.js", "try { findObject('Main'); } catch (e) { test.compare(e.name, 'NoProgram'); }\n");
    EXPECT_TRUE(endsWith(0, start({QStringLiteral("--offscreen"), path("script.js")})));
}

TEST_F(ReplayEndings, startingAgainNeedsAProgramToo)
{
    write("script.js", "startApplication();\n");
    ToolRun &nothing = start({QStringLiteral("--offscreen"), path("script.js")});
    EXPECT_TRUE(endsWith(3, nothing));
    EXPECT_TRUE(says(nothing, QStringLiteral("there is no program to start")));
}

TEST_F(ReplayEndings, aStartThatTheScriptTriesMayFail)
{
    EXPECT_TRUE(passes("try { startApplication('/nowhere/at/all'); test.fail(); }\n"
                       "catch (error) { test.compare(error.name, 'StartFailed'); }\n"));
}

TEST_F(ReplayEndings, interruptsEndScriptAndProgram)
{
    for (const char *text : {"snooze(100);\n", "while (true) {}\n", "try { hang(); } catch (e) { snooze(100); }\n",
                             "waitFor(() => false, 100000);\n"}) {
        ToolRun &run = replay(QByteArray("test.log('begun');\n") + text, {},
                              {QStringLiteral("note:") + path("notes"), QStringLiteral("environment:") + path("env")});
        ASSERT_TRUE(run.printed(QStringLiteral("started")));
        VantleTest::awaitFile(path("env"));
        run.sendSignal(SIGINT);
        EXPECT_TRUE(endsWith(3, run)) << text;
        EXPECT_TRUE(says(run, QStringLiteral("stopped by the user"))) << text;
        QFile::remove(path("env"));
    }
}

TEST_F(ReplayEndings, afterAnInterruptNoFurtherScriptBegins)
{
    write("one.js", "snooze(100);\n");
    write("two.js", "test.pass();\n");
    ToolRun &run = replayFiles({path("one.js"), path("two.js")}, {},
                               {QStringLiteral("note:") + path("notes"), QStringLiteral("environment:") + path("env")});
    VantleTest::awaitFile(path("env"));
    run.sendSignal(SIGTERM);
    EXPECT_TRUE(endsWith(3, run));
    EXPECT_TRUE(says(run, QStringLiteral("2 scripts: 2 not run to its end; ")));
    EXPECT_EQ(VantleTest::contentOf(path("notes")), QStringLiteral("started\n"));
}

TEST_F(ReplayEndings, aSecondInterruptKillsTheProgramAtOnce)
{
    ToolRun &run = replay("snooze(100);\n", {},
                          {QStringLiteral("ignore-term"), QStringLiteral("environment:") + path("env")});
    VantleTest::awaitFile(path("env"));
    run.sendSignal(SIGINT);
    ASSERT_TRUE(run.printed(QStringLiteral("stopping; another Ctrl-C kills the program at once\n")));
    run.sendSignal(SIGINT);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(endsWith(3, run));
    EXPECT_LT(clock.elapsed(), 4500);
}

TEST_F(ReplayEndings, plainLinesHaveNoColoursAndNoBars)
{
    ToolRun &run = replay("test.fail();\n");
    EXPECT_TRUE(endsWith(1, run));
    static const QRegularExpression controls(QStringLiteral("[\\x00-\\x09\\x0b-\\x1f]"));
    EXPECT_FALSE(run.output().contains(controls));
    EXPECT_EQ(run.errors(), QString());
}

} // namespace
