// What counts as an answer of a hook's function, and what is an error.

#include "hookscene.h"

#include "support/warningguard.h"
#include "wrappers/qt/extensions/qtquickcommon/hookdispatch_p.h"
#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"

#include <QtQml/QQmlComponent>

#include <gmock/gmock.h>

using namespace VantleQtQuickHook;
using namespace VantleTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class HookAnswers : public testing::Test
{
protected:
    /// An object with these members, at file:///extension.qml, the members in line 3.
    QObject *objectWith(const QString &members)
    {
        QQmlComponent component(scene.engine.get());
        component.setData(QStringLiteral("import QtQuick\nQtObject { id: hook\n%1\n}").arg(members).toUtf8(),
                          QUrl(QStringLiteral("file:///extension.qml")));
        object.reset(component.create());
        EXPECT_NE(object, nullptr) << qPrintable(component.errorString());
        return object.get();
    }

    /// What a function with that body answers to the text "argument".
    QVariant answer(const char *body)
    {
        return callHookFunction(objectWith(QStringLiteral("function ask(item) { %1 }").arg(QString::fromUtf8(body))),
                                "ask", QVariant(QStringLiteral("argument")), nullptr);
    }

    RecordingLogger logger;
    Scene scene;
    std::unique_ptr<QObject> object;
};

/// A hook written in C++.
class CompiledHook : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE QVariant ask(const QVariant &first) { return first; }
    Q_INVOKABLE QVariant ask(const QVariant &first, const QVariant &second) { return QVariantList{first, second}; }
    Q_INVOKABLE bool typed(const QVariant &) { return true; }
    Q_INVOKABLE void silent(const QVariant &) {}
    Q_INVOKABLE QVariant map(const QVariant &)
    {
        return QVariantMap{{QStringLiteral("message"), QStringLiteral("m")}, {QStringLiteral("lineNumber"), 3}};
    }
};

} // namespace

