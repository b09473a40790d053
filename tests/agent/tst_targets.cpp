#include "formcommands.h"

#include <QtCore/QFile>

using namespace Vantle;
using namespace VantleTest;

TEST_F(FormCommands, FindGivesOneHandleForOneObject)
{
    const QJsonObject found = ask("find", json(R"({"name": "Window#form Rectangle#save"})"));
    const auto reference = Protocol::ObjectReference::fromJson(found);
    ASSERT_TRUE(reference);
    EXPECT_TRUE(reference->className.startsWith(QStringLiteral("QQuickRectangle")));
    EXPECT_EQ(reference->name, QStringLiteral("Window#form Rectangle[objectName=\"save\"]:visible"));
    EXPECT_EQ(handleOf("Window#form [objectName=\"save\"]"), reference->object);
    EXPECT_NE(handleOf("Window#form #twin"), reference->object);
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
        const QJsonObject found = ask("find", asking(json(R"({"name": "Window#form Rectangle#save"})")));
        EXPECT_TRUE(found.contains(QStringLiteral("object")));
        EXPECT_EQ(isNamed(found), named);
        const QJsonArray children = ask("children", asking({})).value(QStringLiteral("objects")).toArray();
        ASSERT_FALSE(children.isEmpty());
        EXPECT_EQ(isNamed(children.first()), named);
        const QJsonObject properties = ask("properties",
                                           asking(
                                               json(R"({"name": "Window#form #save", "names": ["parent"]})")));
        EXPECT_EQ(isNamed(properties), named);
        EXPECT_EQ(isNamed(properties.value(QStringLiteral("properties")).toObject().value(QStringLiteral("parent"))),
                  named);
    }
    EXPECT_EQ(failureOf("find", json(R"({"name": "Window#form", "named": 1})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, FindSaysHowCloseItCame)
{
    const Protocol::Error error = failureOf("find", json(R"({"name": "Window#form Rectangle#sav:visible"})"));
    EXPECT_EQ(error.code, Protocol::ObjectNotFound);
    const auto data = Protocol::NotFound::fromJson(error.data.toObject());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->lookedFor, QStringLiteral("Window#form Rectangle#sav:visible"));
    EXPECT_TRUE(data->reason.contains(QStringLiteral("id"))) << qPrintable(data->reason);
    ASSERT_EQ(data->candidates.size(), 5);
    const Protocol::Candidate best = data->candidates.first();
    EXPECT_EQ(best.name, QStringLiteral("Window#form Rectangle[objectName=\"save\"]:visible"));
    ASSERT_EQ(best.differences.size(), 1);
    EXPECT_EQ(best.differences.first().key, QStringLiteral("id"));
    EXPECT_EQ(best.differences.first().expected, QStringLiteral("\"sav\""));
    EXPECT_EQ(best.differences.first().found, QStringLiteral("\"save\""));
}

TEST_F(FormCommands, FindNamesTheInvisibleItemThatWasToBeVisible)
{
    const auto data = Protocol::NotFound::fromJson(
        failureOf("find", json(R"({"name": "Window#form Item[objectName=\"hidden\"]:visible"})"))
            .data.toObject());
    ASSERT_TRUE(data && !data->candidates.isEmpty());
    ASSERT_EQ(data->candidates.first().differences.size(), 1);
    EXPECT_EQ(data->candidates.first().differences.first().key, QStringLiteral("visible"));
    EXPECT_EQ(data->candidates.first().differences.first().found, QStringLiteral("\"false\""));
}

TEST_F(FormCommands, FindNamesTheLastOfTooFew)
{
    const auto data = Protocol::NotFound::fromJson(
        failureOf("find", json(R"-({"name": "Window#form Rectangle:nth(9)"})-")).data.toObject());
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
    EXPECT_EQ(data->candidates.first().name, QStringLiteral("Window#form"));
    EXPECT_EQ(failureOf("find", json(R"({"name": "Window ["})")).code, Protocol::ObjectNotFound);
    EXPECT_EQ(failureOf("find", json(R"({"name": ""})")).code, Protocol::ObjectNotFound);
}

TEST_F(FormCommands, FindWaitsUntilTheObjectIsThere)
{
    const auto reply = post("find", json(R"({"name": "Window#form Rectangle#late", "timeout": 20000})"));
    const auto hopeless = post("find", json(R"({"name": "Window#form Rectangle#never", "timeout": 50})"));
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
    EXPECT_FALSE(ask("find", json(R"({"name": "Window#form [objectName=\"hidden\"]"})")).isEmpty());
    const QJsonObject ready = json(
        R"({"name": "Window#form [objectName=\"hidden\"]", "ready": true, "timeout": 30})");
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
    const int handle = handleOf("Window#form #save");
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
    const int handle = handleOf("Window#form #save");
    ask("release", {{QStringLiteral("objects"), QJsonArray{handle, 4711}}});
    EXPECT_EQ(failureOf("describe", {{QStringLiteral("object"), handle}}).code, Protocol::ObjectGone);
    EXPECT_NE(handleOf("Window#form #save"), handle);
    EXPECT_EQ(failureOf("release", json(R"({"objects": ["a"]})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, TargetsAreEitherHandlesOrNames)
{
    EXPECT_EQ(failureOf("describe").code, Protocol::InvalidParams);
    EXPECT_EQ(failureOf("describe", json(R"({"object": 1, "name": "Window"})")).code, Protocol::InvalidParams);
    EXPECT_EQ(failureOf("describe", json(R"({"name": 1})")).code, Protocol::InvalidParams);
}

TEST_F(FormCommands, RoundTripFindsEverything)
{
    const QJsonObject result = ask("roundTrip");
    EXPECT_EQ(result.value(QStringLiteral("items")).toInt(), 8) << "the window, its content item, and six items";
    EXPECT_TRUE(result.value(QStringLiteral("failures")).toArray().isEmpty());
}

TEST_F(CommandScene, AliasesOfTheNamesFileLeadToObjects)
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("names.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"saveButton": "Window#form Rectangle#save"})");
    file.close();
    Protocol::HelloResult settings;
    settings.namesFile = file.fileName();
    startAgent(settings);
    load(form);
    const QJsonObject byAlias = ask("find", json(R"({"name": "@saveButton"})"));
    EXPECT_EQ(byAlias.value(QStringLiteral("object")).toInt(), handleOf("Window#form #save"));
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
    load(form);
    EXPECT_NE(handleOf("Window#form #save"), 0);
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(logged.first().contains(QStringLiteral("/nowhere/names.json"))) << qPrintable(logged.first());
}

TEST_F(FormCommands, AnItemIsFoundWithoutItsWindow)
{
    EXPECT_EQ(handleOf("Rectangle#save"), handleOf("WindowQmlImpl#form Rectangle#save"));
    EXPECT_EQ(handleOf("Rectangle:nth(2)"), handleOf("WindowQmlImpl#form #twin"));
    EXPECT_EQ(handleOf("Rectangle#save [objectName=\"label\"]"), handleOf("WindowQmlImpl#form [objectName=\"label\"]"));
    const Protocol::Error error = failureOf("find", json(R"({"name": "Rectangle#nowhere"})"));
    EXPECT_EQ(error.code, Protocol::ObjectNotFound);
    EXPECT_TRUE(error.message.contains(QStringLiteral("nothing of that name in any window")))
        << qPrintable(error.message);
}

TEST_F(CommandScene, OccurrencesCountOnThroughTheWindowsThatShowFirst)
{
    load(R"qml(
        import QtQuick
        Window {
            id: first; width: 100; height: 100
            Rectangle { objectName: "a" }
            property Window second: Window {
                id: second; width: 100; height: 100; visible: true
                Rectangle { objectName: "b" }
                Rectangle { objectName: "c" }
            }
        })qml");
    const auto nameOf = [this](const char *name) {
        const QJsonObject found = ask("properties",
                                      {{QStringLiteral("name"), QString::fromUtf8(name)},
                                       {QStringLiteral("names"), QJsonArray{QStringLiteral("objectName")}}});
        return found.value(QStringLiteral("properties")).toObject().value(QStringLiteral("objectName")).toString();
    };
    EXPECT_EQ(nameOf("Rectangle"), QStringLiteral("b"));
    EXPECT_EQ(nameOf("Rectangle:nth(2)"), QStringLiteral("c"));
    EXPECT_EQ(nameOf("Rectangle:nth(3)"), QStringLiteral("a"));
    EXPECT_EQ(failureOf("find", json(R"-({"name": "Rectangle:nth(4)"})-")).code, Protocol::ObjectNotFound);
}

TEST_F(CommandScene, WhatIsHiddenComesFirstAndThenWhatIsInAnotherWindow)
{
    load(R"qml(
        import QtQuick
        QtObject {
            property Window first: Window {
                id: first; width: 100; height: 100; visible: true
                Rectangle { objectName: "oh" }
                Rectangle { objectName: "ok"; visible: false }
            }
            property Window second: Window {
                id: second; width: 100; height: 100; visible: true
                Rectangle { objectName: "ok" }
                Rectangle { objectName: "far" }
            }
        })qml");
    const auto failure = [this](const char *name) {
        return failureOf("find", {{QStringLiteral("name"), QString::fromUtf8(name)}});
    };
    const Protocol::Error hidden = failure("WindowQmlImpl#first Rectangle[objectName=\"ok\"]:visible");
    const auto data = Protocol::NotFound::fromJson(hidden.data.toObject());
    ASSERT_TRUE(data && data->candidates.size() >= 2);
    EXPECT_EQ(data->reason, QStringLiteral("it is there, but not visible"));
    EXPECT_EQ(data->candidates.at(0).differences.first().key, QStringLiteral("visible"));
    EXPECT_TRUE(data->candidates.at(1).name.contains(QStringLiteral("#second")))
        << qPrintable(data->candidates.at(1).name);
    EXPECT_EQ(data->candidates.at(1).differences.first().key, QStringLiteral("window"));
    const Protocol::Error elsewhere = failure("WindowQmlImpl#first Rectangle[objectName=\"far\"]:visible");
    EXPECT_TRUE(elsewhere.message.contains(QStringLiteral("it is in another window, ")))
        << qPrintable(elsewhere.message);
}

TEST_F(FormCommands, WhatIsInTheWindowButNotInTheContainerIsToldAsThat)
{
    const Protocol::Error error = failureOf(
        "find", json(R"({"name": "WindowQmlImpl#form Rectangle#twin [objectName=\"label\"]"})"));
    EXPECT_TRUE(
        error.message.contains(QStringLiteral(": it is there, but not below \"Window#form Rectangle#twin")))
        << qPrintable(error.message);
}

TEST_F(FormCommands, StrictNamesHaveToFitOneObjectOnly)
{
    Protocol::HelloResult settings;
    settings.strict = true;
    startAgent(settings);
    const Protocol::Error error = failureOf("find", json(R"({"name": "WindowQmlImpl#form Rectangle"})"));
    EXPECT_EQ(error.code, Protocol::AmbiguousName);
    EXPECT_TRUE(error.message.contains(QStringLiteral("Rectangle fits 4 objects"))) << qPrintable(error.message);
    const auto data = Protocol::NotFound::fromJson(error.data.toObject());
    ASSERT_TRUE(data);
    EXPECT_EQ(data->candidates.size(), 4);
    for (const Protocol::Candidate &candidate : data->candidates)
        EXPECT_NE(handleOf(qPrintable(candidate.name)), 0) << qPrintable(candidate.name);
    handleOf("WindowQmlImpl#form Rectangle:nth(3)");
    handleOf("WindowQmlImpl#form Rectangle#save");
    // Also where it is only the way to the object.
    EXPECT_EQ(failureOf("find", json(R"({"name": "Rectangle [objectName=\"label\"]"})")).code, Protocol::AmbiguousName);
    EXPECT_EQ(failureOf("call", json(R"({"function": "mouseClick", "timeout": 0,
                                         "arguments": ["WindowQmlImpl#form Rectangle"]})"))
                  .code,
              Protocol::AmbiguousName);
}

TEST_F(FormCommands, DigestsAreEqualAsLongAsTheSameIsShown)
{
    const auto digest = [this] { return ask("digest").value(QStringLiteral("value")).toString(); };
    const QString first = digest();
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(digest(), first);
    find("save")->setX(30);
    find("save")->setOpacity(0.5);
    EXPECT_EQ(digest(), first);
    find("label")->setProperty("text", QStringLiteral("Saved"));
    const QString changed = digest();
    EXPECT_NE(changed, first);
    find("label")->setProperty("text", QStringLiteral("Save"));
    EXPECT_EQ(digest(), first);
    find("hidden")->setVisible(true);
    EXPECT_NE(digest(), first);
    find("hidden")->setVisible(false);
    find("save")->setEnabled(false);
    EXPECT_NE(digest(), first);
}

TEST_F(FormCommands, ASnapshotHoldsObjectsValuesAndPictures)
{
    const QJsonObject result = ask("snapshot");
    QHash<QString, QJsonObject> values;
    const QJsonArray objects = result.value(QStringLiteral("objects")).toArray();
    for (const QJsonValue &object : objects) {
        values.insert(object.toObject().value(QStringLiteral("name")).toString(),
                      object.toObject().value(QStringLiteral("values")).toObject());
    }
    const QJsonObject save = values.value(
        QStringLiteral("Window#form Rectangle[objectName=\"save\"]:visible"));
    EXPECT_EQ(save.value(QStringLiteral("text")).toString(), QStringLiteral("Save"));
    EXPECT_EQ(save.value(QStringLiteral("width")).toString(), QStringLiteral("100"));
    EXPECT_EQ(save.value(QStringLiteral("enabled")).toString(), QStringLiteral("true"));
    const QJsonObject window = values.value(QStringLiteral("Window#form"));
    EXPECT_EQ(window.value(QStringLiteral("title")).toString(), QStringLiteral("Form"));
    EXPECT_EQ(window.value(QStringLiteral("tint")).toString(), QStringLiteral("#80ff0000"));
    EXPECT_FALSE(window.contains(QStringLiteral("x")));
    EXPECT_FALSE(window.contains(QStringLiteral("active")));
    const QJsonArray windows = result.value(QStringLiteral("windows")).toArray();
    ASSERT_EQ(windows.size(), 1);
    EXPECT_FALSE(windows.first().toObject().value(QStringLiteral("png")).toString().isEmpty());
    EXPECT_EQ(result.value(QStringLiteral("digest")).toObject(), ask("digest"));
}

TEST_F(CommandScene, ASnapshotHoldsNoSecret)
{
    load(R"qml(
        import QtQuick
        Window {
            width: 100; height: 100; visible: true
            TextInput { text: "s3cret"; echoMode: TextInput.Password }
            TextInput { text: "hidden2"; echoMode: TextInput.NoEcho }
            TextInput { text: "plain" }
        })qml");
    const QByteArray text = QJsonDocument(ask("snapshot")).toJson();
    EXPECT_TRUE(text.contains("plain"));
    EXPECT_FALSE(text.contains("s3cret"));
    EXPECT_FALSE(text.contains("hidden2"));
}
