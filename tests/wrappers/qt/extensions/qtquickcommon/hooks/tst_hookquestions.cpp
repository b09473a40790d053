// What each of the five questions makes of what extensions define.

#include "hookscene.h"

#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"
#include "wrappers/qt/extensions/qtquickcommon/hookdispatch_p.h"

#include <QtCore/QDebug>

#include <gmock/gmock.h>

using namespace VantleQtQuickHook;
using namespace VantleTest;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

std::string debugText(QQuickItem *item)
{
    QString text;
    QDebug(&text).nospace() << item;
    return text.toStdString();
}

class HookQuestions : public HookTest
{
protected:
    struct Verdict
    {
        bool isDecided;
        bool isIgnored;
        bool operator==(const Verdict &) const = default;
    };

    /// \p flag is what the caller's flag holds before.
    static Verdict askIgnored(QQuickItem *item, bool flag = false)
    {
        const bool isDecided = isIgnored(item, &flag);
        return {isDecided, flag};
    }

    /// The caller's list after the question, as one text; with "no answer" ahead if there was none.
    static std::string askProperties(QQuickItem *item, QStringList properties = {QStringLiteral("old")})
    {
        const bool isAnswered = extraPropertiesFor(item, &properties);
        return (isAnswered ? "" : "no answer: ") + properties.join(u',').toStdString();
    }

    /// The traces of the one question that \p ask puts, without that of the hook-up.
    template<typename Ask>
    std::vector<std::string> tracesOf(Ask ask)
    {
        Vantle::QtWrapper::hooksForItem(button());
        traces.take();
        traces.functions.clear();
        ask();
        return traces.take();
    }
};

} // namespace

// Order of the walk

TEST_F(HookQuestions, OfEqualPriorityTheOneLoadedFirstDecides)
{
    extend({QStringLiteral("function isIgnored(item) { return true }"),
            QStringLiteral("function isIgnored(item) { return false }")});
    EXPECT_EQ(askIgnored(button()), (Verdict{true, true}));
}

TEST_F(HookQuestions, AHigherPriorityComesFirstWhateverTheOrder)
{
    extend(
        {QStringLiteral("priority: -5; function propertyFor(item, name) { return 'below' }"),
         QStringLiteral("function propertyFor(item, name) { return 'nought' }"),
         QStringLiteral(
             "priority: 2147483647; function propertyFor(item, name) { return name === 'p' ? 'top' : hook.unhandled }"),
         QStringLiteral(
             "priority: 7; function propertyFor(item, name) { return name === 'q' ? 'seven' : hook.unhandled }")});
    QString value;
    for (const auto &[name, expected] : {std::pair{"p", "top"}, {"q", "seven"}, {"r", "nought"}}) {
        EXPECT_TRUE(propertyFor(button(), QLatin1String(name), &value));
        EXPECT_EQ(value, QLatin1String(expected));
    }
}

TEST_F(HookQuestions, NegativePrioritiesAreAskedLast)
{
    extend(
        {QStringLiteral("priority: -2147483648; function isItemReady(item) { program.note('lowest'); return false }"),
         QStringLiteral("priority: -1; function isItemReady(item) { program.note('minus one') }"),
         QStringLiteral("function isItemReady(item) { program.note('nought') }"),
         QStringLiteral("function isItemReady(item) { program.note('nought again') }")});
    EXPECT_FALSE(isItemReady(button()));
    EXPECT_EQ(scene.program.notes.join(u',').toStdString(), "nought,nought again,minus one,lowest");
}

TEST_F(HookQuestions, TheFirstAnswerEndsTheWalk)
{
    extend({QStringLiteral("function isItemReady(item) { return true }"),
            QStringLiteral("function isItemReady(item) { program.note('asked') }")});
    EXPECT_TRUE(isItemReady(button()));
    EXPECT_THAT(scene.program.notes, IsEmpty());
}

