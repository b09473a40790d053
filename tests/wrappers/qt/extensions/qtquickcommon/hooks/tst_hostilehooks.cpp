// Extensions that do their worst: the program must live on, and get a default.

#include "hookscene.h"

#include "support/waiting.h"
#include "support/warningguard.h"
#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>

#include <gmock/gmock.h>

using namespace VantleQtQuickHook;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class HostileHooks : public HookTest
{
protected:
    /// Members that answer every question with that statement.
    static QString everyFunction(const QString &statement)
    {
        return QStringLiteral("function containerFor(item) { %1 }\n"
                              "function extraPropertiesFor(item) { %1 }\n"
                              "function propertyFor(item, name) { %1 }\n"
                              "function isIgnored(item) { %1 }\n"
                              "function isItemReady(item) { %1 }\n")
            .arg(statement);
    }

    static constexpr int QuestionCount = 5;
    /// Puts the question of that number; true if nobody answered and the
    /// caller's list, text and flag are as they were.
    static bool isUnanswered(int question, QQuickItem *item)
    {
        const QStringList before{QStringLiteral("before")};
        QStringList properties = before;
        QString value = before.first();
        bool ignored = true;
        switch (question) {
        case 0: return containerFor(item) == nullptr;
        case 1: return !extraPropertiesFor(item, &properties) && properties == before;
        case 2: return !propertyFor(item, QStringLiteral("p"), &value) && value == before.first();
        case 3: return !isIgnored(item, &ignored) && ignored;
        default: return isItemReady(item);
        }
    }
};

} // namespace

TEST_F(HostileHooks, ExceptionsAskTheNextHook)
{
    extend({everyFunction(QStringLiteral("throw new Error('thrown')")), everyFunction(QStringLiteral("null.x")),
            QStringLiteral("function isItemReady(item) { return false }")});
    for (int question = 0; question < QuestionCount; ++question) {
        expectWarning(QStringLiteral("Error: thrown"));
        expectWarning(QStringLiteral("TypeError"));
        EXPECT_EQ(isUnanswered(question, button()), question != 4) << question;
    }
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HostileHooks, AnErrorForAnAnswerAsksTheNextHookAndChangesNothing)
{
    extend({everyFunction(QStringLiteral("return { message: 'oops', fileName: 'f.qml', lineNumber: 4 }")),
            everyFunction(QStringLiteral("program.note('asked')"))});
    for (int question = 0; question < QuestionCount; ++question) {
        scene.program.notes.clear();
        logger.warnings.clear();
        EXPECT_TRUE(isUnanswered(question, button())) << question;
        EXPECT_EQ(scene.program.notes, QStringList{QStringLiteral("asked")}) << question;
        EXPECT_THAT(logger.warnings, ElementsAre("QML JS error: oops (f.qml:4)")) << question;
    }
}

TEST_F(HostileHooks, AnErrorOfOneHookLeavesTheAnswerToTheNext)
{
    extend({QStringLiteral("priority: 1\n") + everyFunction(QStringLiteral("return { message: 'oops' }")),
            QStringLiteral("property var containerTypes: ['Panel']\n"
                           "property var objectNameProperties: ({ 'PushButton': ['caption'] })\n"
                           "property var blacklistedTypes: ['PushButton']\n"
                           "function propertyFor(item, name) { return 'v' }\n"
                           "function isItemReady(item) { return false }")});
    for (int question = 0; question < QuestionCount; ++question)
        EXPECT_FALSE(isUnanswered(question, button())) << question;
    EXPECT_EQ(logger.warnings, std::vector<std::string>(QuestionCount, "QML JS error: oops (:0)"));
}

TEST_F(HostileHooks, AnErrorThatWasPendingInTheProgramStaysSo)
{
    extend({QStringLiteral("property var lists: { program.note('read'); return ['PushButton', 'Panel'] }\n"
                           "property var containerTypes: lists\nproperty var blacklistedTypes: lists\n"
                           "property var objectNameProperties: ({ 'Other': ['x'] })\n"
                           "function extraPropertiesFor(item) { return ['a'] }\n"
                           "function propertyFor(item, name) { return 'v' }\n"
                           "function isItemReady(item) { return false }")});
    QQuickItem *const item = button();
    for (int question = 0; question < QuestionCount; ++question) {
        scene.engine->throwError(QStringLiteral("of the program"));
        EXPECT_FALSE(isUnanswered(question, item)) << question;
        ASSERT_TRUE(scene.engine->hasError()) << question;
        EXPECT_EQ(scene.engine->catchError().toString(), QStringLiteral("Error: of the program")) << question;
    }
    EXPECT_EQ(scene.program.notes, QStringList{QStringLiteral("read")});
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HostileHooks, EndlessRecursionIsNoAnswer)
{
    extend({QStringLiteral("function f() { return f() + 1 }\n") + everyFunction(QStringLiteral("return f()"))});
    for (int question = 0; question < QuestionCount; ++question) {
        expectWarning(QStringLiteral("Maximum call stack size exceeded"));
        EXPECT_TRUE(isUnanswered(question, button())) << question;
    }
}

