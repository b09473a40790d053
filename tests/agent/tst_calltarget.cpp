#include "callscene.h"

#include "wrappers/qt/wrapping.h"

#include <QtCore/QAbstractAnimation>
#include <QtCore/QElapsedTimer>
#include <QtGui/QGuiApplication>

using namespace Vantle;
using namespace VantleTest;

// What script functions wait for before they are called, and say when it does
// not come.

namespace {

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

class ScriptCallsThatWait : public CallScene
{
};

} // namespace

TEST_F(ScriptCallsThatWait, WaitUntilTheObjectIsVisible)
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

TEST_F(ScriptCallsThatWait, WaitUntilTheObjectHasComeToRest)
{
    find<QObject>("slide")->setProperty("running", true);
    ASSERT_TRUE(waitUntil([&] { return find("moving")->x() > 0; }));
    ask("call", click("moving"));
    EXPECT_EQ(find("moving")->x(), 150);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCallsThatWait, TakeNoFramesForRestInWhichAnimationsHadNoTime)
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

TEST_F(ScriptCallsThatWait, AreNotKeptByAnimationsThatMoveOtherThings)
{
    find<QObject>("slide")->setProperty("loops", -1);
    find<QObject>("slide")->setProperty("running", true);
    ask("call", click("ok"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCallsThatWait, WaitUntilTheFlickableAroundTheObjectHasComeToRest)
{
    load(LongList);
    ASSERT_TRUE(QMetaObject::invokeMethod(find("list"), "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -400)));
    ASSERT_TRUE(find("list")->property("moving").toBool());
    const QJsonArray place{QStringLiteral("Window#form #area"), 20, 200, static_cast<int>(Qt::LeftButton)};
    ask("call", request("mouseClick", place));
    EXPECT_EQ(clicks(), 1);
    EXPECT_FALSE(root()->property("wasMoving").toBool());
}

TEST_F(ScriptCallsThatWait, SayWhichFlickableDoesNotComeToRest)
{
    load(LongList);
    find("list")->setProperty("flickDeceleration", 1);
    find("list")->setProperty("maximumFlickVelocity", 2500);
    ASSERT_TRUE(QMetaObject::invokeMethod(find("list"), "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -2000)));
    const QJsonArray place{QStringLiteral("Window#form #area"), 20, 20, static_cast<int>(Qt::LeftButton)};
    const Protocol::NotReady found = obstacle(request("mouseClick", place, 600));
    EXPECT_EQ(found.reason,
              QStringLiteral("Window#form Flickable[objectName=\"list\"]:visible, which holds it, "
                             "is still moving"));
    EXPECT_EQ(found.coveredBy, QString());
    EXPECT_TRUE(find("list")->property("moving").toBool());
    EXPECT_EQ(clicks(), 0);
}

TEST_F(ScriptCallsThatWait, SayWhatTheyWaitedForInVain)
{
    EXPECT_EQ(obstacle(click("outside", 400)).reason, QStringLiteral("its middle lies outside of the window"));
    const Protocol::Error error = failureOf("call", click("nothing", 30));
    EXPECT_EQ(error.code, Protocol::ObjectNotFound);
    EXPECT_TRUE(Protocol::NotFound::fromJson(error.data.toObject()));
}

TEST_F(ScriptCallsThatWait, WaitUntilNothingCoversThePoint)
{
    const QJsonObject atCorner = request(
        "mouseClick", {QStringLiteral("Window#form #covered"), 5, 5, static_cast<int>(Qt::LeftButton)}, 400);
    const Protocol::NotReady covered = obstacle(atCorner);
    EXPECT_EQ(covered.coveredBy, QStringLiteral("Window#form Area[objectName=\"cover\"]:visible"));
    EXPECT_TRUE(covered.reason.contains(QStringLiteral("(5, 5)"))) << qPrintable(covered.reason);
    EXPECT_EQ(root()->property("others").toInt(), 0);

    const auto reply = post("call", click("covered"));
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError()) << "its middle is free";

    find("cover")->setVisible(false);
    ask("call", atCorner);
    EXPECT_EQ(clicks(), 2);
}

TEST_F(ScriptCallsThatWait, OnWindowsNeedNoFreePoint)
{
    ask("call", request("setWindowSize", {QStringLiteral("Window#form"), 320, 240}));
    ASSERT_TRUE(waitUntil([&] { return window()->width() == 320; }));
    EXPECT_EQ(window()->height(), 240);
}

TEST_F(ScriptCallsThatWait, ClickThroughDecorationsOnTop)
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

TEST_F(ScriptCallsThatWait, DoNotClickThroughWhatTakesThatButton)
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
    const QJsonArray rightClick{QStringLiteral("Window#form #area"), 50, 50, static_cast<int>(Qt::RightButton)};
    const Protocol::NotReady problem = obstacle(request("mouseClick", rightClick, 50));
    EXPECT_EQ(problem.coveredBy, QStringLiteral("Window#form MouseArea#menu:visible"));
    EXPECT_EQ(clicks(), 1);
}

TEST_F(ScriptCallsThatWait, NameTheModalWindowThatBlocksTheObject)
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

TEST_F(ScriptCallsThatWait, NameTheModalPopupThatBlocksTheObject)
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

TEST_F(ScriptCallsThatWait, OnWindowsWaitUntilTheyAreVisible)
{
    window()->hide();
    const auto reply = post("call", request("setWindowSize", {QStringLiteral("Window#form"), 250, 150}));
    ask("functions");
    ASSERT_FALSE(*reply);
    window()->show();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_FALSE((*reply)->isError());
    ASSERT_TRUE(waitUntil([&] { return window()->size() == QSize(250, 150); }));
    window()->hide();
    EXPECT_EQ(obstacle(request("closeWindow", {QStringLiteral("Window#form")}, 50)).reason,
              QStringLiteral("the window is not visible"));
}

TEST_F(ScriptCallsThatWait, WaitForWhatIsDroppedOnToo)
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
    const QJsonArray names{QStringLiteral("Window#form #hand"), QStringLiteral("Window#form #place")};
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
        "call", request("dragAndDrop", {QStringLiteral("Window#form #hand"), QStringLiteral("#nowhere")}, 50));
    EXPECT_EQ(missing.code, Protocol::ObjectNotFound) << qPrintable(missing.message);
}

TEST_F(ScriptCallsThatWait, WaitForNoNameThatCannotBeOne)
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

TEST_F(ScriptCallsThatWait, FlickNeedsNoFreePoint)
{
    load(R"qml(
        import QtQuick
        Window {
            id: form
            width: 300; height: 200; visible: true
            Flickable { id: list; objectName: "list"; width: 100; height: 900; contentHeight: 2000 }
            MouseArea { width: 300; height: 200 }
        }
    )qml");
    ask("call", request("flick", {QStringLiteral("WindowQmlImpl#form #list"), 0, 30}));
    EXPECT_EQ(find("list")->property("contentY").toReal(), 30);
}

TEST_F(ScriptCallsThatWait, PointerMayHoverAndLetGoWhereItIsCovered)
{
    const QString area = QStringLiteral("WindowQmlImpl#form #covered");
    ask("call", request("mouseMove", {area, 10, 10}));
    EXPECT_EQ(obstacle(request("mousePress", {area, 10, 10, 1}, 50)).coveredBy,
              QStringLiteral("Window#form Area[objectName=\"cover\"]:visible"));
    ask("call", request("mousePress", {QStringLiteral("WindowQmlImpl#form #ok"), 10, 10, 1}));
    ask("call", request("mouseRelease", {area, 10, 10, 1}));
    EXPECT_EQ(clicks(), 0);
}

TEST_F(ScriptCallsThatWait, WhatIsHeldIsLetGoWithTheConnection)
{
    ask("call", request("mousePress", {QStringLiteral("WindowQmlImpl#form #ok")}));
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::LeftButton);
    endAgent();
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
    EXPECT_EQ(clicks(), 1);
}
