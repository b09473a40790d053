// What scripts can do.

#include "replayfixture.h"

using VantleTest::Replay;
using VantleTest::ToolRun;
using ReplayScripts = Replay;

namespace {

TEST_F(ReplayScripts, aRecordedScriptPasses)
{
    ToolRun &run = replay(
        "// Recorded by vantle 0.1.0 on 2024-02-29T12:00:00+01:00\n"
        "// Program: ./notes\n"
        "mouseClick(\"Main Button#save\", 12, 9, Qt.LeftButton);\n"
        "mouseClick(\"Main Button#save\", 12, 9, Qt.ControlModifier|Qt.ShiftModifier, Qt.LeftButton);\n"
        "type(\"Main Button#save\", \"<Ctrl+A>\");\n");
    EXPECT_TRUE(endsWith(0, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js: passed: 3 steps, 0 checks, ")));
}

TEST_F(ReplayScripts, anEmptyScriptPasses)
{
    EXPECT_TRUE(passes(""));
}

TEST_F(ReplayScripts, enumeratorsHaveTheValuesOfQt)
{
    EXPECT_TRUE(
        passes("test.compare(echo(Qt.NoButton, Qt.LeftButton, Qt.RightButton, Qt.MiddleButton), [0, 1, 2, 4]);\n"
               "test.compare(Qt.ControlModifier|Qt.ShiftModifier, 0x06000000);\n"
               "test.compare(Qt.AltModifier|Qt.MetaModifier|Qt.NoModifier, 0x18000000);\n"
               "test.compare([WindowState.None, WindowState.Normal, WindowState.Maximize, WindowState.Minimize,\n"
               "    WindowState.Fullscreen], [0, 1, 2, 3, 4]);\n"));
}

TEST_F(ReplayScripts, enumeratorsThatNoFunctionTakesAreErrors)
{
    for (const char *name : {"Qt.BackButton", "Qt.KeypadModifier", "Qt.GroupSwitchModifier", "Qt.LeftBotton"}) {
        ToolRun &run = replay(QByteArray("mouseClick('Main Button#save', 1, 1, ") + name + ");\n");
        EXPECT_TRUE(endsWith(1, run)) << name;
        EXPECT_TRUE(says(run, QStringLiteral("scripts have no %1; there are NoButton, ").arg(QLatin1String(name))));
        EXPECT_TRUE(says(run, QStringLiteral("LeftButton, RightButton, MiddleButton, "))) << name;
    }
    EXPECT_TRUE(endsWith(1, replay("WindowState.Maximized;\n")));
}

TEST_F(ReplayScripts, anObjectGoesWhereANameDoes)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "mouseClick(save, 1, 2, Qt.LeftButton);\n"
                       "test.compare(findObject('Main Label#status').count, 1);\n"));
}

TEST_F(ReplayScripts, propertiesAreReadByPlainAccess)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "test.compare(save.text, 'Save');\n"
                       "test.compare(save.enabled, true);\n"
                       "test.compare(save.width, 80.5);\n"
                       "test.compare(save.missing, null);\n"
                       "test.compare(save.color, '#4477aa');\n"
                       "test.compare(save.veil, '#804477aa');\n"
                       "test.compare(save.position, {x: 3, y: 4});\n"
                       "test.compare(save.area.height, 3);\n"
                       "test.compare(save.source, 'qrc:/save.png');\n"
                       "test.compare(save.born, new Date('2024-02-29T12:00:00Z'));\n"
                       "test.compare(save.map, {a: 1, type: 'b'});\n"
                       "test.compare(save.odd, 'odd one');\n"
                       "test.compare(save.list.length, 3);\n"
                       "test.compare(save.list[2].title, 'Fake');\n"
                       "test.compare(save.parent.title, 'Fake');\n"
                       "test.verify('text' in save);\n"
                       "test.verify(!('nonsense' in save));\n"));
}

