#include "callscene.h"

#include "agent/recording/recordingsession.h"
#include "wrappers/qt/functions/inputplayer.h"

#include <QtQuick/private/qquickwindow_p.h>

using namespace Vantle;
using namespace VantleTest;

namespace {

using ScriptCalls = CallScene;

} // namespace

TEST_F(ScriptCalls, AreAnsweredWhenTheInputWasDelivered)
{
    const QJsonObject result = ask("call", click("ok"));
    EXPECT_EQ(clicks(), 1);
    EXPECT_EQ(result.value(QStringLiteral("result")), QJsonValue());
    const auto action = Protocol::ActionPoint::fromJson(result.value(QStringLiteral("action")).toObject());
    ASSERT_TRUE(action);
    EXPECT_EQ(QPoint(action->x, action->y), QPoint(39, 19));
    EXPECT_EQ(action->window, handleOf("Window#form"));
}

TEST_F(ScriptCalls, ActAtTheGivenPoint)
{
    const QJsonObject result = ask(
        "call",
        request("mouseClick", {QStringLiteral("Window#form #ok"), 7, 9, static_cast<int>(Qt::LeftButton)}));
    EXPECT_EQ(root()->property("where").toString(), QStringLiteral("7,9"));
    const auto action = Protocol::ActionPoint::fromJson(result.value(QStringLiteral("action")).toObject());
    ASSERT_TRUE(action);
    EXPECT_EQ(QPoint(action->x, action->y), QPoint(7, 9));
}

TEST_F(ScriptCalls, TypeIntoWhatTheyName)
{
    ask("call", request("type", {QStringLiteral("Window#form #field"), QStringLiteral("abc")}));
    EXPECT_EQ(find("field")->property("text").toString(), QStringLiteral("abc"));
}

TEST_F(ScriptCalls, TakeHandlesInPlaceOfNames)
{
    const QJsonArray arguments{QJsonObject{{QStringLiteral("object"), handleOf("Window#form #ok")}}};
    ask("call", request("mouseClick", arguments));
    EXPECT_EQ(clicks(), 1);
    delete find("ok");
    EXPECT_EQ(failureOf("call", request("mouseClick", arguments)).code, Protocol::InvalidParams);
}

TEST_F(ScriptCalls, SeveralMayBePending)
{
    find("ok")->setVisible(false);
    const auto first = post("call", click("ok"));
    const auto second = post("call",
                             request("type", {QStringLiteral("Window#form #field"), QStringLiteral("x")}));
    ASSERT_TRUE(waitUntil([&] { return second->has_value(); }));
    EXPECT_FALSE(first->has_value());
    find("ok")->setVisible(true);
    ASSERT_TRUE(waitUntil([&] { return first->has_value(); }));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, GoOnInsideAnEventLoopThatTheInputOpened)
{
    // As a click does that opens a modal dialog.
    bool wasClickedInside = false;
    QObject::connect(window(), &QWindow::windowTitleChanged, window(),
                     [&] { wasClickedInside = waitUntil([&] { return clicks() == 1; }); });
    const auto opening = post("call", click("opener"));
    const auto inside = post("call", click("ok"));
    ASSERT_TRUE(waitUntil([&] { return opening->has_value() && inside->has_value(); }));
    EXPECT_TRUE(wasClickedInside);
    EXPECT_FALSE((*opening)->isError());
    EXPECT_FALSE((*inside)->isError());
}

TEST_F(ScriptCalls, ThatFitNoOverloadFailAtOnce)
{
    const Protocol::Error error = failureOf("call",
                                            request("mouseClick", {QStringLiteral("nothing"), QStringLiteral("there")},
                                                    60000));
    EXPECT_EQ(error.code, Protocol::FunctionFailed);
    EXPECT_TRUE(error.message.contains(QStringLiteral("mouseClick"))) << qPrintable(error.message);
    EXPECT_EQ(failureOf("call", request("fly", {})).code, Protocol::FunctionFailed);
    EXPECT_EQ(failureOf("call", request("mouseClick", QJsonArray{QJsonValue(QJsonArray{1})})).code,
              Protocol::InvalidParams);
    EXPECT_EQ(failureOf("call").code, Protocol::InvalidParams);
}