TEST_F(HookQuestions, TheFunctionOfAHigherPriorityBeatsTheListOfALower)
{
    extend({QStringLiteral("property var blacklistedTypes: ['PushButton']"),
            QStringLiteral("priority: 1; function isIgnored(item) { return false }")});
    EXPECT_EQ(askIgnored(button(), true), (Verdict{true, false}));
}

TEST_F(HookQuestions, WithoutWindowOrItemNobodyIsAsked)
{
    extend({QStringLiteral(R"(
        function containerFor(item) { program.note('asked'); return item }
        function extraPropertiesFor(item) { program.note('asked'); return ['a'] }
        function propertyFor(item, name) { program.note('asked'); return 'a' }
        function isIgnored(item) { program.note('asked'); return true }
        function isItemReady(item) { program.note('asked'); return false })")});
    QQuickItem homeless;
    for (QQuickItem *item : {static_cast<QQuickItem *>(nullptr), &homeless}) {
        QString value = QStringLiteral("v");
        EXPECT_EQ(containerFor(item), nullptr);
        EXPECT_EQ(askProperties(item), "no answer: old");
        EXPECT_FALSE(propertyFor(item, QStringLiteral("p"), &value));
        EXPECT_EQ(value, QStringLiteral("v"));
        EXPECT_EQ(askIgnored(item, true), (Verdict{false, true}));
        EXPECT_EQ(askIgnored(item, false), (Verdict{false, false}));
        EXPECT_TRUE(isItemReady(item));
    }
    EXPECT_THAT(scene.program.notes, IsEmpty());
}

TEST_F(HookQuestions, FunctionsGetTheItemAndTheName)
{
    extend({QStringLiteral(R"(
        function propertyFor(item, name) { return item.objectName + '/' + name + '/' + typeof name })")});
    QString value;
    EXPECT_TRUE(propertyFor(button(), QStringLiteral("ä b"), &value));
    EXPECT_EQ(value, QStringLiteral("button/ä b/string"));
    EXPECT_TRUE(propertyFor(panel(), QString(), &value));
    EXPECT_EQ(value, QStringLiteral("panel//string"));
}

TEST_F(HookQuestions, ListsAreReadAnewAtEachCall)
{
    extend({QStringLiteral("property var blacklistedTypes: []")});
    EXPECT_EQ(askIgnored(button()), (Verdict{false, false}));
    VantleHook *const hook = hooksOf(window()).value(0);
    hook->setProperty("blacklistedTypes", QStringList{QStringLiteral("PushButton")});
    EXPECT_EQ(askIgnored(button()), (Verdict{true, true}));
    hook->setProperty("blacklistedTypes", QVariant());
    EXPECT_EQ(askIgnored(button()), (Verdict{false, false}));
}

TEST_F(HookQuestions, AChangedPriorityMovesNothing)
{
    extend({QStringLiteral("priority: 1; function isItemReady(item) { return false }"),
            QStringLiteral("function isItemReady(item) { return true }")});
    EXPECT_FALSE(isItemReady(button()));
    for (VantleHook *hook : hooksOf(window()))
        hook->setPriority(-hook->priority());
    EXPECT_FALSE(isItemReady(button()));
}

// Containers

TEST_F(HookQuestions, TheNearestAncestorOfAListedTypeIsTheContainer)
{
    extend({QStringLiteral("property var containerTypes: ['Panel', 'QQuickRectangle']")});
    EXPECT_EQ(containerFor(button()), frame());
    EXPECT_EQ(containerFor(frame()), panel());
    EXPECT_EQ(containerFor(panel()), nullptr);
}

TEST_F(HookQuestions, AListedTypeMeansDerivedTypesToo)
{
    extend({QStringLiteral("property var containerTypes: ['QQuickItem']")});
    EXPECT_EQ(containerFor(button()), frame());
    EXPECT_EQ(containerFor(frame()), panel());
    EXPECT_EQ(containerFor(panel()), window()->contentItem());
    EXPECT_EQ(containerFor(window()->contentItem()), nullptr);
}

TEST_F(HookQuestions, AnItemIsNotItsOwnContainer)
{
    extend({QStringLiteral("property var containerTypes: ['PushButton']")});
    EXPECT_EQ(containerFor(button()), nullptr);
}

TEST_F(HookQuestions, AListThatHitsNothingLeavesTheAnswerToTheFunction)
{
    extend({QStringLiteral("property var containerTypes: ['PushButton']\n"
                           "function containerFor(item) { return item.parent.parent }")});
    EXPECT_EQ(containerFor(button()), panel());
}

TEST_F(HookQuestions, AContainerListBeatsTheFunctionOfItsHook)
{
    extend({QStringLiteral("property var containerTypes: ['Panel']\n"
                           "function containerFor(item) { return item.parent }")});
    EXPECT_EQ(containerFor(button()), panel());
}

TEST_F(HookQuestions, NullFromAFunctionMeansNoContainerAndEndsTheWalk)
{
    for (const char *value : {"null", "3", "'text'", "true", "hook", "[item]", "({})", "''"}) {
        Scene own;
        extend({QStringLiteral("priority: 1; function containerFor(item) { return %1 }").arg(QLatin1String(value)),
                QStringLiteral("property var containerTypes: ['QQuickItem']")});
        QQuickWindow *const ownWindow = own.addWindow(QStringLiteral("Item { objectName: 'item' }"));
        traces.take();
        EXPECT_EQ(containerFor(itemNamed(ownWindow, "item")), nullptr) << value;
        const std::vector<std::string> texts = traces.take();
        ASSERT_EQ(texts.size(), 2U) << value;
        EXPECT_THAT(texts[1],
                    AllOf(testing::StartsWith("Got container QQuickItem(nullptr) from "),
                          testing::EndsWith(".containerFor()")))
            << value;
    }
}

TEST_F(HookQuestions, UndefinedFromAFunctionAsksTheNext)
{
    extend({QStringLiteral("priority: 1; function containerFor(item) { }"),
            QStringLiteral("property var containerTypes: ['Panel']")});
    EXPECT_EQ(containerFor(button()), panel());
}

TEST_F(HookQuestions, AContainerMayBeAnyItem)
{
    extend({QStringLiteral("function containerFor(item) { return item }")});
    EXPECT_EQ(containerFor(button()), button());
}

// Properties of names

TEST_F(HookQuestions, AMapReplacesTheListOfTheCaller)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'PushButton': ['caption', 'type', ''] })")});
    EXPECT_EQ(askProperties(button()), "caption,type,");
    EXPECT_EQ(askProperties(frame()), "no answer: old");
}

TEST_F(HookQuestions, AFunctionAppendsToTheListOfTheCaller)
{
    extend(
        {QStringLiteral("function extraPropertiesFor(item) { return ['a', '', 'type', 'b', 'container', 'Type'] }")});
    EXPECT_EQ(askProperties(button()), "old,a,b,Type");
    EXPECT_EQ(askProperties(button(), {}), "a,b,Type");
}

TEST_F(HookQuestions, AnEmptyListFromAFunctionHidesAllLowerHooks)
{
    extend({QStringLiteral("priority: 1; function extraPropertiesFor(item) { return [] }"),
            QStringLiteral("property var objectNameProperties: ({ 'QQuickItem': ['a'] })")});
    EXPECT_EQ(askProperties(button()), "old");
}

TEST_F(HookQuestions, OnlyRefusedNamesFromAFunctionAreAnAnswerToo)
{
    extend({QStringLiteral("priority: 1; function extraPropertiesFor(item) { return ['type', 'container', ''] }"),
            QStringLiteral("function extraPropertiesFor(item) { return ['a'] }")});
    EXPECT_EQ(askProperties(button()), "old");
}

TEST_F(HookQuestions, AnEmptyListInTheMapEmptiesTheListOfTheCaller)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'PushButton': [] })")});
    EXPECT_EQ(askProperties(button()), "");
}