TEST_F(ReplayScripts, membersOfAValueAreRead)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "test.compare(save.font.pixelSize, 12);\n"
                       "test.compare(save.font, 'Sans,12');\n"
                       "test.compare(save.font, save.font);\n"
                       "test.compare(`${save.font}`, 'Sans,12');\n"
                       "test.verify('pixelSize' in save.font && !('size' in save.font));\n"
                       "save.font.pixelSize = 20; test.compare(save.font.pixelSize, 20);\n"
                       "test.compare(echo(save.font), ['Sans,12']);\n"));
    ToolRun &run = replay("test.compare(findObject('Main Button#save').font.pixelsize, 12);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("QQuickButton has no property \"font.pixelsize\"")));
    ToolRun &other = replay("test.compare(findObject('Main Button#save').font, 'Serif,12');\n");
    EXPECT_TRUE(endsWith(1, other));
    EXPECT_TRUE(says(other, QStringLiteral("value  expected \"Serif,12\", found \"Sans,12\"")));
}

TEST_F(ReplayScripts, objectsOfAProgramBeforeAreGone)
{
    // Every program counts from 1: the same number is another object there.
    const QByteArray head = "const old = findObject('Main Button#save');\n"
                            "const font = old.font, join = old.join;\n"
                            "startApplication();\n"
                            "test.verify(old !== findObject('Main Button#save'));\n";
    for (const char *use : {"old.text", "old.text = 'x'", "'text' in old", "mouseClick(old, 1, 1)", "children(old)",
                            "join(1)", "font.pixelSize", "findObject('Main').parent = old", "test.screenshot(old)"}) {
        EXPECT_TRUE(
            passes(head + "try { " + use + "; test.fail(); } catch (e) { test.compare(e.name, 'ObjectGone'); }\n"))
            << use;
    }
    ToolRun &run = replay(head + "\nmouseClick(old, 1, 1);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run,
                     QStringLiteral("script.js:6:1\n    mouseClick(old, 1, 1);\n  QQuickButton belongs to a program "
                                    "that has ended; look for it again\n")));
}

TEST_F(ReplayScripts, anObjectIsAlwaysTheSameScriptObject)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "test.verify(save === findObject('Main Button#save'));\n"
                       "test.compare(save.parent, findObject('Main'));\n"
                       "test.verify(save !== save.parent);\n"
                       "test.compare(`${save}`, 'Main Button#save');\n"));
}

TEST_F(ReplayScripts, propertiesAreWrittenByPlainAccess)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "save.text = 'Load'; test.compare(save.text, 'Load');\n"
                       "save.width = 12.25; test.compare(save.width, 12.25);\n"
                       "save.position = {x: 7, y: 8}; test.compare(save.position, {x: 7, y: 8});\n"
                       "save.list = [1, null]; test.compare(save.list, [1, null]);\n"
                       "save.map = {deep: {er: [true]}}; test.compare(save.map, {deep: {er: [true]}});\n"
                       "save.born = new Date(0); test.compare(save.born.getTime(), 0);\n"
                       "const status = findObject('Main Label#status');\n"
                       "save.parent = status; test.verify(save.parent === status);\n"));
}

TEST_F(ReplayScripts, whatTheProgramRefusesToBeWrittenIsAnError)
{
    ToolRun &run = replay("findObject('Main').readOnly = 1;\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("\"readOnly\" can't be written")));
}

TEST_F(ReplayScripts, valuesThatNoProgramCanTakeAreErrors)
{
    for (const char *value : {"NaN", "Infinity", "() => 1"}) {
        ToolRun &run = replay(QByteArray("findObject('Main').title = ") + value + ";\n");
        EXPECT_TRUE(endsWith(1, run)) << value;
        EXPECT_TRUE(says(run, QStringLiteral("can't be given to the program")));
    }
}