TEST_F(HostileHooks, ValuesNestedDeeplyAreReadFromAbove)
{
    const QString nested = QStringLiteral("let a = []; for (let i = 0; i < 300000; ++i) a = [a]; return a");
    const QString nestedObject = QStringLiteral(
        "let a = {}; for (let i = 0; i < 300000; ++i) a = { QQuickItem: a }; return a");
    extend({QStringLiteral("function make() { %1 }\nfunction makeObject() { %2 }\n").arg(nested, nestedObject)
            + QStringLiteral("property var containerTypes: make()\nproperty var whitelistedTypes: make()\n"
                             "property var blacklistedTypes: makeObject()\n"
                             "property var objectNameProperties: makeObject()\n")
            + everyFunction(QStringLiteral("return make()"))});
    EXPECT_EQ(containerFor(button()), nullptr);
    QStringList properties{QStringLiteral("old")};
    EXPECT_TRUE(extraPropertiesFor(button(), &properties));
    EXPECT_THAT(properties, IsEmpty());
    QString value;
    EXPECT_TRUE(propertyFor(button(), QStringLiteral("p"), &value));
    bool ignored = true;
    EXPECT_TRUE(isIgnored(button(), &ignored));
    EXPECT_FALSE(ignored);
    EXPECT_FALSE(isItemReady(button()));
}

TEST_F(HostileHooks, HolesOfHugeArraysAreNotWalked)
{
    extend({QStringLiteral(
        "property var whitelistedTypes: { let a = new Array(4294967295); a[0] = 'Panel'; return a }\n"
        "property var containerTypes: new Array(4294967295)\n"
        "function extraPropertiesFor(item) { let a = new Array(4294967295).fill; "
        "a = new Array(4294967295); a[0] = 'first'; a[9999] = 'second'; a[4294967294] = 'last'; a.name = 'none'; return a }")});
    bool ignored = true;
    EXPECT_TRUE(isIgnored(panel(), &ignored));
    EXPECT_FALSE(ignored);
    EXPECT_EQ(containerFor(button()), nullptr);
    QStringList properties;
    EXPECT_TRUE(extraPropertiesFor(button(), &properties));
    EXPECT_EQ(properties.join(u',').toStdString(), "first,second,last");
}

TEST_F(HostileHooks, EveryEntryOfALongListCounts)
{
    const QString list = QStringLiteral("Array.from({length: 30000}, (_, i) => 'T' + i).concat(['Panel'])");
    for (const char *type : {"var", "list<string>"}) {
        extend({QStringLiteral("property %1 blacklistedTypes: %2").arg(QLatin1String(type), list)});
        bool ignored = false;
        EXPECT_TRUE(isIgnored(panel(), &ignored)) << type;
        EXPECT_TRUE(ignored) << type;
    }
}

TEST_F(HostileHooks, ValuesThatContainThemselvesAreRead)
{
    extend({QStringLiteral("property var objectNameProperties: { let a = {}; a.QQuickItem = a; return a }\n"
                           "property var whitelistedTypes: { let a = ['Panel']; a.push(a); return a }")});
    QStringList properties{QStringLiteral("old")};
    EXPECT_TRUE(extraPropertiesFor(button(), &properties));
    EXPECT_THAT(properties, IsEmpty());
    bool ignored = true;
    EXPECT_TRUE(isIgnored(panel(), &ignored));
}

TEST_F(HostileHooks, GettersAndTrapsThatThrowLeaveNoErrorBehind)
{
    const QString throwing = QStringLiteral("{ get(t, k) { throw new Error('get') }, has() { throw new Error('has') }, "
                                            "ownKeys() { throw new Error('keys') }, "
                                            "getOwnPropertyDescriptor() { throw new Error('descriptor') } }");
    extend({everyFunction(QStringLiteral("return new Proxy({}, %1)").arg(throwing)),
            everyFunction(QStringLiteral("return { get message() { throw new Error('message') } }")),
            everyFunction(
                QStringLiteral("return Object.defineProperty([1], 0, { get: () => { throw new Error('entry') } })")),
            QStringLiteral("priority: 1\nproperty var objectNameProperties: new Proxy({}, %1)\n"
                           "property var whitelistedTypes: new Proxy(['Panel'], %1)\n"
                           "property var containerTypes: new Proxy(['Panel'], %1)")
                .arg(throwing)});
    for (int question = 0; question < QuestionCount; ++question) {
        isUnanswered(question, button());
        EXPECT_FALSE(scene.engine->hasError()) << question;
        EXPECT_EQ(scene.engine->evaluate(QStringLiteral("1 + 1")).toInt(), 2) << question;
    }
}

