#include "commandscene.h"

#include "agent/recordingsession.h"
#include "hook/inspector.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QAbstractAnimation>
#include <QtCore/QElapsedTimer>
#include <QtQuick/private/qquickwindow_p.h>

using namespace Vantle;
using namespace VantleTest;

namespace {

constexpr char Buttons[] = R"qml(
    import QtQuick
    Window {
        id: form
        width: 300; height: 200; visible: true
        property int clicks: 0
        property int others: 0
        property string where
        component Area: MouseArea { width: 80; height: 40 }
        Area {
            id: ok; objectName: "ok"
            onClicked: (mouse) => { form.clicks += 1; form.where = Math.floor(mouse.x) + "," + Math.floor(mouse.y) }
        }
        Area { id: moving; objectName: "moving"; y: 60; onClicked: form.clicks += 1
               NumberAnimation on x { id: slide; objectName: "slide"; running: false; from: 0; to: 150; duration: 400 } }
        Area { id: covered; x: 100; onClicked: form.clicks += 1 }
        Area { id: cover; objectName: "cover"; x: 100; width: 30; onClicked: form.others += 1 }
        Area { id: outside; x: 290 }
        Area { id: opener; y: 120; onClicked: form.title = "open" }
        TextInput { id: field; objectName: "field"; x: 100; y: 120; width: 100; height: 20 }
    }
)qml";

constexpr char LongList[] = R"qml(
    import QtQuick
    Window {
        id: form
        width: 300; height: 200; visible: true
        property bool wasMoving: true
        property int clicks: 0
        Flickable {
            id: list; objectName: "list"; width: 300; height: 200; contentHeight: 100000
            MouseArea {
                id: area; width: 300; height: 100000
                onPressed: form.wasMoving = list.moving
                onClicked: form.clicks += 1
            }
        }
    }
)qml";

/// While it is installed, animations stand still until they are given a tick.
class HeldAnimations : public QAnimationDriver
{
public:
    HeldAnimations() { install(); }
    ~HeldAnimations() override { uninstall(); }

    void tick()
    {
        m_time += 16;
        advanceAnimation();
    }
    qint64 elapsed() const override { return m_time; }

private:
    qint64 m_time = 0;
};

class ScriptCalls : public CommandScene
{
protected:
    void SetUp() override
    {
        CommandScene::SetUp();
        load(Buttons);
    }

    static QJsonObject request(const char *function, const QJsonArray &arguments, int timeout = 10000)
    {
        return {{QStringLiteral("function"), QString::fromUtf8(function)},
                {QStringLiteral("arguments"), arguments},
                {QStringLiteral("timeout"), timeout}};
    }
    static QJsonObject click(const char *id, int timeout = 10000)
    {
        return request("mouseClick", {QStringLiteral("WindowQmlImpl#form #") + QLatin1String(id)}, timeout);
    }
    /// All that an application tells when it ends, without its end.
    static void quitApplication() { QMetaObject::invokeMethod(qApp, "aboutToQuit"); }
    int clicks() const { return root()->property("clicks").toInt(); }

    Protocol::NotReady obstacle(const QJsonObject &params)
    {
        const Protocol::Error error = failureOf("call", params);
        EXPECT_EQ(error.code, Protocol::ObjectNotReady) << qPrintable(error.message);
        return Protocol::NotReady::fromJson(error.data.toObject()).value_or(Protocol::NotReady{});
    }
};

} // namespace

TEST_F(ScriptCalls, AreAnsweredWhenTheInputWasDelivered)
{
    const QJsonObject result = ask("call", click("ok"));
    EXPECT_EQ(clicks(), 1);
    EXPECT_EQ(result.value(QStringLiteral("result")), QJsonValue());
    const auto action = Protocol::ActionPoint::fromJson(result.value(QStringLiteral("action")).toObject());
    ASSERT_TRUE(action);
    EXPECT_EQ(QPoint(action->x, action->y), QPoint(39, 19));
    EXPECT_EQ(action->window, handleOf("WindowQmlImpl#form"));
}

TEST_F(ScriptCalls, ActAtTheGivenPoint)
{
    const QJsonObject result = ask(
        "call",
        request("mouseClick", {QStringLiteral("WindowQmlImpl#form #ok"), 7, 9, static_cast<int>(Qt::LeftButton)}));
    EXPECT_EQ(root()->property("where").toString(), QStringLiteral("7,9"));
    const auto action = Protocol::ActionPoint::fromJson(result.value(QStringLiteral("action")).toObject());
    ASSERT_TRUE(action);
    EXPECT_EQ(QPoint(action->x, action->y), QPoint(7, 9));
}