TEST_F(ReplayScripts, methodsAreCalled)
{
    EXPECT_TRUE(passes("const save = findObject('Main Button#save');\n"
                       "test.compare(save.join(1, 'a', null), [1, 'a', null]);\n"
                       "test.verify(save.join(save)[0] === save);\n"));
    ToolRun &run = replay("findObject('Main').nonsense(3);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("Main has no property \"nonsense\"")));
}

TEST_F(ReplayScripts, aMistypedPropertyIsAnError)
{
    ToolRun &run = replay("const save = findObject('Main Button#save');\n"
                          "test.verify(save.enabeld);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js:2:1")));
    EXPECT_TRUE(says(run, QStringLiteral("QQuickButton has no property \"enabeld\"")));
}

TEST_F(ReplayScripts, aMethodThatIsNotCalledDoesNotPassAsTrue)
{
    ToolRun &run = replay("const save = findObject('Main Button#save');\n"
                          "test.verify(save.join);\n"
                          "test.compare(save.join, 1);\n"
                          "waitFor(() => save.join);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("\"join\" is a method of Main Button#save: call it")));
    EXPECT_TRUE(says(run, QStringLiteral("3 steps, 2 checks, 3 failed")));
}

TEST_F(ReplayScripts, childrenAreListed)
{
    EXPECT_TRUE(
        passes("test.compare(children(), [findObject('Main')]);\n"
               "test.compare(children('Main').length, 2);\n"
               "test.compare(children(findObject('Main')).map(String), ['Main Button#save', 'Main Label#status']);\n"
               "test.compare(children('Main Button#save'), []);\n"));
}

TEST_F(ReplayScripts, existenceCanBeAskedForWithoutAnError)
{
    EXPECT_TRUE(passes("test.verify(objectExists('Main Button#save'));\n"
                       "test.verify(!objectExists('Main Button#nowhere'));\n"));
}

TEST_F(ReplayScripts, waitingEndsWhenTheObjectComes)
{
    EXPECT_TRUE(passes("test.verify(!objectExists('Main Button#late'));\n"
                       "const late = waitForObject('Main Button#late');\n"
                       "test.compare(String(late), 'Main Button#late');\n"));
}

TEST_F(ReplayScripts, waitingForAConditionEndsWhenItHolds)
{
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                       "const text = waitFor(() => findObject('Main Label#status').text === 'clicked' && 'yes');\n"
                       "test.compare(text, 'yes');\n"));
}

TEST_F(ReplayScripts, aConditionMayAskForWhatIsNotThereYet)
{
    EXPECT_TRUE(passes("let asked = 0;\n"
                       "waitFor(() => ++asked > 2 || findObject('Main Button#nowhere'));\n"
                       "test.compare(asked, 3);\n"));
}

TEST_F(ReplayScripts, aConditionThatNeverHoldsIsAnErrorWithTheLastReason)
{
    ToolRun &run = replay("waitFor(() => findObject('Main Button#nowhere').text === 'x', 50);\n"
                          "test.fail('not reached');\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run,
                     QStringLiteral("the condition did not come true within 0.05 s; the last time: "
                                    "there is no object Main Button#nowhere")));
    EXPECT_TRUE(says(run, QStringLiteral("closest:    Main Button#save (QQuickButton)")));
    EXPECT_FALSE(says(run, QStringLiteral("not reached")));
}