TEST_F(HostileHooks, AnItemThatDiesInTheQuestionIsNotShownToTheNextHook)
{
    for (int question = 0; question < QuestionCount; ++question) {
        Scene own;
        extend({everyFunction(QStringLiteral("program.kill(item)")),
                everyFunction(QStringLiteral("program.note('asked'); return true"))});
        QQuickWindow *const ownWindow = own.addWindow(QStringLiteral("Item { objectName: 'victim' }"));
        const QPointer<QQuickItem> victim = itemNamed(ownWindow, "victim");
        EXPECT_TRUE(isUnanswered(question, victim)) << question;
        EXPECT_TRUE(victim.isNull()) << question;
        EXPECT_THAT(own.program.notes, IsEmpty()) << question;
    }
}

TEST_F(HostileHooks, AnAnswerAboutAnItemThatDiedInTheQuestionCounts)
{
    extend({QStringLiteral("function isIgnored(item) { program.kill(item); return true }\n"
                           "function isItemReady(item) { program.kill(item); return false }")});
    QQuickItem *const first = button();
    QQuickItem *const second = frame();
    bool ignored = false;
    EXPECT_TRUE(isIgnored(first, &ignored));
    EXPECT_TRUE(ignored);
    EXPECT_FALSE(isItemReady(second));
    EXPECT_EQ(traces.take().at(1), "QQuickItem(nullptr) ignored according to " + hookClass(0) + ".isIgnored()");
}

TEST_F(HostileHooks, AContainerThatWasKilledIsNone)
{
    extend({QStringLiteral("function containerFor(item) { let p = item.parent; program.kill(p); return p }")});
    EXPECT_EQ(containerFor(button()), nullptr);
}

TEST_F(HostileHooks, AHookMayDestroyItselfInItsAnswer)
{
    for (int question = 0; question < QuestionCount; ++question) {
        Scene own;
        extend({everyFunction(QStringLiteral("program.kill(hook); return 'PushButton'"))});
        QQuickItem *const item = own.addWindow(QString())->contentItem();
        isUnanswered(question, item);
        EXPECT_EQ(hooksOf(item->window()).size(), FileCount - 1) << question;
        EXPECT_TRUE(isUnanswered(question, item)) << question;
    }
}

TEST_F(HostileHooks, AHookMayDestroyAllTheOthers)
{
    extend({everyFunction(QStringLiteral("program.act()")),
            everyFunction(QStringLiteral("program.note('asked'); return true")),
            everyFunction(QStringLiteral("program.note('asked'); return true"))});
    for (int question = 0; question < QuestionCount; ++question) {
        Scene own;
        QQuickWindow *const ownWindow = own.addWindow(QString());
        own.program.action = [ownWindow] {
            QList<VantleHook *> others = hooksOf(ownWindow);
            others.removeFirst();
            qDeleteAll(others);
        };
        EXPECT_TRUE(isUnanswered(question, ownWindow->contentItem())) << question;
        EXPECT_THAT(own.program.notes, IsEmpty()) << question;
    }
}

TEST_F(HostileHooks, ClearedGuardsAreSkippedLater)
{
    extend({QStringLiteral("function isItemReady(item) { return true }"),
            QStringLiteral("function isItemReady(item) { return false }")});
    EXPECT_TRUE(isItemReady(button()));
    hooksOf(window()).value(0)->deleteLater();
    ASSERT_TRUE(waitUntil([&] { return hooksOf(window()).size() == FileCount - 1; }));
    EXPECT_FALSE(isItemReady(button()));
}

TEST_F(HostileHooks, TheWindowMayDieInTheQuestion)
{
    for (int question = 0; question < QuestionCount; ++question) {
        Scene own;
        extend({everyFunction(QStringLiteral("program.act()")),
                everyFunction(QStringLiteral("program.note('asked'); return true"))});
        QQuickItem *const item = own.addWindow(QString())->contentItem();
        own.program.action = [&own] { own.windows.clear(); };
        EXPECT_TRUE(isUnanswered(question, item)) << question;
        EXPECT_THAT(own.program.notes, IsEmpty()) << question;
    }
}