TEST_F(ScriptCalls, TypeIntoWhatTheyName)
{
    ask("call", request("type", {QStringLiteral("WindowQmlImpl#form #field"), QStringLiteral("abc")}));
    EXPECT_EQ(find("field")->property("text").toString(), QStringLiteral("abc"));
}

TEST_F(ScriptCalls, TakeHandlesInPlaceOfNames)
{
    const QJsonArray arguments{QJsonObject{{QStringLiteral("object"), handleOf("WindowQmlImpl#form #ok")}}};
    ask("call", request("mouseClick", arguments));
    EXPECT_EQ(clicks(), 1);
    delete find("ok");
    EXPECT_EQ(failureOf("call", request("mouseClick", arguments)).code, Protocol::InvalidParams);
}

TEST_F(ScriptCalls, WaitUntilTheObjectIsVisible)
{
    find("ok")->setVisible(false);
    EXPECT_EQ(obstacle(click("ok", 30)).reason, QStringLiteral("the item is not visible"));
    const auto reply = post("call", click("ok"));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    EXPECT_FALSE(reply->has_value());
    find("ok")->setVisible(true);
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, WaitUntilTheObjectHasComeToRest)
{
    find<QObject>("slide")->setProperty("running", true);
    ASSERT_TRUE(waitUntil([&] { return find("moving")->x() > 0; }));
    ask("call", click("moving"));
    EXPECT_EQ(find("moving")->x(), 150);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, TakeNoFramesForRestInWhichAnimationsHadNoTime)
{
    HeldAnimations animations;
    find<QObject>("slide")->setProperty("running", true);
    int frames = 0;
    QObject::connect(window(), &QQuickWindow::afterAnimating, window(), [&] { ++frames; });
    const auto reply = post("call", click("moving"));
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() || frames >= 10; }));
    EXPECT_FALSE(reply->has_value());
    ASSERT_TRUE(waitUntil([&] {
        animations.tick();
        return reply->has_value();
    }));
    EXPECT_FALSE((*reply)->isError());
    EXPECT_EQ(find("moving")->x(), 150);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, AreNotKeptByAnimationsThatMoveOtherThings)
{
    find<QObject>("slide")->setProperty("loops", -1);
    find<QObject>("slide")->setProperty("running", true);
    ask("call", click("ok"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, WaitUntilTheFlickableAroundTheObjectHasComeToRest)
{
    load(LongList);
    ASSERT_TRUE(QMetaObject::invokeMethod(find("list"), "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -400)));
    ASSERT_TRUE(find("list")->property("moving").toBool());
    const QJsonArray place{QStringLiteral("WindowQmlImpl#form #area"), 20, 200, static_cast<int>(Qt::LeftButton)};
    ask("call", request("mouseClick", place));
    EXPECT_EQ(clicks(), 1);
    EXPECT_FALSE(root()->property("wasMoving").toBool());
}

TEST_F(ScriptCalls, SayWhichFlickableDoesNotComeToRest)
{
    load(LongList);
    find("list")->setProperty("flickDeceleration", 1);
    find("list")->setProperty("maximumFlickVelocity", 2500);
    ASSERT_TRUE(QMetaObject::invokeMethod(find("list"), "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -2000)));
    const QJsonArray place{QStringLiteral("WindowQmlImpl#form #area"), 20, 20, static_cast<int>(Qt::LeftButton)};
    const Protocol::NotReady found = obstacle(request("mouseClick", place, 600));
    EXPECT_EQ(found.reason,
              QStringLiteral("WindowQmlImpl#form Flickable#list[objectName=\"list\"]:visible, which holds it, "
                             "is still moving"));
    EXPECT_EQ(found.coveredBy, QString());
    EXPECT_TRUE(find("list")->property("moving").toBool());
    EXPECT_EQ(clicks(), 0);
}

TEST_F(ScriptCalls, SayWhatTheyWaitedForInVain)
{
    EXPECT_EQ(obstacle(click("outside", 400)).reason, QStringLiteral("its middle lies outside of the window"));
    const Protocol::Error error = failureOf("call", click("nothing", 30));
    EXPECT_EQ(error.code, Protocol::ObjectNotFound);
    EXPECT_TRUE(Protocol::NotFound::fromJson(error.data.toObject()));
}

TEST_F(ScriptCalls, WaitUntilNothingCoversThePoint)
{
    const QJsonObject atCorner = request(
        "mouseClick", {QStringLiteral("WindowQmlImpl#form #covered"), 5, 5, static_cast<int>(Qt::LeftButton)}, 400);
    const Protocol::NotReady covered = obstacle(atCorner);
    EXPECT_EQ(covered.coveredBy, QStringLiteral("WindowQmlImpl#form Area#cover[objectName=\"cover\"]:visible"));
    EXPECT_TRUE(covered.reason.contains(QStringLiteral("(5, 5)"))) << qPrintable(covered.reason);
    EXPECT_EQ(root()->property("others").toInt(), 0);

    const auto reply = post("call", click("covered"));
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError()) << "its middle is free";

    find("cover")->setVisible(false);
    ask("call", atCorner);
    EXPECT_EQ(clicks(), 2);
}

TEST_F(ScriptCalls, SeveralMayBePending)
{
    find("ok")->setVisible(false);
    const auto first = post("call", click("ok"));
    const auto second = post("call",
                             request("type", {QStringLiteral("WindowQmlImpl#form #field"), QStringLiteral("x")}));
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
    const QJsonArray arguments{QJsonObject{{QStringLiteral("object"), handleOf("WindowQmlImpl#form #ok")}}};
    const QJsonObject picture =
        ask("call", request("grabWidget", arguments)).value(QStringLiteral("result")).toObject();
    EXPECT_EQ(picture.value(QStringLiteral("type")), QStringLiteral("QPixmap"));
    EXPECT_EQ(picture.value(QStringLiteral("width")), QJsonValue(80));
}

TEST_F(ScriptCalls, OnWindowsNeedNoFreePoint)
{
    ask("call", request("setWindowSize", {QStringLiteral("WindowQmlImpl#form"), 320, 240}));
    ASSERT_TRUE(waitUntil([&] { return window()->width() == 320; }));
    EXPECT_EQ(window()->height(), 240);
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
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("WindowQmlImpl#form #ok")}));
    ASSERT_TRUE(waitUntil([&] { return !QtWrapper::InputPlayer::self()->isIdle(); }));
    endAgent();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && QtWrapper::InputPlayer::self()->isIdle(); }));
    EXPECT_TRUE((*reply)->isError());
}