TEST_F(ReplayScripts, aMistakeInAConditionIsNotWaitedFor)
{
    ToolRun &run = replay("waitFor(() => undefinedThing.text);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("undefinedThing is not defined")));
}

TEST_F(ReplayScripts, snoozingTakesItsTimeAndNoMore)
{
    EXPECT_TRUE(passes("const before = Date.now();\n"
                       "snooze(0.05);\n"
                       "const took = Date.now() - before;\n"
                       "test.verify(took >= 45 && took < 5000, 'took ' + took);\n"));
}

TEST_F(ReplayScripts, functionsOfTheToolWinOverThoseOfTheAgent)
{
    // The program offers a "snooze" as well, which would give its arguments back.
    EXPECT_TRUE(passes("test.compare(snooze(0), undefined);\n"));
}

TEST_F(ReplayScripts, valuesAreComparedInDepth)
{
    EXPECT_TRUE(passes("test.compare(0.1 + 0.2, 0.3);\n"
                       "test.compare(NaN, NaN);\n"
                       "test.compare({a: [1, {b: 2}]}, {a: [1, {b: 2}]});\n"
                       "test.compare(undefined, undefined);\n"));
    const char *const different[] = {"1, '1'",          "null, undefined", "[1], [1, 2]", "{a: 1}, {b: 1}", "[], {}",
                                     "new Date(0), {}", "0.3, 0.3001",     "'a', 'A'",    "true, 1"};
    for (const char *values : different)
        EXPECT_TRUE(endsWith(1, replay(QByteArray("test.compare(") + values + ");\n"))) << values;
}

TEST_F(ReplayScripts, aDifferenceIsNamedByItsPlace)
{
    ToolRun &run = replay("test.compare({a: [1, {b: 'x'}], c: 3}, {a: [1, {b: 'y'}], c: 3}, 'deep');\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("  deep\n  a[1].b  expected \"y\", found \"x\"\n")));
    EXPECT_FALSE(says(run, QStringLiteral("  c  ")));
}

TEST_F(ReplayScripts, aFailedCheckIsCountedAndTheScriptGoesOn)
{
    ToolRun &run = replay("test.compare(1, 2);\n"
                          "test.verify(false, 'must hold');\n"
                          "test.fail('for good reason');\n"
                          "test.pass('fine');\n"
                          "test.log('end reached');\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js: failed: 5 steps, 4 checks, 3 failed, ")));
    EXPECT_TRUE(says(run, QStringLiteral("must hold")));
    EXPECT_TRUE(says(run, QStringLiteral("for good reason")));
}

TEST_F(ReplayScripts, aCheckSaysWhetherItPassed)
{
    EXPECT_TRUE(endsWith(1,
                         replay("if (test.compare(1, 2)) throw 'passed';\n"
                                "if (!test.verify(1)) throw 'failed';\n")));
}

TEST_F(ReplayScripts, anErrorThatIsCaughtFailsNothing)
{
    EXPECT_TRUE(passes("try { mouseClick('Main Button#nowhere', 1, 1); test.fail(); } catch (error) {\n"
                       "    test.compare(error.name, 'ObjectNotFound');\n"
                       "    test.compare(error.message, 'there is no object Main Button#nowhere');\n"
                       "}\n"
                       "try { fail(); test.fail(); } catch (error) { test.compare(error.name, 'FunctionFailed'); }\n"));
}

TEST_F(ReplayScripts, eachScriptGetsAFreshEngineAndAFreshProgram)
{
    write("one.js", "var left = 1; globalThis.leftToo = 1; mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n");
    write("two.js",
          "test.compare(typeof left, 'undefined'); test.compare(typeof leftToo, 'undefined');\n"
          "test.compare(findObject('Main Label#status').count, 0);\n");
    ToolRun &run = replayFiles({path("one.js"), path("two.js")}, {}, {QStringLiteral("note:") + path("notes")});
    EXPECT_TRUE(endsWith(0, run));
    EXPECT_TRUE(says(run, QStringLiteral("2 scripts: 2 passed; ")));
    EXPECT_EQ(VantleTest::contentOf(path("notes")), QStringLiteral("started\nstarted\n"));
}

TEST_F(ReplayScripts, aScriptCanStartItsProgramItself)
{
    write("script.js",
          "startApplication(\"" VANTLE_FAKE_PROGRAM "\", 'note:' + '" + path("notes").toUtf8()
              + "');\n"
                "test.compare(findObject('Main').title, 'Fake');\n");
    EXPECT_TRUE(endsWith(0, start({QStringLiteral("--offscreen"), path("script.js")})));
    EXPECT_EQ(VantleTest::contentOf(path("notes")), QStringLiteral("started\n"));
}