TEST_F(ScriptCalls, GivePicturesBack)
{
    const QJsonArray arguments{QJsonObject{{QStringLiteral("object"), handleOf("Window#form #ok")}}};
    const QJsonObject picture =
        ask("call", request("grabWidget", arguments)).value(QStringLiteral("result")).toObject();
    EXPECT_EQ(picture.value(QStringLiteral("type")), QStringLiteral("QPixmap"));
    EXPECT_EQ(picture.value(QStringLiteral("width")), QJsonValue(80));
}

TEST_F(ScriptCalls, SurviveTheEndOfTheirWindow)
{
    find("ok")->setVisible(false);
    const auto reply = post("call", click("ok", 300));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    destroyRoot();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::ObjectNotFound);
}

TEST_F(ScriptCalls, SurviveTheEndOfTheAgent)
{
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("Window#form #ok")}));
    ASSERT_TRUE(waitUntil([&] { return !QtWrapper::InputPlayer::self()->isIdle(); }));
    endAgent();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && QtWrapper::InputPlayer::self()->isIdle(); }));
    EXPECT_TRUE((*reply)->isError());
}

TEST_F(ScriptCalls, SurviveTheEndOfTheConnection)
{
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("Window#form #ok")}));
    ASSERT_TRUE(waitUntil([&] { return !QtWrapper::InputPlayer::self()->isIdle(); }));
    toolEnd()->close();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && QtWrapper::InputPlayer::self()->isIdle(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::Disconnected);
}

TEST_F(ScriptCalls, FlicksAreRecordedBehindWhatWasPlayedBefore)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 300; height: 200; visible: true
            MouseArea { id: area; width: 100; height: 100 }
            Flickable { id: list; x: 150; width: 100; height: 200; contentHeight: 1000 }
        })qml");
    QStringList recorded;
    toolEnd()->onNotification(Protocol::Method::statement, [&](const QJsonObject &params) {
        const auto statement = Protocol::Statement::fromJson(params);
        ASSERT_TRUE(statement);
        QString text = statement->function + u' ' + statement->object;
        for (const Protocol::StatementArgument &argument : statement->arguments)
            text += u' ' + QString::number(argument.value.toInt());
        recorded.append(text);
    });
    auto session = std::make_unique<Agent::RecordingSession>(host(), agentEnd());
    ask("call",
        request("mouseClick", {QStringLiteral("Window#form #area"), 5, 6, static_cast<int>(Qt::LeftButton)}));
    ask("call", request("flick", {QStringLiteral("Window#form #list"), 0, 300}));
    EXPECT_EQ(failureOf("call", request("flick", {QStringLiteral("Window#form #area"), 0, 1})).code,
              Protocol::FunctionFailed);
    session.reset();
    ask("call", request("flick", {QStringLiteral("Window#form #list"), 0, 50}));
    EXPECT_EQ(recorded,
              QStringList({QStringLiteral("mouseClick Window#form MouseArea#area:visible 5 6 1"),
                           QStringLiteral("flick Window#form Flickable#list:visible 0 300")}));
}

TEST_F(ScriptCalls, ThatEndTheProgramAreAnswered)
{
    QObject::connect(
        window(), &QWindow::visibleChanged, window(),
        [this] {
            quitApplication();
            endAgent();
        },
        Qt::QueuedConnection);
    const QJsonObject result = ask("call", request("closeWindow", {QStringLiteral("Window#form")}));
    EXPECT_EQ(result.value(QStringLiteral("result")), QJsonValue());
    EXPECT_FALSE(window()->isVisible());
    ASSERT_TRUE(waitUntil([] { return QtWrapper::InputPlayer::self()->isIdle(); }));
}