TEST_F(ScriptCalls, SurviveTheEndOfTheConnection)
{
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("WindowQmlImpl#form #ok")}));
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
        request("mouseClick", {QStringLiteral("WindowQmlImpl#form #area"), 5, 6, static_cast<int>(Qt::LeftButton)}));
    ask("call", request("flick", {QStringLiteral("WindowQmlImpl#form #list"), 0, 300}));
    EXPECT_EQ(failureOf("call", request("flick", {QStringLiteral("WindowQmlImpl#form #area"), 0, 1})).code,
              Protocol::FunctionFailed);
    session.reset();
    ask("call", request("flick", {QStringLiteral("WindowQmlImpl#form #list"), 0, 50}));
    EXPECT_EQ(recorded,
              QStringList({QStringLiteral("mouseClick WindowQmlImpl#form MouseArea#area:visible 5 6 1"),
                           QStringLiteral("flick WindowQmlImpl#form Flickable#list:visible 0 300")}));
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
    const QJsonObject result = ask("call", request("closeWindow", {QStringLiteral("WindowQmlImpl#form")}));
    EXPECT_EQ(result.value(QStringLiteral("result")), QJsonValue());
    EXPECT_FALSE(window()->isVisible());
    ASSERT_TRUE(waitUntil([] { return QtWrapper::InputPlayer::self()->isIdle(); }));
}