TEST_F(ReplayScripts, aScriptThatStartsItsProgramGetsNoneBeforehand)
{
    const QStringList notes{QStringLiteral("note:") + path("notes")};
    EXPECT_TRUE(
        passes("startApplication(\"" VANTLE_FAKE_PROGRAM "\");\ntest.verify(objectExists('Main'));\n", {}, notes));
    EXPECT_FALSE(QFile::exists(path("notes")));
}

TEST_F(ReplayScripts, withoutWordsTheProgramOfTheCommandLineStartsAgain)
{
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                       "startApplication();\n"
                       "test.compare(findObject('Main Label#status').count, 0);\n",
                       {}, {QStringLiteral("note:") + path("notes")}));
    EXPECT_EQ(VantleTest::contentOf(path("notes")), QStringLiteral("started\nstarted\n"));
}

TEST_F(ReplayScripts, aScriptCanCloseTheProgramAndLookAtItsExitCode)
{
    EXPECT_TRUE(passes("test.compare(closeApplication(), 7);\n", {}, {QStringLiteral("exit-at-quit:7")}));
    EXPECT_TRUE(passes("leaveQuietly(3); test.compare(waitForExit(5000), 3);\n"));
}

TEST_F(ReplayScripts, aProgramThatDoesNotEndIsAnErrorOfTheWait)
{
    ToolRun &run = replay("waitForExit(50);\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("the program has not ended within 0.05 s")));
}

TEST_F(ReplayScripts, modulesAreImported)
{
    write("shared.mjs",
          "import { twice } from './deep/er.mjs';\n"
          "export function save() { mouseClick('Main Button#save', 1, 1, Qt.LeftButton); }\n"
          "export const four = twice(2);\n"
          "export default 'the default';\n");
    QDir(path(".")).mkdir(QStringLiteral("deep"));
    write("deep/er.mjs", "export const twice = value => 2 * value;\n");
    const QByteArray text = "import standard, { save, four as vier } from \"./shared.mjs\";\n"
                            "import * as all from './shared.mjs'; // import { x } from './not-this.mjs'\n"
                            "import {\n    save as again,\n} from './shared.mjs'\n"
                            "import './shared.mjs';\n"
                            "save(); again();\n"
                            "test.compare(vier, 4);\n"
                            "test.compare(all.four, 4);\n"
                            "test.compare(standard, 'the default');\n"
                            "test.compare(findObject('Main Label#status').count, 2);\n"
                            "export const unused = 'import { a } from \"./b.mjs\";';\n"
                            "test.log(unused);\n"
                            "export function helper() {}\nexport { vier };\nexport default 3;\n";
    EXPECT_TRUE(passes(text));
    write("script.mjs", text);
    EXPECT_TRUE(endsWith(0, replayFiles({path("script.mjs")})));
}

TEST_F(ReplayScripts, importsComeBeforeEverythingElse)
{
    write("shared.mjs", "export function four() { return 4; }\nexport default 7;\n");
    EXPECT_TRUE(passes("test.compare(four(), 4);\n"
                       "import { four } from './shared.mjs';\n"
                       "test.compare(seven + all.four(), 11);\n"
                       "import seven, * as all from './shared.mjs';\n"));
}

TEST_F(ReplayScripts, whatIsExportedFromAnotherModuleIsThere)
{
    write("shared.mjs", "test.log('shared runs');\nexport const a = 1, b = 2;\nexport default 3;\n");
    write("again.mjs", "export * from './shared.mjs';\nexport { default, a as one } from './shared.mjs';\n");
    ToolRun &run = replay("export * from './shared.mjs';\n"
                          "export * as all from './shared.mjs';\n"
                          "export {\n    a,\n    b as c,\n} from './again.mjs'\n"
                          "import three, { one, b } from './again.mjs';\n"
                          "test.compare([one, b, three], [1, 2, 3]);\n"
                          "export default function () { return 1; }\n");
    EXPECT_TRUE(endsWith(0, run));
    ToolRun &missing = replay("\nexport { nothing } from './shared.mjs';\n");
    EXPECT_TRUE(endsWith(1, missing));
    EXPECT_TRUE(says(missing, QStringLiteral("\"./shared.mjs\" exports no \"nothing\"")));
    EXPECT_TRUE(says(missing, QStringLiteral("script.js:2:1")));
}

TEST_F(ReplayScripts, whatCannotBeImportedIsNamed)
{
    write("shared.mjs", "export const a = 1;\n");
    write("wrong.mjs", "export const a = ;\n");
    write("throws.mjs", "mouseClick('Main Button#nowhere', 1, 1);\n");
    const QPair<QByteArray, QString> mistakes[] = {
        {"import { a } from './none.mjs';", QStringLiteral("cannot import \"./none.mjs\": there is no file ")},
        {"import { b } from './shared.mjs';", QStringLiteral("\"./shared.mjs\" exports no \"b\"")},
        {"import { a } from './wrong.mjs';", QStringLiteral("wrong.mjs:1)")},
        {"import './throws.mjs';", QStringLiteral("there is no object Main Button#nowhere")},
    };
    for (const auto &[text, message] : mistakes) {
        ToolRun &run = replay("\n\n" + text + "\n");
        EXPECT_TRUE(endsWith(1, run)) << text.constData();
        EXPECT_TRUE(says(run, message)) << text.constData();
    }
}

TEST_F(ReplayScripts, undeclaredVariablesAreErrors)
{
    ToolRun &run = replay("anwser = 42;\n");
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("script.js:1:1")));
}