TEST_F(HookQuestions, TheFirstKeyInAscendingOrderWinsNotTheMostSpecific)
{
    extend({QStringLiteral("property var objectNameProperties: "
                           "({ 'QQuickRectangle': ['c'], 'QQuickItem': ['b'], 'Zzz': ['z'], 'PushButton': ['a'] })")});
    EXPECT_EQ(askProperties(button()), "a");
    EXPECT_EQ(askProperties(frame()), "b");
}

TEST_F(HookQuestions, CapitalsSortAheadOfSmallLetters)
{
    extend(
        {QStringLiteral("property var objectNameProperties: ({ 'qQuickItem': ['small'], 'QQuickItem': ['large'] })")});
    EXPECT_EQ(askProperties(button()), "large");
}

TEST_F(HookQuestions, ASingleTextInTheMapCountsAsAListOfOne)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'PushButton': 'caption' })")});
    EXPECT_EQ(askProperties(button()), "caption");
}

TEST_F(HookQuestions, AListOfDeclaredTypeCountsInTheMap)
{
    extend({QStringLiteral("property list<string> names: ['a', 'b']\n"
                           "property var objectNameProperties: ({ 'PushButton': names, 'Panel': program.names })")});
    EXPECT_EQ(askProperties(button()), "a,b");
    EXPECT_EQ(askProperties(panel()), "first,second");
}