TEST_F(HostileHooks, QuestionsAboutOtherWindowsInTheWalkHookThemUp)
{
    extend({everyFunction(QStringLiteral("program.act()")), everyFunction(QStringLiteral("program.act()")),
            everyFunction(QStringLiteral("program.act()")),
            QStringLiteral("function isItemReady(item) { return false }")});
    QQuickItem *const item = button();
    int depth = 0;
    scene.program.action = [&] {
        if (depth == 3)
            return;
        ++depth;
        for (int question = 0; question < QuestionCount; ++question)
            isUnanswered(question, scene.addWindow(QString())->contentItem());
        scene.windows.erase(scene.windows.begin() + 1 + static_cast<std::ptrdiff_t>(scene.windows.size() / 2));
        --depth;
    };
    depth = 1;
    EXPECT_FALSE(isItemReady(item));
    EXPECT_GT(scene.windows.size(), 20U);
    for (const auto &window : scene.windows)
        EXPECT_EQ(hooksOf(window.get()).size(), FileCount);
}

TEST_F(HostileHooks, QuestionsAboutTheSameItemInTheWalkEnd)
{
    extend({QStringLiteral("property int depth: 0\n"
                           "function isItemReady(item) { if (depth > 50) return false; ++depth; program.act() }")});
    QQuickItem *const item = button();
    scene.program.action = [item] { isItemReady(item); };
    EXPECT_TRUE(isItemReady(item)); // the outermost function returns undefined
    EXPECT_FALSE(isItemReady(item));
}

TEST_F(HostileHooks, TheEngineMayDieInTheQuestion)
{
    extend({QStringLiteral("function isItemReady(item) { program.act(); return false }")});
    QQuickItem *const item = button();
    EXPECT_FALSE([&] {
        scene.program.action = [] {};
        return isItemReady(item);
    }());
    // Deferred, as a program does it: an engine can't go while its script runs.
    scene.program.action = [this] { scene.engine.release()->deleteLater(); };
    EXPECT_FALSE(isItemReady(item));
    const QPointer<VantleHook> hook = hooksOf(window()).value(0);
    scene.windows.clear();
    ASSERT_TRUE(waitUntil([&] { return hook.isNull(); }));
}

TEST_F(HostileHooks, HitTestingSurvivesItemsThatDieInTheQuestion)
{
    extend({QStringLiteral("function isIgnored(item) { program.act(); return true }")});
    // Each question kills what the walk would have come to next, or has come from.
    for (const char *victim : {"below", "above", "parent", "grandparent", "root", "inner", "sibling"}) {
        Scene own;
        QQuickWindow *const ownWindow = own.addWindow(QStringLiteral(R"(
            Item { objectName: "root"; width: 100; height: 100
                Item { objectName: "sibling"; width: 100; height: 100 }
                Item { objectName: "grandparent"; width: 100; height: 100
                    Item { objectName: "parent"; width: 100; height: 100
                        Item { objectName: "below"; width: 100; height: 100 }
                        Item { objectName: "above"; width: 100; height: 100; z: 1
                            Item { objectName: "inner"; width: 100; height: 100 } }
                    }
                }
            })"));
        const QPointer<QQuickItem> object = itemNamed(ownWindow, victim);
        own.program.action = [&] { delete object; };
        QQuickItem *const root = itemNamed(ownWindow, "root");
        EXPECT_EQ(Vantle::QtWrapper::recursiveQuickItemAt(root, QPointF(50, 50)), nullptr) << victim;
        EXPECT_TRUE(object.isNull()) << victim;
    }
}

TEST_F(HostileHooks, HitTestingDoesNotReturnAnItemThatDiedInTheQuestion)
{
    extend({QStringLiteral(
        "function isIgnored(item) { if (item.objectName === 'top') { program.kill(item) } return false }")});
    QQuickWindow *const own = scene.addWindow(QStringLiteral(R"(
        Item { objectName: "bottom"; width: 100; height: 100 }
        Item { objectName: "top"; width: 100; height: 100 })"));
    EXPECT_EQ(Vantle::QtWrapper::recursiveQuickItemAt(own->contentItem(), QPointF(50, 50)), itemNamed(own, "bottom"));
}

TEST_F(HostileHooks, TheSearchForTheFocusSurvivesItemsThatDieInTheQuestion)
{
    extend({QStringLiteral("function isIgnored(item) { program.act(); return true }")});
    for (const char *victim : {"field", "scope", "outer"}) {
        Scene own;
        QQuickWindow *const ownWindow = own.addWindow(QStringLiteral(R"(
            visible: true
            FocusScope { objectName: "outer"; focus: true
                FocusScope { objectName: "scope"; focus: true
                    Item { objectName: "field"; focus: true } } })"));
        ASSERT_TRUE(waitUntil([&] { return ownWindow->activeFocusItem() == itemNamed(ownWindow, "field"); }));
        const QPointer<QQuickItem> object = itemNamed(ownWindow, victim);
        own.program.action = [&] { delete object; };
        EXPECT_EQ(Vantle::QtWrapper::firstNonIgnoredFocusItem(ownWindow), nullptr) << victim;
        EXPECT_TRUE(object.isNull()) << victim;
    }
}
