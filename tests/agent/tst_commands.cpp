#include "commandscene.h"

#include "agent/objecttree.h"
#include "hook/inspector.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QFile>
#include <QtCore/QPointer>

#include <functional>

using namespace Vantle;
using namespace VantleTest;

namespace {

constexpr char Form[] = R"qml(
    import QtQuick
    Window {
        id: form
        title: "Form"
        width: 300; height: 200; visible: true
        property int count: 3
        property var anything: ({ list: [1, "two", null], item: save })
        property color tint: "#80ff0000"
        property date day: new Date(2024, 0, 2, 3, 4, 5)
        readonly property int fixed: 7
        function add(a, b) { return a + b }
        function typed(a: int): string { return "n" + a }
        function boom() { throw new Error("kaputt") }
        function failure() { return new Error("returned") }
        function echo(value) { return value }
        Rectangle {
            id: save; objectName: "save"
            property string text: "Save"
            width: 100; height: 40
            Text { objectName: "label"; text: "Save" }
        }
        Rectangle { id: twin; x: 100; width: 50; height: 40 }
        Rectangle { x: 150; width: 50; height: 40 }
        Rectangle { x: 200; width: 50; height: 40 }
        Item { objectName: "hidden"; visible: false; width: 10; height: 10 }
    }
)qml";

class FormCommands : public CommandScene
{
protected:
    void SetUp() override
    {
        CommandScene::SetUp();
        load(Form);
    }

    QJsonValue propertyOf(const char *target, const char *name)
    {
        const QJsonObject result = ask("properties",
                                       {{QStringLiteral("name"), QString::fromUtf8(target)},
                                        {QStringLiteral("names"), QJsonArray{QString::fromUtf8(name)}}});
        return result.value(QStringLiteral("properties")).toObject().value(QLatin1String(name));
    }
    Reply call(const char *method, const QJsonArray &arguments)
    {
        return answerTo("invoke",
                        {{QStringLiteral("name"), QStringLiteral("WindowQmlImpl#form")},
                         {QStringLiteral("method"), QString::fromUtf8(method)},
                         {QStringLiteral("arguments"), arguments}});
    }
    QJsonValue resultOf(const char *method, const QJsonArray &arguments)
    {
        const Reply reply = call(method, arguments);
        EXPECT_FALSE(reply.isError()) << method << ": "
                                      << qPrintable(reply.isError() ? reply.error->message : QString());
        return reply.result.toObject().value(QStringLiteral("result"));
    }
};

} // namespace