TEST_F(HookQuestions, AMapBeatsTheFunctionOfItsHook)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'PushButton': ['map'] })\n"
                           "function extraPropertiesFor(item) { return ['function'] }")});
    EXPECT_EQ(askProperties(button()), "map");
    EXPECT_EQ(askProperties(panel()), "old,function");
}

// Property values

TEST_F(HookQuestions, AValueReplacesTheTextOfTheCaller)
{
    for (const auto &[script, expected] : {std::pair{"'text'", "text"},
                                           {"3", "3"},
                                           {"1.5", "1.5"},
                                           {"true", "true"},
                                           {"''", ""},
                                           {"null", ""},
                                           {"({})", ""},
                                           {"[1]", ""},
                                           {"'<VANTLEUNHANDLED>'", "<VANTLEUNHANDLED>"},
                                           {"hook.unhandled + ' '", "<vantleunhandled> "}}) {
        Scene own;
        extend({QStringLiteral("function propertyFor(item, name) { return %1 }").arg(QLatin1String(script))});
        QString value = QStringLiteral("before");
        EXPECT_TRUE(propertyFor(own.addWindow(QString())->contentItem(), QStringLiteral("p"), &value)) << script;
        EXPECT_EQ(value, QLatin1String(expected)) << script;
    }
}

TEST_F(HookQuestions, NoAnswerLeavesTheTextAlone)
{
    extend({QStringLiteral("function propertyFor(item, name) { return hook.unhandled }"),
            QStringLiteral("function propertyFor(item, name) { return '<vantleunhandled>' }"),
            QStringLiteral("function propertyFor(item, name) { }")});
    QString value = QStringLiteral("before");
    EXPECT_FALSE(propertyFor(button(), QStringLiteral("p"), &value));
    EXPECT_EQ(value, QStringLiteral("before"));
}

TEST_F(HookQuestions, AFunctionWithOneParameterIsNeverCalledForAProperty)
{
    extend({QStringLiteral("function propertyFor(item) { program.note('called'); return 'x' }"),
            QStringLiteral("function propertyFor(item, name, more) { program.note('called'); return 'x' }"),
            QStringLiteral("property string propertyFor: 'x'")});
    QString value;
    EXPECT_FALSE(propertyFor(button(), QStringLiteral("p"), &value));
    EXPECT_THAT(scene.program.notes, IsEmpty());
}

// Ignored items

TEST_F(HookQuestions, TheWhiteListBeatsTheBlackListOfItsHook)
{
    extend({QStringLiteral("property var whitelistedTypes: ['PushButton']\n"
                           "property var blacklistedTypes: ['PushButton', 'QQuickRectangle']\n"
                           "function isIgnored(item) { return item.objectName === 'panel' }")});
    EXPECT_EQ(askIgnored(button(), true), (Verdict{true, false}));
    EXPECT_EQ(askIgnored(frame(), false), (Verdict{true, true}));
    EXPECT_EQ(askIgnored(panel(), false), (Verdict{true, true}));
    EXPECT_EQ(askIgnored(window()->contentItem(), true), (Verdict{true, false}));
}

