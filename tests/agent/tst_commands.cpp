#include "formcommands.h"

#include "agent/objecttree.h"
#include "wrappers/qt/wrapping.h"

#include <functional>

using namespace Vantle;
using namespace VantleTest;

TEST_F(FormCommands, PropertiesComeInTheirOwnTypes)
{
    EXPECT_EQ(propertyOf("Window#form", "count"), QJsonValue(3));
    EXPECT_EQ(propertyOf("Window#form", "title"), QJsonValue(QStringLiteral("Form")));
    EXPECT_EQ(propertyOf("Window#form", "visible"), QJsonValue(true));
    EXPECT_EQ(propertyOf("Window#form", "tint"), QJsonValue(json(R"({"type": "QColor", "text": "#80ff0000"})")));
    EXPECT_EQ(propertyOf("Window#form", "day"),
              QJsonValue(json(R"({"type": "QDateTime", "text": "2024-01-02T03:04:05.000"})")));
    EXPECT_EQ(propertyOf("Window#form #save", "children").toArray().size(), 1);
    EXPECT_EQ(propertyOf("Window#form #save [objectName=\"label\"]", "font.bold"), QJsonValue(false));
}

TEST_F(FormCommands, ValuesWithMembersSaySo)
{
    const char *const label = "Window#form #save [objectName=\"label\"]";
    const QJsonObject font = propertyOf(label, "font").toObject();
    EXPECT_EQ(font.value(QStringLiteral("type")), QStringLiteral("QFont"));
    EXPECT_EQ(font.value(QStringLiteral("members")), QJsonValue(true));
    EXPECT_FALSE(propertyOf("Window#form", "tint").toObject().contains(QStringLiteral("members")));
}

TEST_F(FormCommands, ScriptValuesAreLookedInto)
{
    const QJsonObject anything = propertyOf("Window#form", "anything").toObject();
    EXPECT_EQ(anything.value(QStringLiteral("type")), QStringLiteral("map"));
    const QJsonObject members = anything.value(QStringLiteral("value")).toObject();
    EXPECT_EQ(members.value(QStringLiteral("list")),
              QJsonValue(QJsonArray{1, QStringLiteral("two"), QJsonValue::Null}));
    EXPECT_EQ(members.value(QStringLiteral("item")).toObject().value(QStringLiteral("object")).toInt(),
              handleOf("Window#form #save"));
}

TEST_F(FormCommands, AllReadablePropertiesComeWithoutNames)
{
    const QJsonObject result = ask("properties", json(R"({"name": "Window#form #save"})"));
    const QJsonObject values = result.value(QStringLiteral("properties")).toObject();
    EXPECT_EQ(values.value(QStringLiteral("text")), QJsonValue(QStringLiteral("Save")));
    EXPECT_EQ(values.value(QStringLiteral("width")), QJsonValue(100));
    EXPECT_TRUE(values.contains(QStringLiteral("objectName")));
}

TEST_F(FormCommands, MethodsAreNamedWhereAPropertyIsAskedFor)
{
    EXPECT_EQ(propertyOf("Window#form #save", "forceActiveFocus"),
              QJsonValue(json(R"({"type": "method", "text": "forceActiveFocus"})")));
    EXPECT_EQ(propertyOf("Window#form", "requestActivate"),
              QJsonValue(json(R"({"type": "method", "text": "requestActivate"})")));
}

TEST_F(FormCommands, UnknownPropertiesAreErrorsThatSayWhich)
{
    const Protocol::Error error = failureOf("properties",
                                            json(R"({"name": "Window#form", "names": ["cuont"]})"));
    EXPECT_EQ(error.code, Protocol::InvalidParams);
    EXPECT_TRUE(error.message.contains(QStringLiteral("cuont"))) << qPrintable(error.message);
}

TEST_F(FormCommands, PropertiesCanBeSet)
{
    ask("setProperty", json(R"({"name": "Window#form", "property": "count", "value": 8})"));
    EXPECT_EQ(root()->property("count").toInt(), 8);
    ask("setProperty", json(R"({"name": "Window#form #save", "property": "color", "value": "#00ff00"})"));
    EXPECT_EQ(propertyOf("Window#form #save", "color").toObject().value(QStringLiteral("text")),
              QStringLiteral("#ff00ff00"));
    ask("setProperty",
        json(
            R"({"name": "Window#form", "property": "anything", "value": {"type": "map", "value": {"a": [1]}}})"));
    EXPECT_EQ(propertyOf("Window#form", "anything"),
              QJsonValue(json(R"({"type": "map", "value": {"a": [1]}})")));
}

TEST_F(FormCommands, WhatCannotBeSetSaysWhy)
{
    const auto reason = [this](const char *params) {
        const Protocol::Error error = failureOf("setProperty", json(params));
        EXPECT_EQ(error.code, Protocol::InvalidParams) << params;
        return error.message;
    };
    EXPECT_TRUE(
        reason(R"({"name": "Window#form", "property": "cuont", "value": 1})").contains(QStringLiteral("cuont")));
    EXPECT_TRUE(
        reason(R"({"name": "Window#form", "property": "fixed", "value": 1})").contains(QStringLiteral("read")));
    EXPECT_TRUE(
        reason(R"({"name": "Window#form", "property": "count", "value": "x"})").contains(QStringLiteral("int")));
    EXPECT_TRUE(reason(R"({"name": "Window#form", "property": "count"})").contains(QStringLiteral("value")));
    EXPECT_TRUE(
        reason(R"({"name": "Window#form", "property": "count", "value": {"type": "Nonsense", "text": ""}})")
            .contains(QStringLiteral("Nonsense")));
    EXPECT_TRUE(reason(R"({"name": "Window#form", "property": "count", "value": {"object": 999}})")
                    .contains(QStringLiteral("999")));
    EXPECT_EQ(root()->property("count").toInt(), 3);
}

TEST_F(FormCommands, FunctionsOfTheDocumentCanBeInvoked)
{
    EXPECT_EQ(resultOf("add", {2, 3}), QJsonValue(5));
    EXPECT_EQ(resultOf("add", {QStringLiteral("a"), QStringLiteral("b")}), QJsonValue(QStringLiteral("ab")));
    EXPECT_EQ(resultOf("typed", {4}), QJsonValue(QStringLiteral("n4")));
    EXPECT_EQ(resultOf("echo", {json(R"({"type": "QPointF", "x": 1.5, "y": 2})")}),
              QJsonValue(json(R"({"type": "QPointF", "x": 1.5, "y": 2})")));
    const int handle = handleOf("Window#form #save");
    EXPECT_EQ(resultOf("echo", {QJsonObject{{QStringLiteral("object"), handle}}})
                  .toObject()
                  .value(QStringLiteral("object"))
                  .toInt(),
              handle);
    EXPECT_EQ(resultOf("setTitle", {QStringLiteral("New")}), QJsonValue());
    EXPECT_EQ(window()->title(), QStringLiteral("New"));
}

TEST_F(FormCommands, ErrorsOfScriptsAreReported)
{
    EXPECT_EQ(call("failure", {}).error->code, Protocol::FunctionFailed);
    EXPECT_TRUE(call("failure", {}).error->message.contains(QStringLiteral("returned")));
    EXPECT_EQ(call("add", {1}).error->code, Protocol::InvalidParams);
    EXPECT_TRUE(call("add", {1}).error->message.contains(QStringLiteral("add(QVariant,QVariant)")));
    EXPECT_TRUE(call("substract", {}).error->message.contains(QStringLiteral("substract")));
}

TEST_F(FormCommands, ThrownExceptionsAreReported)
{
    qmlEngine(root())->setOutputWarningsToStandardError(false);
    const Reply reply = call("boom", {});
    ASSERT_TRUE(reply.isError());
    EXPECT_EQ(reply.error->code, Protocol::FunctionFailed);
    EXPECT_TRUE(reply.error->message.contains(QStringLiteral("kaputt"))) << qPrintable(reply.error->message);
}

TEST_F(FormCommands, ChildrenOfNothingAreTheWindows)
{
    const QJsonArray windows = ask("children").value(QStringLiteral("objects")).toArray();
    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.first().toObject().value(QStringLiteral("name")), QStringLiteral("Window#form"));
    const QJsonArray items =
        ask("children", json(R"({"name": "Window#form"})")).value(QStringLiteral("objects")).toArray();
    EXPECT_EQ(items.size(), 5);
}

TEST_F(FormCommands, DescribeGivesScreenCoordinates)
{
    const auto description = Protocol::Description::fromJson(
        ask("describe", json(R"({"name": "Window#form #twin"})")));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->geometry, QRect(window()->position() + QPoint(100, 0), QSize(50, 40)));
    EXPECT_TRUE(description->visible && description->enabled);
    EXPECT_EQ(description->notReady, QString());
    find("hidden")->setEnabled(false);
    const auto hidden = Protocol::Description::fromJson(
        ask("describe", json(R"({"name": "Window#form [objectName=\"hidden\"]"})")));
    ASSERT_TRUE(hidden);
    EXPECT_FALSE(hidden->visible || hidden->enabled);
    EXPECT_EQ(hidden->notReady, QStringLiteral("the item is not visible"));
}

TEST_F(FormCommands, TheTreeHoldsEverythingByItsName)
{
    const QJsonArray windows = ask("tree").value(QStringLiteral("windows")).toArray();
    ASSERT_EQ(windows.size(), 1);
    const auto tree = Protocol::TreeNode::fromJson(windows.first().toObject());
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->type, QStringLiteral("Window"));
    EXPECT_EQ(tree->id, QStringLiteral("form"));
    ASSERT_EQ(tree->children.size(), 5);
    EXPECT_EQ(tree->children.at(0).children.first().name,
              QStringLiteral("Window#form Text[objectName=\"label\"]:visible"));
    EXPECT_EQ(tree->children.at(3).name, QStringLiteral("Window#form Rectangle:visible:nth(4)"));
    EXPECT_EQ(tree->children.at(4).notReady, QStringLiteral("the item is not visible"));
}

TEST_F(FormCommands, TheTreeGivesEachObjectTheNameThatItHasByItself)
{
    load(R"qml(
        import QtQuick
        Window {
            visible: true; width: 100; height: 100
            component Tile: Rectangle { property string text; width: 10; height: 10 }
            Repeater { model: 7; Tile { text: "tile " + (index % 3); visible: index != 4; Tile {} } }
            Repeater { model: 3; Item { objectName: "same"; Text { text: "one" } } }
            Item { visible: false; Item { Rectangle {} } Rectangle { id: named } }
            Rectangle {}
        }
    )qml");
    int count = 0;
    const std::function<void(const Protocol::TreeNode &, const SharedPtr<Object> &)> compare =
        [&](const Protocol::TreeNode &node, const SharedPtr<Object> &object) {
            ++count;
            EXPECT_EQ(node.name.toStdString(), object->scriptName().toStdString());
            const ObjectList children = object->children();
            ASSERT_EQ(static_cast<std::size_t>(node.children.size()), children.size());
            for (qsizetype i = 0; i < node.children.size(); ++i)
                compare(node.children.at(i), children.at(static_cast<std::size_t>(i)));
        };
    const QList<Protocol::TreeNode> windows = Agent::objectTree(&host()->application());
    ASSERT_EQ(windows.size(), 1);
    compare(windows.first(), QtWrapper::wrapAndRegisterQObject(root()));
    EXPECT_GT(count, 25);
}

TEST_F(FormCommands, SettleWaitsUntilNothingIsDrawnAnyMore)
{
    EXPECT_TRUE(ask("settle", json(R"({"timeout": 20000})")).value(QStringLiteral("settled")).toBool());
    window()->hide();
    EXPECT_FALSE(ask("settle", json(R"({"timeout": 300})")).value(QStringLiteral("settled")).toBool());
    EXPECT_EQ(failureOf("settle", json(R"({"timeout": -1})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, FunctionsAreListedWithTheirOverloads)
{
    const QJsonArray functions = ask("functions").value(QStringLiteral("functions")).toArray();
    QStringList names;
    for (const QJsonValue &value : functions) {
        const auto function = Protocol::FunctionDescription::fromJson(value.toObject());
        ASSERT_TRUE(function);
        EXPECT_FALSE(names.contains(function->name));
        names.append(function->name);
        if (function->name == QLatin1String("type")) {
            ASSERT_GE(function->overloads.size(), 1);
            EXPECT_EQ(function->overloads.first().arguments.first().name, QStringLiteral("objectName"));
            EXPECT_EQ(function->overloads.first().arguments.at(1).type, QStringLiteral("QString"));
            EXPECT_EQ(function->overloads.first().result, QStringLiteral("void"));
        }
    }
    EXPECT_TRUE(names.contains(QStringLiteral("type")));
    EXPECT_TRUE(names.contains(QStringLiteral("grabWidget")));
}

TEST_F(FormCommands, GrabTakesAPictureOfTheWindowOrAnItem)
{
    const auto pictureIn = [](const QJsonObject &result) {
        QImage image;
        image.loadFromData(QByteArray::fromBase64(result.value(QStringLiteral("png")).toString().toLatin1()), "PNG");
        EXPECT_EQ(image.width(), result.value(QStringLiteral("width")).toInt());
        EXPECT_EQ(image.height(), result.value(QStringLiteral("height")).toInt());
        EXPECT_GT(result.value(QStringLiteral("ratio")).toDouble(), 0);
        return image.size();
    };
    EXPECT_EQ(pictureIn(ask("grab")), QSize(300, 200));
    EXPECT_EQ(pictureIn(ask("grab", json(R"({"name": "Window#form #twin"})"))), QSize(50, 40));
    const int form = handleOf("Window#form");
    EXPECT_EQ(ask("grab").value(QStringLiteral("window")).toInt(), form);
    EXPECT_FALSE(ask("grab", json(R"({"name": "Window#form #twin"})")).contains(QStringLiteral("window")));
    const QJsonObject around = ask("grab", json(R"({"name": "Window#form #twin", "window": true})"));
    EXPECT_EQ(pictureIn(around), QSize(300, 200));
    EXPECT_EQ(around.value(QStringLiteral("window")).toInt(), form);
    EXPECT_EQ(pictureIn(ask("grab", json(R"({"name": "Window#form", "window": true})"))), QSize(300, 200));
    window()->hide();
    EXPECT_EQ(failureOf("grab").code, Protocol::FunctionFailed);
    EXPECT_EQ(failureOf("grab", json(R"({"name": "Window#form"})")).code, Protocol::FunctionFailed);
}

TEST_F(CommandScene, QuittingLeavesTheExitCodeOfAProgramThatEndsByItself)
{
    std::shared_ptr<std::optional<Reply>> reply;
    QMetaObject::invokeMethod(
        qApp,
        [&] {
            QCoreApplication::exit(7);
            reply = post("quit");
            EXPECT_TRUE(waitUntil([&] { return reply->has_value(); }));
        },
        Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 7);
    ASSERT_TRUE(reply && reply->has_value() && (*reply)->isError());
    EXPECT_EQ((*reply)->error->code, Protocol::ProgramEnds);
}

TEST_F(CommandScene, QuittingEndsTheEventLoop)
{
    std::shared_ptr<std::optional<Reply>> reply;
    QMetaObject::invokeMethod(
        qApp, [&] { reply = post("quit"); }, Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
}

TEST_F(CommandScene, AProgramWithoutWindowsHasNothingToShow)
{
    EXPECT_TRUE(ask("tree").value(QStringLiteral("windows")).toArray().isEmpty());
    EXPECT_TRUE(ask("children").value(QStringLiteral("objects")).toArray().isEmpty());
    EXPECT_EQ(failureOf("grab").code, Protocol::FunctionFailed);
    EXPECT_EQ(failureOf("find", json(R"({"name": "Window"})")).code, Protocol::ObjectNotFound);
}