TEST_F(HookAnswers, ValuesAreAnswers)
{
    EXPECT_EQ(answer("return item"), QVariant(QStringLiteral("argument")));
    EXPECT_EQ(answer("return false"), QVariant(false));
    EXPECT_EQ(answer("return 0").toInt(), 0);
    EXPECT_TRUE(answer("return 0").isValid());
    EXPECT_EQ(answer("return ''"), QVariant(QString()));
    EXPECT_TRUE(answer("return null").isValid());
    EXPECT_TRUE(answer("return []").isValid());
    EXPECT_TRUE(answer("return {}").isValid());
    const QVariant self = answer("return hook");
    EXPECT_EQ(self.value<QObject *>(), object.get());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, UndefinedIsNone)
{
    EXPECT_FALSE(answer("return undefined").isValid());
    EXPECT_FALSE(answer("").isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, OnlyTheExactTextDeclines)
{
    EXPECT_FALSE(answer("return '<vantleunhandled>'").isValid());
    for (const char *body :
         {"return '<VantleUnhandled>'", "return '<vantleunhandled> '", "return ' <vantleunhandled>'",
          "return 'vantleunhandled'", "return ['<vantleunhandled>']", "return new String('<vantleunhandled>')"})
        EXPECT_TRUE(answer(body).isValid()) << body;
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, AMissingFunctionIsSilent)
{
    EXPECT_FALSE(callHookFunction(objectWith({}), "ask", QVariant(1), nullptr).isValid());
    QObject plain;
    EXPECT_FALSE(callHookFunction(&plain, "ask", QVariant(1), nullptr).isValid());
    EXPECT_FALSE(callHookFunction(&plain, "", QVariant(1), nullptr).isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, FunctionsWithOtherParametersAreNotFound)
{
    for (const char *members : {"function ask() { return 1 }", "function ask(a, b) { return 1 }",
                                "function ask(item: QtObject) { return 1 }", "function ask(item: string) { return 1 }",
                                "property var ask: function(item) { return 1 }", "signal ask(int item)"}) {
        EXPECT_FALSE(callHookFunction(objectWith(QLatin1String(members)), "ask", QVariant(1), nullptr).isValid())
            << members;
    }
    const QVariant second(2);
    EXPECT_FALSE(
        callHookFunction(objectWith(QStringLiteral("function ask(a) { return 1 }")), "ask", QVariant(1), &second)
            .isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, AParameterOfTypeVarIsLikeOneWithoutType)
{
    EXPECT_EQ(callHookFunction(objectWith(QStringLiteral("function ask(item: var): var { return item }")), "ask",
                               QVariant(1), nullptr),
              QVariant(1));
}

TEST_F(HookAnswers, AFunctionWithATypedResultCannotBeCalled)
{
    EXPECT_FALSE(callHookFunction(objectWith(QStringLiteral("function ask(item): bool { return true }")), "ask",
                                  QVariant(1), nullptr)
                     .isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, DefaultValuesOfParametersDontMatter)
{
    EXPECT_EQ(callHookFunction(objectWith(QStringLiteral("function ask(item = 5) { return item }")), "ask", QVariant(1),
                               nullptr),
              QVariant(1));
}

TEST_F(HookAnswers, CompiledHooksAreCalledLikewise)
{
    CompiledHook hook;
    const QVariant second(2);
    EXPECT_EQ(callHookFunction(&hook, "ask", QVariant(1), nullptr), QVariant(1));
    EXPECT_EQ(callHookFunction(&hook, "ask", QVariant(1), &second), QVariant(QVariantList{1, 2}));
    EXPECT_FALSE(callHookFunction(&hook, "typed", QVariant(1), nullptr).isValid());
    EXPECT_FALSE(callHookFunction(&hook, "silent", QVariant(1), nullptr).isValid());
    EXPECT_FALSE(callHookFunction(&hook, "ask", QVariant(VantleHook::unhandledValue), nullptr).isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
    EXPECT_FALSE(callHookFunction(&hook, "map", QVariant(1), nullptr).isValid());
    EXPECT_THAT(logger.warnings, ElementsAre("QML JS error: m (:3)"));
}

TEST_F(HookAnswers, AReturnedErrorIsReportedWithItsPlace)
{
    EXPECT_FALSE(answer("return new Error('oops')").isValid());
    EXPECT_THAT(logger.warnings, ElementsAre("QML JS error: oops (file:///extension.qml:3)"));
}

TEST_F(HookAnswers, ErrorsOfAllKindsAreReported)
{
    for (const auto &[body, message] :
         {std::pair{"return new TypeError('type')", "type"},
          {"return new RangeError('range')", "range"},
          {"class E extends Error {}; return new E('own')", "own"},
          {"return new Error", ""},
          {"try { undefined.x } catch (e) { return e }", "Cannot read"},
          {"try { (function f() { f() })() } catch (e) { return e }", "Maximum call stack"}}) {
        logger.warnings.clear();
        EXPECT_FALSE(answer(body).isValid()) << body;
        EXPECT_THAT(logger.warnings, ElementsAre(HasSubstr(std::string("QML JS error: ") + message))) << body;
    }
}

TEST_F(HookAnswers, AnObjectWithAMessageIsReportedAsAnError)
{
    for (const auto &[body, line] :
         {std::pair{"return { message: 'm', fileName: 'f.qml', lineNumber: 12 }", "QML JS error: m (f.qml:12)"},
          {"return { message: 'm' }", "QML JS error: m (:0)"},
          {"return { message: undefined, other: 1 }", "QML JS error:  (:0)"},
          {"return { message: null, lineNumber: '7' }", "QML JS error:  (:7)"},
          {"return { message: { a: 1 }, fileName: ['f'], lineNumber: 'x' }", "QML JS error:  (:0)"},
          {"return { message: 'ä%s%n', lineNumber: -1 }", "QML JS error: ä%s%n (:-1)"},
          {"return { message: 'm', lineNumber: 12.5 }", "QML JS error: m (:13)"},
          {"return { message: 'm', lineNumber: 12.4 }", "QML JS error: m (:12)"},
          {"return { message: 'm', lineNumber: true }", "QML JS error: m (:1)"},
          {"return { message: 'm', lineNumber: [4] }", "QML JS error: m (:0)"},
          {"return { message: 'm', lineNumber: { valueOf: () => 4 } }", "QML JS error: m (:0)"},
          {"return { message: 'm', lineNumber: Symbol('4'), fileName: Symbol('f') }", "QML JS error: m (:0)"},
          {"return { message: 'm', propertyIsEnumerable: () => false }", "QML JS error: m (:0)"},
          {"return new Proxy({ message: 'm' }, {})", "QML JS error: m (:0)"},
          {"return { get message() { return 'got' } }", "QML JS error: got (:0)"}}) {
        logger.warnings.clear();
        EXPECT_FALSE(answer(body).isValid()) << body;
        EXPECT_THAT(logger.warnings, ElementsAre(line)) << body;
    }
}

TEST_F(HookAnswers, ObjectsWithoutAMessageOfTheirOwnAreAnswers)
{
    for (const char *body : {"return { Message: 'm' }", "return Object.create({ message: 'm' })",
                             "return [{ message: 'm' }]", "return { error: { message: 'm' } }", "return new Date",
                             "return function message() {}", "return 'message'", "return program"})
        EXPECT_TRUE(answer(body).isValid()) << body;
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, AMessageThatIsNotEnumerableIsNoError)
{
    for (const char *body :
         {"return Object.defineProperty({ a: 1 }, 'message', { value: 'm' })",
          "return Object.defineProperty({ propertyIsEnumerable: () => true }, 'message', { value: 'm' })",
          "return Object.defineProperty({}, 'message', { get() { program.note('read'); return 'm' } })",
          "return new Proxy({}, { getOwnPropertyDescriptor() { throw new Error('trap') } })",
          "return new Proxy(Object.defineProperty({}, 'message', { value: 'm' }), {})"}) {
        EXPECT_TRUE(answer(body).isValid()) << body;
        EXPECT_FALSE(answer(body).toMap().contains(QStringLiteral("message"))) << body;
        EXPECT_FALSE(scene.engine->hasError()) << body;
    }
    EXPECT_THAT(logger.warnings, IsEmpty());
    EXPECT_THAT(scene.program.notes, IsEmpty());
}

TEST_F(HookAnswers, AnItemWithAPropertyMessageIsAnAnswer)
{
    const QVariant result = callHookFunction(objectWith(QStringLiteral(
                                                 "property string message: 'm'; function ask(item) { return hook }")),
                                             "ask", QVariant(1), nullptr);
    EXPECT_EQ(result.value<QObject *>(), object.get());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookAnswers, AMapFromCompiledCodeWithAMessageIsAnError)
{
    EXPECT_TRUE(reportScriptError(QVariantMap{{QStringLiteral("message"), QStringLiteral("m")},
                                              {QStringLiteral("fileName"), QStringLiteral("f")},
                                              {QStringLiteral("lineNumber"), QStringLiteral("4")}}));
    EXPECT_FALSE(reportScriptError(QVariantMap{{QStringLiteral("messages"), 1}}));
    EXPECT_FALSE(reportScriptError(QVariantHash{{QStringLiteral("message"), 1}}));
    EXPECT_FALSE(reportScriptError(QVariant()));
    EXPECT_FALSE(reportScriptError(QVariant(QStringLiteral("message"))));
    EXPECT_FALSE(answer("return program.mapWith('message', 'from C++')").isValid());
    EXPECT_THAT(logger.warnings, ElementsAre("QML JS error: m (f:4)", "QML JS error: from C++ (:0)"));
}

TEST_F(HookAnswers, AnExceptionIsNoAnswerAndLeftToQtsOwnReport)
{
    expectWarning(QStringLiteral("file:///extension.qml:3: Error: thrown"));
    EXPECT_FALSE(answer("throw new Error('thrown')").isValid());
    EXPECT_THAT(logger.warnings, IsEmpty());
    EXPECT_FALSE(scene.engine->hasError());
}

TEST_F(HookAnswers, AnErrorThatWasPendingBeforeTheQuestionIsPendingAfterIt)
{
    QObject *const hook = objectWith(
        QStringLiteral("property var lists: ({ get message() { throw new Error('own') } })\n"
                       "function ask(item) { return lists }"));
    scene.engine->throwError(QStringLiteral("of the program"));
    EXPECT_FALSE(callHookFunction(hook, "ask", QVariant(1), nullptr).isValid());
    EXPECT_EQ(logger.warnings.size(), 1U);
    ASSERT_TRUE(scene.engine->hasError());
    EXPECT_EQ(scene.engine->catchError().toString(), QStringLiteral("Error: of the program"));
    {
        const StrayScriptErrors strayErrors(hook);
        EXPECT_EQ(strayErrors.engine(), scene.engine.get());
        scene.engine->throwError(QStringLiteral("stray"));
    }
    EXPECT_FALSE(scene.engine->hasError());
}

TEST_F(HookAnswers, APendingErrorMayBeAnyValue)
{
    for (const char *thrown : {"undefined", "null", "3", "'text'", "[1]", "new TypeError('type')", "Symbol('s')"}) {
        const QJSValue error = scene.engine->evaluate(QLatin1String(thrown));
        scene.engine->throwError(error);
        {
            const StrayScriptErrors strayErrors(scene.engine.get());
            EXPECT_FALSE(scene.engine->hasError()) << thrown;
        }
        EXPECT_TRUE(scene.engine->hasError()) << thrown;
        EXPECT_TRUE(scene.engine->catchError().strictlyEquals(error)) << thrown;
    }
}

TEST_F(HookAnswers, AnEngineMayGoWhileAnErrorOfItsProgramIsLaidAside)
{
    auto engine = std::make_unique<QJSEngine>();
    engine->throwError(QStringLiteral("pending"));
    const StrayScriptErrors strayErrors(engine.get());
    engine.reset();
    EXPECT_EQ(strayErrors.engine(), nullptr);
}

TEST_F(HookAnswers, EveryKindOfListIsReadAsTexts)
{
    const auto texts = [this](const char *body) { return toStringList(answer(body)).join(u'|').toStdString(); };
    EXPECT_EQ(texts("return ['a', 'b']"), "a|b");
    EXPECT_EQ(texts("return ['a', 1, 1.5, true, null, undefined, ['x'], {}, hook, 'z']"), "a|1|1.5|true||||||z");
    EXPECT_EQ(texts("return 'one'"), "one");
    EXPECT_EQ(texts("return [new Date(NaN)]"), "");
    EXPECT_EQ(texts("return { length: 1, 0: 'a' }"), "");
    EXPECT_EQ(texts("return new Proxy(['a'], {})"), "");
    EXPECT_EQ(texts("return null"), "");
    EXPECT_EQ(texts("return Symbol('a')"), "");
    EXPECT_EQ(texts("return ['a', Symbol('b')]"), "a|");
    EXPECT_EQ(texts("let a = []; a[2] = 'c'; return a"), "c");
    EXPECT_EQ(toStringList(QStringList{QStringLiteral("a")}), QStringList{QStringLiteral("a")});
    EXPECT_EQ(toStringList(QVariantList{1, QStringLiteral("b")}).join(u'|').toStdString(), "1|b");
    EXPECT_TRUE(toStringList(QVariant()).isEmpty());
}

TEST_F(HookAnswers, ListsAreReadLikeQtDoesWhereQtCanDoIt)
{
    for (const char *body : {"return ['a', 'b']", "return ['a', 1, 1.5, true, null, undefined, [], {}]",
                             "return [new Date(86400000)]", "return [Qt.url('file:///a b')]", "return 'one'",
                             "return 5", "return []", "return {}", "return hook", "return function() {}"}) {
        const QVariant value = answer(body);
        EXPECT_EQ(toStringList(value), value.toStringList()) << body;
    }
}

TEST_F(HookAnswers, ListsOfDeclaredTypesAreReadInsideMaps)
{
    for (const auto &[entry, expected] : {std::pair{"names", "a|b"},
                                          {"numbers", ""},
                                          {"program.names", "first|second"},
                                          {"program.values", "text|3"},
                                          {"Object.keys(program.mapWith('k', 1))", "k"},
                                          {"[names, program.names]", "|"},
                                          {"objects", ""},
                                          {"Qt.url('file:///a')", ""},
                                          {"new Date(0)", ""},
                                          {"Qt.rect(1, 2, 3, 4)", ""},
                                          {"/a/", ""},
                                          {"Symbol('a')", ""},
                                          {"hook", ""}}) {
        QObject *const hook = objectWith(QStringLiteral("property list<string> names: ['a', 'b']\n"
                                                        "property list<int> numbers: [1, 2]\n"
                                                        "property list<QtObject> objects: [hook, hook]\n"
                                                        "property var lists: ({ 'PushButton': %1 })")
                                             .arg(QLatin1String(entry)));
        const QVariant list = toMap(hook->property("lists"), scene.engine.get()).value(QStringLiteral("PushButton"));
        EXPECT_EQ(toStringList(list).join(u'|').toStdString(), expected) << entry;
    }
}

TEST_F(HookAnswers, ListsOfDeclaredTypesAreReadFromAnswersToo)
{
    for (const char *members :
         {"property list<string> names: ['a', 'b']; function ask(item) { return names }",
          "property var names: program.names; function ask(item) { return names }",
          "function ask(item) { return program.values }", "function ask(item) { return program.names }"}) {
        const QVariant value = callHookFunction(objectWith(QLatin1String(members)), "ask", QVariant(1), nullptr);
        EXPECT_EQ(toStringList(value).size(), 2) << members;
        EXPECT_EQ(toStringList(value), value.toStringList()) << members;
    }
}

TEST_F(HookAnswers, EveryKindOfMapIsReadInAscendingOrderOfItsKeys)
{
    const auto keys = [this](const char *body) {
        return QStringList(toMap(answer(body), scene.engine.get()).keys()).join(u'|').toStdString();
    };
    EXPECT_EQ(keys("return { b: 1, a: 2, B: 3 }"), "B|a|b");
    EXPECT_EQ(keys("return ['a']"), "");
    EXPECT_EQ(keys("return 'a'"), "");
    EXPECT_EQ(keys("return function() {}"), "");
    EXPECT_EQ(keys("return null"), "");
    EXPECT_EQ(keys("return Object.defineProperty({ a: 1 }, 'b', { value: 2 })"), "a");
    EXPECT_EQ(keys("return { a: 1, propertyIsEnumerable: 3 }"), "a|propertyIsEnumerable");
    EXPECT_EQ(keys("return Object.create({ a: 1 })"), "");
    EXPECT_EQ(keys("return Object.assign(Object.create(null), { a: 1 })"), "a");
    EXPECT_EQ(keys("return new Date(0)"), "");
    EXPECT_EQ(keys("return Qt.rect(1, 2, 3, 4)"), "");
    EXPECT_EQ(keys("return program.mapWith('a', 1)"), "a");
    EXPECT_EQ(toStringList(toMap(answer("return { a: ['x', 'y'] }"), scene.engine.get()).value(QStringLiteral("a")))
                  .join(u'|')
                  .toStdString(),
              "x|y");
    EXPECT_EQ(toMap(QVariantMap{{QStringLiteral("k"), 1}}, nullptr).value(QStringLiteral("k")), QVariant(1));
    EXPECT_TRUE(toMap(QVariant(), nullptr).isEmpty());
}

#include "tst_hookanswers.moc"