TEST_F(HookQuestions, ABlackListOfHigherPriorityBeatsAWhiteList)
{
    extend({QStringLiteral("property var whitelistedTypes: ['PushButton']"),
            QStringLiteral("priority: 5; property var blacklistedTypes: ['PushButton']")});
    EXPECT_EQ(askIgnored(button()), (Verdict{true, true}));
}

TEST_F(HookQuestions, AFunctionThatDeclinesLeavesTheVerdictToALowerBlackList)
{
    extend({QStringLiteral("property var blacklistedTypes: ['PushButton']"),
            QStringLiteral("priority: 10; function isIgnored(item) { return hook.unhandled }")});
    Verdict verdict{};
    const auto texts = tracesOf([&] { verdict = askIgnored(button()); });
    EXPECT_EQ(verdict, (Verdict{true, true}));
    EXPECT_THAT(texts, ElementsAre(debugText(button()) + " ignored due to " + hookClass(0) + ".blacklistedTypes"));
}

TEST_F(HookQuestions, TypeListsLookAtTheItemAlone)
{
    extend({QStringLiteral("property var blacklistedTypes: ['Panel']")});
    EXPECT_EQ(askIgnored(panel()), (Verdict{true, true}));
    EXPECT_EQ(askIgnored(button()), (Verdict{false, false}));
}

TEST_F(HookQuestions, ATruthOfAnyKindIsAVerdict)
{
    for (const auto &[script, expected] : {std::pair{"1", true},
                                           {"0", false},
                                           {"'true'", true},
                                           {"'false'", false},
                                           {"''", false},
                                           {"null", false},
                                           {"NaN", true}}) {
        Scene own;
        extend({QStringLiteral("function isIgnored(item) { return %1 }").arg(QLatin1String(script))});
        EXPECT_EQ(askIgnored(own.addWindow(QString())->contentItem(), !expected), (Verdict{true, expected})) << script;
    }
}

TEST_F(HookQuestions, ListsOfTheWrongKindHitNothing)
{
    extend({QStringLiteral("property int whitelistedTypes: 3; property var blacklistedTypes: ({ a: 'PushButton' })"),
            QStringLiteral("property var containerTypes: null; property var objectNameProperties: ['PushButton']"),
            QStringLiteral("property QtObject whitelistedTypes: hook; property var objectNameProperties: 3"),
            QStringLiteral("property var blacklistedTypes: function() { return ['PushButton'] }")});
    EXPECT_EQ(askIgnored(button()), (Verdict{false, false}));
    EXPECT_EQ(containerFor(button()), nullptr);
    EXPECT_EQ(askProperties(button()), "no answer: old");
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookQuestions, ListsComeInSeveralForms)
{
    for (const char *list :
         {"property var blacklistedTypes: ['Other', 'PushButton']",
          "property list<string> blacklistedTypes: ['Other', 'PushButton']",
          "property var blacklistedTypes: 'PushButton'", "property string blacklistedTypes: 'PushButton'",
          "readonly property var blacklistedTypes: { return ['PushButton'] }",
          "property list<string> l: ['PushButton']; property alias blacklistedTypes: hook.l"}) {
        Scene own;
        extend({QLatin1String(list)});
        QQuickWindow *const ownWindow = own.addWindow(
            QStringLiteral("component PushButton: Item {}\nPushButton { objectName: 'b' }"));
        EXPECT_EQ(askIgnored(itemNamed(ownWindow, "b")), (Verdict{true, true})) << list;
    }
}

// Readiness

TEST_F(HookQuestions, NoAnswerCountsAsReady)
{
    extend({QStringLiteral("function isItemReady(item) { return hook.unhandled }")});
    EXPECT_TRUE(isItemReady(button()));
}

TEST_F(HookQuestions, ReadinessIsTheVerdictOfTheFunction)
{
    extend({QStringLiteral("function isItemReady(item) { return item.objectName !== 'button' }")});
    EXPECT_FALSE(isItemReady(button()));
    EXPECT_TRUE(isItemReady(frame()));
}