TEST_F(FormCommands, FindGivesOneHandleForOneObject)
{
    const QJsonObject found = ask("find", json(R"({"name": "WindowQmlImpl#form Rectangle#save"})"));
    const auto reference = Protocol::ObjectReference::fromJson(found);
    ASSERT_TRUE(reference);
    EXPECT_TRUE(reference->className.startsWith(QStringLiteral("QQuickRectangle")));
    EXPECT_EQ(reference->name, QStringLiteral("WindowQmlImpl#form Rectangle#save[objectName=\"save\"]:visible"));
    EXPECT_EQ(handleOf("WindowQmlImpl#form [objectName=\"save\"]"), reference->object);
    EXPECT_NE(handleOf("WindowQmlImpl#form #twin"), reference->object);
}

TEST_F(FormCommands, NamesAreLeftOutOnDemand)
{
    const auto isNamed = [](const QJsonValue &reference) {
        return reference.toObject().contains(QStringLiteral("name"));
    };
    for (const bool named : {true, false}) {
        const auto asking = [named](QJsonObject params) {
            params.insert(QStringLiteral("named"), named);
            return params;
        };
        const QJsonObject found = ask("find", asking(json(R"({"name": "WindowQmlImpl#form Rectangle#save"})")));
        EXPECT_TRUE(found.contains(QStringLiteral("object")));
        EXPECT_EQ(isNamed(found), named);
        const QJsonArray children = ask("children", asking({})).value(QStringLiteral("objects")).toArray();
        ASSERT_FALSE(children.isEmpty());
        EXPECT_EQ(isNamed(children.first()), named);
        const QJsonObject properties = ask("properties",
                                           asking(
                                               json(R"({"name": "WindowQmlImpl#form #save", "names": ["parent"]})")));
        EXPECT_EQ(isNamed(properties), named);
        EXPECT_EQ(isNamed(properties.value(QStringLiteral("properties")).toObject().value(QStringLiteral("parent"))),
                  named);
    }
    EXPECT_EQ(failureOf("find", json(R"({"name": "WindowQmlImpl#form", "named": 1})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, FindSaysHowCloseItCame)
{
    const Protocol::Error error = failureOf("find", json(R"({"name": "WindowQmlImpl#form Rectangle#sav:visible"})"));
    EXPECT_EQ(error.code, Protocol::ObjectNotFound);
    const auto data = Protocol::NotFound::fromJson(error.data.toObject());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->lookedFor, QStringLiteral("WindowQmlImpl#form Rectangle#sav:visible"));
    EXPECT_TRUE(data->reason.contains(QStringLiteral("id"))) << qPrintable(data->reason);
    ASSERT_EQ(data->candidates.size(), 5);
    const Protocol::Candidate best = data->candidates.first();
    EXPECT_EQ(best.name, QStringLiteral("WindowQmlImpl#form Rectangle#save[objectName=\"save\"]:visible"));
    ASSERT_EQ(best.differences.size(), 1);
    EXPECT_EQ(best.differences.first().key, QStringLiteral("id"));
    EXPECT_EQ(best.differences.first().expected, QStringLiteral("\"sav\""));
    EXPECT_EQ(best.differences.first().found, QStringLiteral("\"save\""));
}

TEST_F(FormCommands, FindNamesTheInvisibleItemThatWasToBeVisible)
{
    const auto data = Protocol::NotFound::fromJson(
        failureOf("find", json(R"({"name": "WindowQmlImpl#form Item[objectName=\"hidden\"]:visible"})"))
            .data.toObject());
    ASSERT_TRUE(data && !data->candidates.isEmpty());
    ASSERT_EQ(data->candidates.first().differences.size(), 1);
    EXPECT_EQ(data->candidates.first().differences.first().key, QStringLiteral("visible"));
    EXPECT_EQ(data->candidates.first().differences.first().found, QStringLiteral("\"false\""));
}

TEST_F(FormCommands, FindNamesTheLastOfTooFew)
{
    const auto data = Protocol::NotFound::fromJson(
        failureOf("find", json(R"-({"name": "WindowQmlImpl#form Rectangle:nth(9)"})-")).data.toObject());
    ASSERT_TRUE(data && !data->candidates.isEmpty());
    ASSERT_EQ(data->candidates.first().differences.size(), 1);
    EXPECT_EQ(data->candidates.first().differences.first().key, QStringLiteral("occurrence"));
    EXPECT_EQ(data->candidates.first().differences.first().expected, QStringLiteral("\"9\""));
}

TEST_F(FormCommands, FindLooksForTheContainerWhereThatIsMissing)
{
    const auto data = Protocol::NotFound::fromJson(
        failureOf("find", json(R"({"name": "WindowQmlImpl#from Rectangle#save"})")).data.toObject());
    ASSERT_TRUE(data && !data->candidates.isEmpty());
    EXPECT_EQ(data->candidates.first().name, QStringLiteral("WindowQmlImpl#form"));
    EXPECT_EQ(failureOf("find", json(R"({"name": "Window ["})")).code, Protocol::ObjectNotFound);
    EXPECT_EQ(failureOf("find", json(R"({"name": ""})")).code, Protocol::ObjectNotFound);
}

TEST_F(FormCommands, FindWaitsUntilTheObjectIsThere)
{
    const auto reply = post("find", json(R"({"name": "WindowQmlImpl#form Rectangle#late", "timeout": 20000})"));
    const auto hopeless = post("find", json(R"({"name": "WindowQmlImpl#form Rectangle#never", "timeout": 50})"));
    ASSERT_TRUE(waitUntil([&] { return hopeless->has_value(); }));
    EXPECT_EQ((*hopeless)->error->code, Protocol::ObjectNotFound);
    EXPECT_FALSE(reply->has_value());
    find("hidden")->setObjectName(QStringLiteral("other"));
    QQmlComponent late(qmlEngine(root()));
    late.setData("import QtQuick\nRectangle { id: late }", {});
    const std::unique_ptr<QObject> item(late.create());
    qobject_cast<QQuickItem *>(item.get())->setParentItem(window()->contentItem());
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
}

TEST_F(FormCommands, FindMayWaitForReadiness)
{
    EXPECT_FALSE(ask("find", json(R"({"name": "WindowQmlImpl#form [objectName=\"hidden\"]"})")).isEmpty());
    const QJsonObject ready = json(
        R"({"name": "WindowQmlImpl#form [objectName=\"hidden\"]", "ready": true, "timeout": 30})");
    const Protocol::Error error = failureOf("find", ready);
    EXPECT_EQ(error.code, Protocol::ObjectNotReady);
    const auto data = Protocol::NotReady::fromJson(error.data.toObject());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->reason, QStringLiteral("the item is not visible"));
    find("hidden")->setVisible(true);
    EXPECT_FALSE(answerTo("find", ready).isError());
}

TEST_F(FormCommands, HandlesOfTheDeadAndUnknownOnesAreErrors)
{
    const int handle = handleOf("WindowQmlImpl#form #save");
    const QJsonObject target{{QStringLiteral("object"), handle}};
    EXPECT_EQ(ask("describe", target).value(QStringLiteral("visible")), QJsonValue(true));
    delete find("save");
    for (const char *method : {"describe", "properties", "children"})
        EXPECT_EQ(failureOf(method, target).code, Protocol::ObjectGone) << method;
    EXPECT_EQ(failureOf("describe", json(R"({"object": 4711})")).code, Protocol::ObjectGone);
    EXPECT_EQ(failureOf("describe", json(R"({"object": 0})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, ReleasedHandlesAreForgotten)
{
    const int handle = handleOf("WindowQmlImpl#form #save");
    ask("release", {{QStringLiteral("objects"), QJsonArray{handle, 4711}}});
    EXPECT_EQ(failureOf("describe", {{QStringLiteral("object"), handle}}).code, Protocol::ObjectGone);
    EXPECT_NE(handleOf("WindowQmlImpl#form #save"), handle);
    EXPECT_EQ(failureOf("release", json(R"({"objects": ["a"]})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, TargetsAreEitherHandlesOrNames)
{
    EXPECT_EQ(failureOf("describe").code, Protocol::InvalidParams);
    EXPECT_EQ(failureOf("describe", json(R"({"object": 1, "name": "Window"})")).code, Protocol::InvalidParams);
    EXPECT_EQ(failureOf("describe", json(R"({"name": 1})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, PropertiesComeInTheirOwnTypes)
{
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "count"), QJsonValue(3));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "title"), QJsonValue(QStringLiteral("Form")));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "visible"), QJsonValue(true));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "tint"), QJsonValue(json(R"({"type": "QColor", "text": "#80ff0000"})")));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "day"),
              QJsonValue(json(R"({"type": "QDateTime", "text": "2024-01-02T03:04:05.000"})")));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form #save", "children").toArray().size(), 1);
    EXPECT_EQ(propertyOf("WindowQmlImpl#form #save [objectName=\"label\"]", "font.bold"), QJsonValue(false));
}

TEST_F(FormCommands, ValuesWithMembersSaySo)
{
    const char *const label = "WindowQmlImpl#form #save [objectName=\"label\"]";
    const QJsonObject font = propertyOf(label, "font").toObject();
    EXPECT_EQ(font.value(QStringLiteral("type")), QStringLiteral("QFont"));
    EXPECT_EQ(font.value(QStringLiteral("members")), QJsonValue(true));
    EXPECT_FALSE(propertyOf("WindowQmlImpl#form", "tint").toObject().contains(QStringLiteral("members")));
}

TEST_F(FormCommands, ScriptValuesAreLookedInto)
{
    const QJsonObject anything = propertyOf("WindowQmlImpl#form", "anything").toObject();
    EXPECT_EQ(anything.value(QStringLiteral("type")), QStringLiteral("map"));
    const QJsonObject members = anything.value(QStringLiteral("value")).toObject();
    EXPECT_EQ(members.value(QStringLiteral("list")),
              QJsonValue(QJsonArray{1, QStringLiteral("two"), QJsonValue::Null}));
    EXPECT_EQ(members.value(QStringLiteral("item")).toObject().value(QStringLiteral("object")).toInt(),
              handleOf("WindowQmlImpl#form #save"));
}

TEST_F(FormCommands, AllReadablePropertiesComeWithoutNames)
{
    const QJsonObject result = ask("properties", json(R"({"name": "WindowQmlImpl#form #save"})"));
    const QJsonObject values = result.value(QStringLiteral("properties")).toObject();
    EXPECT_EQ(values.value(QStringLiteral("text")), QJsonValue(QStringLiteral("Save")));
    EXPECT_EQ(values.value(QStringLiteral("width")), QJsonValue(100));
    EXPECT_TRUE(values.contains(QStringLiteral("objectName")));
}

TEST_F(FormCommands, MethodsAreNamedWhereAPropertyIsAskedFor)
{
    EXPECT_EQ(propertyOf("WindowQmlImpl#form #save", "forceActiveFocus"),
              QJsonValue(json(R"({"type": "method", "text": "forceActiveFocus"})")));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "requestActivate"),
              QJsonValue(json(R"({"type": "method", "text": "requestActivate"})")));
}

TEST_F(FormCommands, UnknownPropertiesAreErrorsThatSayWhich)
{
    const Protocol::Error error = failureOf("properties",
                                            json(R"({"name": "WindowQmlImpl#form", "names": ["cuont"]})"));
    EXPECT_EQ(error.code, Protocol::InvalidParams);
    EXPECT_TRUE(error.message.contains(QStringLiteral("cuont"))) << qPrintable(error.message);
}

TEST_F(FormCommands, PropertiesCanBeSet)
{
    ask("setProperty", json(R"({"name": "WindowQmlImpl#form", "property": "count", "value": 8})"));
    EXPECT_EQ(root()->property("count").toInt(), 8);
    ask("setProperty", json(R"({"name": "WindowQmlImpl#form #save", "property": "color", "value": "#00ff00"})"));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form #save", "color").toObject().value(QStringLiteral("text")),
              QStringLiteral("#ff00ff00"));
    ask("setProperty",
        json(
            R"({"name": "WindowQmlImpl#form", "property": "anything", "value": {"type": "map", "value": {"a": [1]}}})"));
    EXPECT_EQ(propertyOf("WindowQmlImpl#form", "anything"),
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
        reason(R"({"name": "WindowQmlImpl#form", "property": "cuont", "value": 1})").contains(QStringLiteral("cuont")));
    EXPECT_TRUE(
        reason(R"({"name": "WindowQmlImpl#form", "property": "fixed", "value": 1})").contains(QStringLiteral("read")));
    EXPECT_TRUE(
        reason(R"({"name": "WindowQmlImpl#form", "property": "count", "value": "x"})").contains(QStringLiteral("int")));
    EXPECT_TRUE(reason(R"({"name": "WindowQmlImpl#form", "property": "count"})").contains(QStringLiteral("value")));
    EXPECT_TRUE(
        reason(R"({"name": "WindowQmlImpl#form", "property": "count", "value": {"type": "Nonsense", "text": ""}})")
            .contains(QStringLiteral("Nonsense")));
    EXPECT_TRUE(reason(R"({"name": "WindowQmlImpl#form", "property": "count", "value": {"object": 999}})")
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
    const int handle = handleOf("WindowQmlImpl#form #save");
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
    EXPECT_EQ(windows.first().toObject().value(QStringLiteral("name")), QStringLiteral("WindowQmlImpl#form"));
    const QJsonArray items =
        ask("children", json(R"({"name": "WindowQmlImpl#form"})")).value(QStringLiteral("objects")).toArray();
    EXPECT_EQ(items.size(), 5);
}

TEST_F(FormCommands, DescribeGivesScreenCoordinates)
{
    const auto description = Protocol::Description::fromJson(
        ask("describe", json(R"({"name": "WindowQmlImpl#form #twin"})")));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->geometry, QRect(window()->position() + QPoint(100, 0), QSize(50, 40)));
    EXPECT_TRUE(description->visible && description->enabled);
    EXPECT_EQ(description->notReady, QString());
    find("hidden")->setEnabled(false);
    const auto hidden = Protocol::Description::fromJson(
        ask("describe", json(R"({"name": "WindowQmlImpl#form [objectName=\"hidden\"]"})")));
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
    EXPECT_EQ(tree->type, QStringLiteral("WindowQmlImpl"));
    EXPECT_EQ(tree->id, QStringLiteral("form"));
    ASSERT_EQ(tree->children.size(), 5);
    EXPECT_EQ(tree->children.at(0).children.first().name,
              QStringLiteral("WindowQmlImpl#form Text[objectName=\"label\"]:visible"));
    EXPECT_EQ(tree->children.at(3).name, QStringLiteral("WindowQmlImpl#form Rectangle:visible:nth(4)"));
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
    EXPECT_EQ(pictureIn(ask("grab", json(R"({"name": "WindowQmlImpl#form #twin"})"))), QSize(50, 40));
    const int form = handleOf("WindowQmlImpl#form");
    EXPECT_EQ(ask("grab").value(QStringLiteral("window")).toInt(), form);
    EXPECT_FALSE(ask("grab", json(R"({"name": "WindowQmlImpl#form #twin"})")).contains(QStringLiteral("window")));
    const QJsonObject around = ask("grab", json(R"({"name": "WindowQmlImpl#form #twin", "window": true})"));
    EXPECT_EQ(pictureIn(around), QSize(300, 200));
    EXPECT_EQ(around.value(QStringLiteral("window")).toInt(), form);
    EXPECT_EQ(pictureIn(ask("grab", json(R"({"name": "WindowQmlImpl#form", "window": true})"))), QSize(300, 200));
    window()->hide();
    EXPECT_EQ(failureOf("grab").code, Protocol::FunctionFailed);
    EXPECT_EQ(failureOf("grab", json(R"({"name": "WindowQmlImpl#form"})")).code, Protocol::FunctionFailed);
}

TEST_F(FormCommands, RoundTripFindsEverything)
{
    const QJsonObject result = ask("roundTrip");
    EXPECT_EQ(result.value(QStringLiteral("items")).toInt(), 8) << "the window, its content item, and six items";
    EXPECT_TRUE(result.value(QStringLiteral("failures")).toArray().isEmpty());
}

TEST_F(FormCommands, UnknownMethodsStayUnknown)
{
    EXPECT_EQ(failureOf("fly").code, Protocol::MethodNotFound);
}

TEST_F(FormCommands, PendingRequestsSurviveTheEndOfTheConnection)
{
    const auto reply = post("find", json(R"({"name": "WindowQmlImpl#form #never", "timeout": 20000})"));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    toolEnd()->close();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && !agentEnd()->isOpen(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::Disconnected);
}

TEST_F(FormCommands, TheConnectionMayEndInsideAnEventLoopThatARequestHasOpened)
{
    bool hasEnded = false;
    QObject::connect(window(), &QWindow::windowTitleChanged, window(), [&] {
        toolEnd()->close();
        hasEnded = waitUntil([&] { return !agentEnd()->isOpen(); });
    });
    const auto reply = post("setProperty",
                            json(R"({"name": "WindowQmlImpl#form", "property": "title", "value": "New"})"));
    ASSERT_TRUE(waitUntil([&] { return hasEnded; }));
    EXPECT_EQ(window()->title(), QStringLiteral("New"));
    ASSERT_TRUE(reply->has_value());
    EXPECT_EQ((*reply)->error->code, Protocol::Disconnected);
}

TEST_F(FormCommands, TheAgentMayGoInsideAnEventLoopThatARequestHasOpened)
{
    bool isGone = false;
    QObject::connect(window(), &QWindow::windowTitleChanged, window(), [&] {
        const auto inner = post("children");
        isGone = waitUntil([&] { return inner->has_value(); });
        endAgent();
    });
    const auto reply = post("setProperty",
                            json(R"({"name": "WindowQmlImpl#form", "property": "title", "value": "New"})"));
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_TRUE(isGone);
    EXPECT_FALSE((*reply)->isError());
}

TEST_F(FormCommands, WrongValuesAreRefusedInEveryField)
{
    const struct
    {
        const char *method;
        const char *params;
    } cases[] = {
        {"find", R"({"name": 7})"},
        {"find", R"({"name": "a", "timeout": "soon"})"},
        {"find", R"({"name": "a", "timeout": -1})"},
        {"find", R"({"name": "a", "timeout": 1e300})"},
        {"find", R"({"name": "a", "timeout": 2147483648})"},
        {"find", R"({"name": "a", "ready": 1})"},
        {"children", R"({"name": []})"},
        {"describe", R"({"object": 4294967297})"},
        {"describe", R"({"object": 0})"},
        {"describe", R"({"object": "1"})"},
        {"properties", R"({"name": "a", "names": "b"})"},
        {"properties", R"({"name": "a", "names": [1]})"},
        {"setProperty", R"({"name": "a", "property": 1, "value": 1})"},
        {"setProperty", R"({"name": "a", "property": "b"})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": "QObject*", "text": "1"}})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": "void", "text": ""}})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": {}, "text": []}})"},
        {"invoke", R"({"name": "a", "method": null})"},
        {"invoke", R"({"name": "a", "method": "b", "arguments": {}})"},
        {"call", R"({"function": 1})"},
        {"call", R"({"function": "mouseClick", "arguments": "a"})"},
        {"call", R"({"function": "mouseClick", "arguments": [[1]]})"},
        {"call", R"({"function": "mouseClick", "arguments": [{"object": {}}]})"},
        {"call", R"({"function": "mouseClick", "timeout": []})"},
        {"grab", R"({"object": null})"},
        {"settle", R"({"timeout": {}})"},
        {"release", R"({})"},
        {"release", R"({"objects": ["1"]})"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(failureOf(c.method, json(c.params)).code, Protocol::InvalidParams) << c.method << c.params;
    EXPECT_EQ(ask("children").value(QStringLiteral("objects")).toArray().size(), 1);
}

TEST_F(FormCommands, PendingRequestsAreAnsweredWhenTheCommandsGo)
{
    const auto reply = post("find", json(R"({"name": "WindowQmlImpl#form #never", "timeout": 20000})"));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    endAgent();
    const auto late = post("children");
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && late->has_value(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::InternalError);
    EXPECT_TRUE((*late)->isError());
}

TEST_F(CommandScene, AliasesOfTheNamesFileLeadToObjects)
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("names.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"saveButton": "WindowQmlImpl#form Rectangle#save"})");
    file.close();
    Protocol::HelloResult settings;
    settings.namesFile = file.fileName();
    startAgent(settings);
    load(Form);
    const QJsonObject byAlias = ask("find", json(R"({"name": "@saveButton"})"));
    EXPECT_EQ(byAlias.value(QStringLiteral("object")).toInt(), handleOf("WindowQmlImpl#form #save"));
    EXPECT_EQ(failureOf("find", json(R"({"name": "@other"})")).code, Protocol::ObjectNotFound);
}

TEST_F(CommandScene, ANamesFileThatCannotBeReadIsReportedAndThenIgnored)
{
    QStringList logged;
    toolEnd()->onNotification(Protocol::Method::log, [&](const QJsonObject &params) {
        const auto log = Protocol::LogMessage::fromJson(params);
        ASSERT_TRUE(log);
        EXPECT_EQ(log->level, Protocol::LogMessage::Warning);
        logged.append(log->message);
    });
    Protocol::HelloResult settings;
    settings.namesFile = QStringLiteral("/nowhere/names.json");
    startAgent(settings);
    load(Form);
    EXPECT_NE(handleOf("WindowQmlImpl#form #save"), 0);
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(logged.first().contains(QStringLiteral("/nowhere/names.json"))) << qPrintable(logged.first());
}

TEST_F(CommandScene, AProgramWithoutWindowsHasNothingToShow)
{
    EXPECT_TRUE(ask("tree").value(QStringLiteral("windows")).toArray().isEmpty());
    EXPECT_TRUE(ask("children").value(QStringLiteral("objects")).toArray().isEmpty());
    EXPECT_EQ(failureOf("grab").code, Protocol::FunctionFailed);
    EXPECT_EQ(failureOf("find", json(R"({"name": "Window"})")).code, Protocol::ObjectNotFound);
}