TEST_F(ScriptCalls, ClickThroughDecorationsOnTop)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property int clicks: 0
            MouseArea { id: area; anchors.fill: parent; onClicked: ++form.clicks }
            Rectangle { anchors.fill: parent; Text { anchors.centerIn: parent; text: "Save"; font.pixelSize: 40 } }
        })qml");
    ask("call", click("area"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, DoNotClickThroughWhatTakesThatButton)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property int clicks: 0
            MouseArea { id: area; anchors.fill: parent; acceptedButtons: Qt.AllButtons; onClicked: ++form.clicks }
            MouseArea { id: menu; anchors.fill: parent; acceptedButtons: Qt.RightButton; Text { text: "Save" } }
        })qml");
    ask("call", click("area"));
    EXPECT_EQ(clicks(), 1);
    const QJsonArray rightClick{QStringLiteral("WindowQmlImpl#form #area"), 50, 50, static_cast<int>(Qt::RightButton)};
    const Protocol::NotReady problem = obstacle(request("mouseClick", rightClick, 50));
    EXPECT_EQ(problem.coveredBy, QStringLiteral("WindowQmlImpl#form MouseArea#menu:visible"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCalls, NameTheModalWindowThatBlocksTheObject)
{
    QWindow question;
    question.setObjectName(QStringLiteral("question"));
    question.setModality(Qt::ApplicationModal);
    question.show();
    ASSERT_TRUE(waitUntil([&] { return question.isExposed(); }));
    const Protocol::NotReady problem = obstacle(click("ok", 50));
    EXPECT_EQ(problem.reason, QStringLiteral("the window is blocked by a modal window without a title"));
    EXPECT_EQ(problem.coveredBy, QtWrapper::wrapAndRegisterQObject(&question)->scriptName());
    EXPECT_TRUE(problem.coveredBy.contains(QLatin1String("question"))) << qPrintable(problem.coveredBy);
}

TEST_F(ScriptCalls, NameTheModalPopupThatBlocksTheObject)
{
    load(R"qml(
        import QtQuick
        import QtQuick.Controls.Basic
        ApplicationWindow {
            id: form
            width: 200; height: 100; visible: true
            Button { id: ok; text: "OK" }
            Dialog { id: sure; objectName: "sure"; modal: true; visible: true; title: "100 %1 sure?" }
        })qml");
    ASSERT_TRUE(waitUntil([&] { return find<QObject>("sure")->property("opened").toBool(); }));
    const Protocol::NotReady problem = obstacle(
        request("mouseClick", {QStringLiteral("ApplicationWindow#form #ok")}, 50));
    EXPECT_EQ(problem.reason, QStringLiteral("the item is covered by the modal popup Dialog \"100 %1 sure?\""));
    EXPECT_FALSE(problem.coveredBy.isEmpty());
    EXPECT_EQ(handleOf(problem.coveredBy.toUtf8().constData()) != 0, true) << qPrintable(problem.coveredBy);
}

TEST_F(ScriptCalls, OnWindowsWaitUntilTheyAreVisible)
{
    window()->hide();
    const auto reply = post("call", request("setWindowSize", {QStringLiteral("WindowQmlImpl#form"), 250, 150}));
    ask("functions");
    ASSERT_FALSE(*reply);
    window()->show();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
    ASSERT_TRUE(waitUntil([&] { return window()->size() == QSize(250, 150); }));
    window()->hide();
    EXPECT_EQ(obstacle(request("closeWindow", {QStringLiteral("WindowQmlImpl#form")}, 50)).reason,
              QStringLiteral("the window is not visible"));
}

TEST_F(ScriptCalls, WaitForWhatIsDroppedOnToo)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 200; height: 100; visible: true
            property string dropped
            Item {
                id: piece; width: 20; height: 20
                Drag.active: hand.drag.active; Drag.hotSpot: Qt.point(10, 10)
                MouseArea { id: hand; anchors.fill: parent; drag.target: piece; onReleased: piece.Drag.drop() }
            }
            DropArea { id: place; objectName: "place"; x: 100; width: 80; height: 80; visible: false
                onDropped: form.dropped = "there" }
        })qml");
    const QJsonArray names{QStringLiteral("WindowQmlImpl#form #hand"), QStringLiteral("WindowQmlImpl#form #place")};
    const auto reply = post("call", request("dragAndDrop", names));
    ask("functions");
    ASSERT_FALSE(*reply);
    find("place")->setVisible(true);
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
    EXPECT_EQ(root()->property("dropped").toString(), QStringLiteral("there"));

    find("place")->setVisible(false);
    const Protocol::Error error = failureOf("call", request("dragAndDrop", names, 50));
    EXPECT_EQ(error.code, Protocol::ObjectNotReady);
    EXPECT_TRUE(error.message.contains(QStringLiteral("#place: the item is not visible"))) << qPrintable(error.message);
    const Protocol::Error missing = failureOf(
        "call", request("dragAndDrop", {QStringLiteral("WindowQmlImpl#form #hand"), QStringLiteral("#nowhere")}, 50));
    EXPECT_EQ(missing.code, Protocol::ObjectNotFound) << qPrintable(missing.message);
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
    const auto reply = post("call", request("longMouseClick", {QStringLiteral("WindowQmlImpl#form #ok")}));
    ASSERT_TRUE(waitUntil([&] { return !QtWrapper::InputPlayer::self()->isIdle(); }));
    quitApplication();
    endAgent();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && QtWrapper::InputPlayer::self()->isIdle(); }));
    EXPECT_TRUE((*reply)->isError());
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
             request("dragAndDrop", {QStringLiteral("WindowQmlImpl#form #ok"), nothing}, 50),
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

TEST_F(ScriptCalls, WaitForNoNameThatCannotBeOne)
{
    QElapsedTimer timer;
    timer.start();
    for (const char *name : {"Button[text=x]", "#", "a b["}) {
        const QJsonArray arguments{QString::fromLatin1(name)};
        EXPECT_FALSE(failureOf("call", request("mouseClick", arguments, 60000)).message.isEmpty()) << name;
        const QJsonObject wanted{{QStringLiteral("name"), QString::fromLatin1(name)},
                                 {QStringLiteral("timeout"), 60000}};
        EXPECT_EQ(failureOf("find", wanted).code, Protocol::ObjectNotFound) << name;
    }
    EXPECT_LT(timer.elapsed(), 60000);
}