// Traces

TEST_F(HookQuestions, EveryAnswerIsTracedWithTheRawClassOfItsHook)
{
    extend({QStringLiteral(R"(
        property var containerTypes: ['Panel']
        property var objectNameProperties: ({ 'PushButton': ['caption'] })
        property var whitelistedTypes: ['PushButton']
        property var blacklistedTypes: ['QQuickRectangle']
        function containerFor(item) { return item.parent }
        function extraPropertiesFor(item) { return ['x'] }
        function propertyFor(item, name) { return 'v' }
        function isIgnored(item) { return item.objectName === 'panel' }
        function isItemReady(item) { return false })")});
    const std::string from = " from " + hookClass(0);
    EXPECT_THAT(hookClass(0), HasSubstr("VantleHook_QML"));
    QString value;
    const auto texts = tracesOf([&] {
        containerFor(button());
        containerFor(panel());
        askProperties(button(), {});
        askProperties(panel(), {});
        askProperties(panel());
        propertyFor(button(), QStringLiteral("p"), &value);
        askIgnored(button());
        askIgnored(frame());
        askIgnored(panel());
        askIgnored(window()->contentItem());
        isItemReady(button());
    });
    EXPECT_THAT(texts,
                ElementsAre("Got container " + debugText(panel()) + from + ".containerTypes",
                            "Got container " + debugText(window()->contentItem()) + from + ".containerFor()",
                            "Got properties caption" + from + ".objectNameProperties",
                            "Got properties x" + from + ".extraPropertiesFor()",
                            "Got properties " + from + ".extraPropertiesFor()", "Got 'p'='v'" + from + ".propertyFor()",
                            debugText(button()) + " not ignored due to " + hookClass(0) + ".whitelistedTypes",
                            debugText(frame()) + " ignored due to " + hookClass(0) + ".blacklistedTypes",
                            debugText(panel()) + " ignored according to " + hookClass(0) + ".isIgnored()",
                            debugText(window()->contentItem()) + " not ignored according to " + hookClass(0)
                                + ".isIgnored()",
                            "Got readiness false" + from + ".isItemReady()"));
    EXPECT_THAT(traces.functions, testing::Contains(HasSubstr("extraPropertiesFor")).Times(3));
}

TEST_F(HookQuestions, NothingIsTracedWithoutAnAnswer)
{
    extend({QStringLiteral("function isIgnored(item) { return hook.unhandled }")});
    EXPECT_THAT(tracesOf([&] {
                    QString value;
                    containerFor(button());
                    askProperties(button());
                    propertyFor(button(), value, &value);
                    askIgnored(button());
                    isItemReady(button());
                }),
                IsEmpty());
}

// Types

TEST_F(HookQuestions, TypesAreComparedExactly)
{
    EXPECT_TRUE(objectIsOfType(button(), QStringLiteral("PushButton")));
    EXPECT_TRUE(objectIsOfType(button(), QStringLiteral("QObject")));
    for (const char *type : {"", "pushButton", "PushButton ", "Push", "PushButtons", "QWindow"})
        EXPECT_FALSE(objectIsOfType(button(), QLatin1String(type))) << type;
    EXPECT_FALSE(itemMatchesAnyType(button(), {}));
    EXPECT_TRUE(itemMatchesAnyType(button(), {QStringLiteral("A"), QStringLiteral("QQuickItem")}));
    EXPECT_FALSE(itemMatchesAnyType(button(), {QStringLiteral("A"), QStringLiteral("B")}));
}

TEST_F(HookQuestions, SomePropertiesBelongToEveryName)
{
    for (const char *name : {"", "type", "container"})
        EXPECT_FALSE(acceptExtensionProperty(QLatin1String(name))) << name;
    for (const char *name : {"Type", "containers", " ", "id", "visible", "occurrence"})
        EXPECT_TRUE(acceptExtensionProperty(QLatin1String(name))) << name;
}
