#include "tool/replay/scriptsource.h"
#include "tool/replay/sourcemask.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Vantle::Tool::Replay;

namespace {

QString masked(const char *source)
{
    return maskedSource(QString::fromUtf8(source));
}

TEST(SourceMask, blanksCommentsAndLiteralsAndKeepsEveryPlace)
{
    const QPair<const char *, const char *> pairs[] = {
        {"a(); // b()", "a();       "},
        {"a /* b\n c */ d", "a     \n      d"},
        {"f(\"x\\\"y\", 'it''s')", "f(\"    \", '  '' ')"},
        {"`a ${b}\n c` d", "`      \n  ` d"},
        {"a = /[/\"]/; b", "a = /    /; b"},
        {"a / b / c", "a / b / c"},
        {"f(x) / 2; '1'", "f(x) / 2; ' '"},
        {"return /x'y/; z", "return /   /; z"},
        {"\"open\nnext", "\"    \nnext"},
        {"/* open", "       "},
        {"'\\", "' "},
        {"", ""},
    };
    for (const auto &[source, expected] : pairs) {
        EXPECT_EQ(masked(source), QString::fromUtf8(expected)) << source;
        EXPECT_EQ(masked(source).size(), QString::fromUtf8(source).size());
    }
}

TEST(ScriptSource, aStatementGoesOnUpToTheEndOfItsBrackets)
{
    const ScriptSource source(QStringLiteral("one();\n"
                                             "    two(\n"
                                             "        \")\",\n"
                                             "      3);\n"
                                             "for (;;) {\n"
                                             "    three();\n"
                                             "}\n"
                                             "open(\n\n\n\n\n\n"));
    EXPECT_EQ(source.statementAt(1), QStringLiteral("one();"));
    EXPECT_EQ(source.statementAt(2), QStringLiteral("two(\n    \")\",\n  3);"));
    EXPECT_EQ(source.statementAt(5), QStringLiteral("for (;;) {"));
    EXPECT_EQ(source.statementAt(6), QStringLiteral("three();"));
    EXPECT_EQ(source.statementAt(8), QStringLiteral("open("));
    EXPECT_EQ(source.statementAt(0), QString());
    EXPECT_EQ(source.statementAt(99), QString());
}

TEST(ScriptSource, columnsAreThoseOfTheCall)
{
    const ScriptSource source(QStringLiteral("  a.click(); \"click()\"; click ( 1 ); test.verify(x);\n\tnothing\n"));
    EXPECT_EQ(source.columnOfCall(1, QStringLiteral("click")), 25);
    EXPECT_EQ(source.columnOfCall(1, QStringLiteral("test.verify")), 38);
    EXPECT_EQ(source.columnOfCall(1, QStringLiteral("absent")), 3);
    EXPECT_EQ(source.columnOfCall(2, QString()), 2);
    EXPECT_EQ(source.columnOfCall(99, QStringLiteral("click")), 1);
}

TEST(ScriptSource, eachStatementGetsALineOfItsOwnThatLeadsBackToItsPlace)
{
    const char *const text = "a(); b('x;y'); c();\nfor (let i = 0; i < 2; ++i) { d(); e(); }\n"
                             "f(() => { g(); h(); }); // i(); j();\nlast();";
    const ScriptSource source{QLatin1String(text)};
    const QStringList lines = source.asStatementLines(QStringLiteral("I")).split(QLatin1Char('\n'));
    struct Line
    {
        const char *text;
        int line;
        int column;
    };
    const Line expected[] = {
        {"a();", 1, 1},
        {" b('x;y');", 1, 5},
        {" c();", 1, 15},
        {"for (let i = 0; i < 2; ++i) { d();", 2, 1},
        {" e();", 2, 35},
        {" }", 2, 40},
        {"f(() => { g();", 3, 1},
        {" h();", 3, 15},
        {" }); // i(); j();", 3, 20},
        {"last();", 4, 1},
    };
    ASSERT_EQ(lines.size(), std::size(expected) + 1) << qPrintable(lines.join(QLatin1Char('|')));
    for (int i = 0; i < static_cast<int>(std::size(expected)); ++i) {
        EXPECT_EQ(lines.at(i + 1), QLatin1String(expected[i].text));
        EXPECT_EQ(source.placeOf(i + 1).line, expected[i].line) << i;
        EXPECT_EQ(source.placeOf(i + 1).column, expected[i].column) << i;
    }
    EXPECT_EQ(source.placeOf(0).line, 0);
    EXPECT_EQ(source.placeOf(99).line, 99);
}

TEST(ScriptSource, importsThatAreTakenOutMoveNoLine)
{
    const ScriptSource source(
        QStringLiteral("import './x.mjs'; import './y.mjs';\nexport const a = 1; b();\nc(); d();"));
    const qsizetype lines = source.asStatementLines(QStringLiteral("I")).count(QLatin1Char('\n'));
    EXPECT_EQ(source.placeOf(static_cast<int>(lines)).line, 3);
    EXPECT_EQ(source.placeOf(static_cast<int>(lines)).column, 5);
    EXPECT_EQ(source.placeOf(static_cast<int>(lines) - 1).column, 1);
}

TEST(ScriptSource, ofSeveralStatementsInALineOneIsShown)
{
    const ScriptSource source(QStringLiteral("a(1); a(2); a(\n  3);\n"));
    EXPECT_EQ(source.statementAt(1, 1), QStringLiteral("a(1);"));
    EXPECT_EQ(source.statementAt(1, 6), QStringLiteral("a(2);"));
    EXPECT_EQ(source.columnOfCall(1, QStringLiteral("a"), 6), 7);
    EXPECT_EQ(source.columnOfCall(1, QStringLiteral("a"), 12), 13);
    EXPECT_EQ(source.columnOfCall(1, QString(), 6), 7);
}

TEST(ScriptSource, linesOfCodeAreCountedWithoutCommentsAndBlanks)
{
    const ScriptSource source(QStringLiteral("// head\n\na();\n/* long\ncomment */\nb();\r\n"));
    EXPECT_EQ(source.codeLineCount(), 2);
    EXPECT_EQ(source.codeLinesUpTo(2), 0);
    EXPECT_EQ(source.codeLinesUpTo(3), 1);
    EXPECT_EQ(source.codeLinesUpTo(6), 2);
    EXPECT_EQ(source.codeLinesUpTo(99), 2);
    EXPECT_EQ(ScriptSource().codeLineCount(), 0);
    EXPECT_EQ(ScriptSource().codeLinesUpTo(1), 0);
}

TEST(ScriptSource, onlyCallsWithArgumentsCount)
{
    const QString name = QStringLiteral("start");
    for (const char *text : {"start('x')", "start (\n 'x')", "a;start(b)"})
        EXPECT_TRUE(ScriptSource(QLatin1String(text)).callsWithArguments(name)) << text;
    for (const char *text :
         {"start()", "start( )", "a.start('x')", "restart('x')", "// start('x')", "'start(1)'", "start"})
        EXPECT_FALSE(ScriptSource(QLatin1String(text)).callsWithArguments(name)) << text;
}

TEST(ScriptSource, importsBecomeCallsAheadOfTheFirstLine)
{
    struct Example
    {
        const char *text;
        const char *hoisted;
        const char *rest;
    };
    const Example examples[] = {
        {"import { a, b as c } from './x.mjs';", "const { a: a, b: c } = I('./x.mjs', [\"a\", \"b\"], 1);", ""},
        {"import d from \"./x.mjs\"", "const { default: d } = I(\"./x.mjs\", [\"default\"], 1);", ""},
        {"import d, { a } from './x.mjs'", "const { a: a, default: d } = I('./x.mjs', [\"a\", \"default\"], 1);", ""},
        {"b();\nimport * as all from './x.mjs';", "const all = I('./x.mjs', [], 2);", "b();\n"},
        {"import d, * as all from './x.mjs';", "const all = I('./x.mjs', [\"default\"], 1), d = all.default;", ""},
        {"import './x.mjs'; import './y.mjs'", "I('./x.mjs', [], 1);I('./y.mjs', [], 1);", " "},
        {"import {\n  a,\n} from './x.mjs';\nb();", "const { a: a } = I('./x.mjs', [\"a\"], 1);", "\n\n\nb();"},
        {"a; import './x.mjs'", "I('./x.mjs', [], 1);", "a; "},
        {"// import './x.mjs'", "", "// import './x.mjs'"},
        {"'import \"./x.mjs\"'", "", "'import \"./x.mjs\"'"},
        {"important('x')", "", "important('x')"},
        {"a.import = 'x'", "", "a.import = 'x'"},
        {"\nexport * from './x.mjs';\nb", "I('./x.mjs', [], 2);", "\n\nb"},
        {"export * as n from './x.mjs'", "I('./x.mjs', [], 1);", ""},
        {"export {\n a as b, default as c } from './x.mjs';", "I('./x.mjs', [\"a\", \"default\"], 1);", "\n"},
        {"export const a = 1;", "", " const a = 1;"},
        {"export { a,\n b };\nc", "", "\n\nc"},
        {"export default 3;", "", "void 3;"},
        {"export default { a: 1, b: 2 };", "", "void { a: 1, b: 2 };"},
        {"export default function () {}", "", "void function () {}"},
        {"export default class extends A {}", "", "void class extends A {}"},
        {"export default function go() {}", "", " function go() {}"},
        {"export default async function go() {}", "", " async function go() {}"},
        {"export default class A {}", "", " class A {}"},
        {"exported()", "", "exported()"},
    };
    for (const Example &example : examples) {
        const ScriptSource source{QLatin1String(example.text)};
        EXPECT_EQ(source.asPlainScript(QStringLiteral("I")),
                  QLatin1String(example.hoisted) + QLatin1Char('\n') + QLatin1String(example.rest))
            << example.text;
    }
}

TEST(ScriptSource, whatIsNoTextIsRefusedWithTheReason)
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("a.js")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("test.log('\xff\xfe');");
    file.close();
    QString error;
    EXPECT_FALSE(ScriptSource::read(file.fileName(), &error));
    EXPECT_TRUE(error.endsWith(QStringLiteral("it is no UTF-8 text"))) << qPrintable(error);
    EXPECT_FALSE(ScriptSource::read(directory.filePath(QStringLiteral("none")), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("cannot read "))) << qPrintable(error);
}

} // namespace
