#include "tool/replay/calltext.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

using namespace Vantle;
using Tool::Replay::CallText;

namespace {

QJsonObject json(const char *text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    EXPECT_TRUE(document.isObject()) << text;
    return document.object();
}

QString textOf(const char *method, const char *params)
{
    Protocol::FunctionDescription click{QStringLiteral("mouseClick"),
                                        {{{{QStringLiteral("objectName"), QStringLiteral("QString")}},
                                          QStringLiteral("void")},
                                         {{{QStringLiteral("objectName"), QStringLiteral("QString")},
                                           {QStringLiteral("modifiers"), QStringLiteral("Qt::KeyboardModifiers")},
                                           {QStringLiteral("button"), QStringLiteral("Qt::MouseButton")}},
                                          QStringLiteral("void")},
                                         {{{QStringLiteral("objectName"), QStringLiteral("QString")},
                                           {QStringLiteral("x"), QStringLiteral("int")},
                                           {QStringLiteral("y"), QStringLiteral("int")},
                                           {QStringLiteral("button"), QStringLiteral("Qt::MouseButton")}},
                                          QStringLiteral("void")}}};
    CallText calls;
    calls.setFunctions({click});
    return calls.textOf(QLatin1String(method), json(params),
                        [](int handle) { return QStringLiteral("Main Item#%1").arg(handle); });
}

TEST(CallText, writesCallsAsTheyWouldBeRecorded)
{
    EXPECT_EQ(textOf("call", R"({"function": "mouseClick", "arguments": ["Main", 3, 4, 1]})"),
              QStringLiteral("mouseClick(\"Main\", 3, 4, Qt.LeftButton)"));
    EXPECT_EQ(textOf("call", R"({"function": "mouseClick", "arguments": ["Main", 33554432, 2]})"),
              QStringLiteral("mouseClick(\"Main\", Qt.ShiftModifier, Qt.RightButton)"));
    EXPECT_EQ(textOf("call", R"({"function": "mouseClick", "arguments": ["Main", 5, 4]})"),
              QStringLiteral("mouseClick(\"Main\", 5, 4)"));
}

TEST(CallText, callsObjectsByTheirNames)
{
    EXPECT_EQ(textOf("call", R"({"function": "mouseClick", "arguments": [{"object": 7}]})"),
              QStringLiteral("mouseClick(\"Main Item#7\")"));
    EXPECT_EQ(textOf("invoke", R"({"object": 7, "method": "go", "arguments": [true, null, "a"]})"),
              QStringLiteral("findObject(\"Main Item#7\").go(true, null, \"a\")"));
    EXPECT_EQ(textOf("setProperty", R"({"object": 7, "property": "text", "value": "a"})"),
              QStringLiteral("findObject(\"Main Item#7\").text = \"a\""));
}

TEST(CallText, knowsNothingOfOtherFunctionsAndWritesThemAllTheSame)
{
    EXPECT_EQ(textOf("call", R"({"function": "fly", "arguments": ["x", 1, 1.5]})"),
              QStringLiteral("fly(\"x\", 1, 1.5)"));
    EXPECT_EQ(textOf("find", R"({"name": "Main"})"), QStringLiteral("waitForObject(\"Main\")"));
    EXPECT_EQ(textOf("ping", "{}"), QString());
}

TEST(CallText, aStatementThatSaysItAlreadyIsLeftAlone)
{
    using Tool::Replay::saysTheSame;
    EXPECT_TRUE(saysTheSame(QStringLiteral("fly( 'x',1 );"), QStringLiteral("fly(\"x\", 1)")));
    EXPECT_TRUE(saysTheSame(QStringLiteral("const a = fly(\n  'x');"), QStringLiteral("fly(\"x\")")));
    EXPECT_TRUE(saysTheSame(QStringLiteral("waitForObject('x', 100);"), QStringLiteral("waitForObject(\"x\")")));
    EXPECT_FALSE(saysTheSame(QStringLiteral("for (const a of all) fly(a);"), QStringLiteral("fly(\"x\")")));
}

} // namespace