TEST_F(ReplayScripts, wrongArgumentsAreExplained)
{
    const QPair<QByteArray, QString> mistakes[] = {
        {"findObject(3)", QStringLiteral("the name of an object is expected, not 3")},
        {"waitForObject('Main', 'soon')", QStringLiteral("a time in milliseconds is expected, not \"soon\"")},
        {"waitFor(true)", QStringLiteral("waitFor expects a function")},
        {"snooze(-1)", QStringLiteral("snooze expects a number of seconds, not -1")},
        {"children(3)", QStringLiteral("an object or the name of one is expected, not 3")},
        {"startApplication(3)", QStringLiteral("startApplication expects a program and its arguments as texts")},
        {"test.compareImage('Main')", QStringLiteral("expects the name of the kept picture, not undefined")},
        {"test.compareImage('Main', 'a.png', {tolerence: 1})", QStringLiteral("not \"tolerence\"")},
        {"test.compareImage('Main', 'a.png', {tolerance: 2.5})",
         QStringLiteral("the option \"tolerance\" of test.compareImage is a whole number from 0 to 255, not 2.5")},
        {"test.compareImage('Main', 'a.png', {tolerance: 256})", QStringLiteral("from 0 to 255, not 256")},
        {"test.compareImage('Main', 'a.png', {tolerance: '3'})", QStringLiteral("from 0 to 255, not \"3\"")},
        {"test.compareImage('Main', 'a.png', {pixels: 0.1})", QStringLiteral("a whole number from 0 on, not 0.1")},
        {"test.compareImage('Main', 'a.png', {pixels: -1})", QStringLiteral("a whole number from 0 on, not -1")},
        {"delete findObject('Main').title", QStringLiteral("a property of the program can't be deleted")},
    };
    for (const auto &[text, message] : mistakes) {
        ToolRun &run = replay(text + ";\n");
        EXPECT_TRUE(endsWith(1, run)) << text.constData();
        EXPECT_TRUE(says(run, message)) << text.constData();
    }
}

} // namespace