TEST_F(ScriptCalls, AreOverWhenTheWindowShowsWhatFollowed)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property int steps: 0
            MouseArea {
                id: area; anchors.fill: parent
                // Laid out by the frame behind the one that shows the new text.
                onClicked: { label.text = "a longer text"; Qt.callLater(() => { ++form.steps; follower.width = label.width }) }
            }
            Text { id: label; text: "short" }
            Rectangle { id: follower; objectName: "follower"; height: 10 }
        })qml");
    ask("call", click("area"));
    EXPECT_EQ(root()->property("steps").toInt(), 1);
    const QQuickWindowPrivate *const priv = QQuickWindowPrivate::get(window());
    EXPECT_FALSE(priv->dirtyItemList);
}

TEST_F(ScriptCalls, EndThoughAnAnimationNeverDoes)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property int clicks: 0
            MouseArea { id: area; anchors.fill: parent; onClicked: ++form.clicks }
            Rectangle { width: 10; height: 10; RotationAnimation on rotation { from: 0; to: 360; loops: -1 } }
        })qml");
    ask("call", click("area"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, ThatEndTheProgramHalfwayHaveFailed)
{
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("Window#form #ok")}));
    ASSERT_TRUE(waitUntil([&] { return !QtWrapper::InputPlayer::self()->isIdle(); }));
    quitApplication();
    endAgent();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && QtWrapper::InputPlayer::self()->isIdle(); }));
    EXPECT_TRUE((*reply)->isError());
}

TEST_F(ScriptCalls, SayWhatTheirArgumentsLack)
{
    const auto message = [this](const QJsonArray &arguments) {
        return failureOf("call", request("mouseClick", arguments)).message;
    };
    const QString button = QStringLiteral("WindowQmlImpl#form #ok");
    // Also where they pass for modifiers and a button.
    EXPECT_TRUE(message({button, 5, 5}).endsWith(QStringLiteral("; coordinates need a button")))
        << qPrintable(message({button, 5, 5}));
    EXPECT_TRUE(message({button, 0, 5}).endsWith(QStringLiteral("; coordinates need a button")));
    const QString wheel = failureOf("call", request("mouseWheel", {button, 5, 5})).message;
    EXPECT_TRUE(wheel.contains(QStringLiteral(" are missing. There are: "))) << qPrintable(wheel);
    EXPECT_TRUE(message({}).contains(QStringLiteral(": objectName is missing."))) << qPrintable(message({}));
    EXPECT_TRUE(message({button, 5, QStringLiteral("a"), 1}).contains(QStringLiteral("). There are: ")));
}

TEST_F(ScriptCalls, SayThatThereIsNoObject)
{
    const QJsonValue nothing;
    for (const auto &params : {
             request("mouseClick", {nothing}, 50),
             request("mouseClick", {nothing, 5, 5, static_cast<int>(Qt::LeftButton)}, 50),
             request("type", {nothing, QStringLiteral("a")}, 50),
             request("flick", {nothing, 0, 10}, 50),
             request("grabWidget", {nothing}, 50),
             request("dragAndDrop", {QStringLiteral("Window#form #ok"), nothing}, 50),
         })
        EXPECT_FALSE(failureOf("call", params).message.isEmpty());
    ask("call", click("ok"));
}

TEST_F(ScriptCalls, EndThoughTheWindowThatWasToBeDrawnHasGone)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property Window second
            Component {
                id: other
                Window { property alias mark: rect; visible: true; Rectangle { id: rect; width: 10; height: 10 } }
            }
            Component.onCompleted: second = other.createObject(null)
            function change() { second.mark.x += 1; gone.start() }
            Timer { id: gone; interval: 1; onTriggered: { form.second.destroy(); form.second = null } }
            MouseArea { id: area; anchors.fill: parent; onClicked: form.change() }
        })qml");
    ask("call", click("area"));
    ASSERT_TRUE(waitUntil([&] { return !root()->property("second").value<QObject *>(); }));
    // The agent answers what comes behind it, too.
    ask("functions");
}

TEST_F(ScriptCalls, AreToldOfWhenTheirTurnHasCome)
{
    int told = 0;
    toolEnd()->onNotification(Protocol::Method::acting, [&](const QJsonObject &) { ++told; });
    find("ok")->setVisible(false);
    const auto reply = post("call", click("ok"));
    ask("functions");
    EXPECT_EQ(told, 0);
    find("ok")->setVisible(true);
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_EQ(told, 1);
}
