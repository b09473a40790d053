#include "wrappers/qt/functions/inputplayer.h"

#include "wrappers/qt/functions/replayscene.h"

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <functional>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Runs a function at events of one type that an object gets, before it does.
class AtEvent : public QObject
{
public:
    AtEvent(QObject *object, QEvent::Type type, std::function<void()> function)
        : m_type(type)
        , m_function(std::move(function))
    {
        object->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == m_type) {
            const std::function<void()> function = m_function;
            function();
        }
        return false;
    }

private:
    QEvent::Type m_type;
    std::function<void()> m_function;
};

class InputPlayerTest : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 400; height: 300
                property string log
                property int releases: 0
                MouseArea {
                    objectName: "area"; width: 100; height: 100
                    onClicked: main.log += "area;"
                    onReleased: ++main.releases
                    onCanceled: main.log += "canceled;"
                }
                MouseArea { objectName: "other"; x: 200; width: 100; height: 100; onClicked: main.log += "other;" }
                TextInput { objectName: "input"; y: 200; width: 100; height: 20 }
                Flickable { objectName: "list"; x: 300; y: 200; width: 100; height: 100; contentHeight: 1000 }
            })");
    }

    std::string log() { return property("main", "log").toString().toStdString(); }

    static InputPlayer *player() { return InputPlayer::self(); }
    static bool isAnythingHeld()
    {
        return QGuiApplication::mouseButtons() != Qt::NoButton
            || QGuiApplication::keyboardModifiers() != Qt::NoModifier;
    }
};

} // namespace

TEST_F(InputPlayerTest, FunctionReturnsBeforeAnythingIsDelivered)
{
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    EXPECT_FALSE(player()->isIdle());
    EXPECT_EQ(log(), "");
    EXPECT_EQ(finish(), "");
    EXPECT_TRUE(player()->isIdle());
    EXPECT_EQ(log(), "area;");
}

TEST_F(InputPlayerTest, EveryWaiterIsToldAboutItsOwnAction)
{
    std::vector<std::string> told;
    const auto tell = [&](const std::string &who) {
        return
            [&told, who, this](const QString &error) { told.push_back(who + '|' + error.toStdString() + '|' + log()); };
    };
    player()->whenIdle(tell("nothing"));
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    player()->whenIdle(tell("first"));
    player()->whenIdle(tell("first too"));
    ASSERT_EQ(start("mouseClick", nameOf("other")), "");
    player()->whenIdle(tell("second"));
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(VantleTest::waitUntil([&] { return told.size() == 4; }));
    EXPECT_THAT(told,
                testing::UnorderedElementsAre(testing::StartsWith("nothing||"), "first||area;", "first too||area;",
                                              "second||area;other;"));
}

TEST_F(InputPlayerTest, WaiterMayStartTheNextAction)
{
    bool isDone = false;
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    player()->whenIdle([&](const QString &) {
        EXPECT_EQ(start("mouseClick", nameOf("other")), "");
        player()->whenIdle([&](const QString &) { isDone = true; });
    });
    EXPECT_TRUE(VantleTest::waitUntil([&] { return isDone; }));
    EXPECT_EQ(log(), "area;other;");
}

TEST_F(InputPlayerTest, PointOfActionIsKnownAfterwards)
{
    play("mouseClick", "other", {12, 34, int(Qt::LeftButton)});
    EXPECT_EQ(player()->lastWindow(), window());
    EXPECT_EQ(player()->lastPoint(), QPointF(212, 34));
    play("type", "input", {QStringLiteral("a")});
    EXPECT_EQ(player()->lastPoint(), QPointF(49, 209));
    destroyWindow();
    EXPECT_EQ(player()->lastWindow(), nullptr);
}

TEST_F(InputPlayerTest, PressThatOpensAnEventLoopHoldsNothingUp)
{
    QEventLoop loop;
    bool isOpen = false;
    AtEvent opener(find("area"), QEvent::MouseButtonPress, [&] {
        isOpen = true;
        loop.exec();
        isOpen = false;
    });
    QObject::connect(find("other"), SIGNAL(clicked(QQuickMouseEvent *)), &loop, SLOT(quit()));
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    bool wasOpenAtTheEnd = false;
    player()->whenIdle([&](const QString &error) {
        EXPECT_EQ(error, QString());
        wasOpenAtTheEnd = isOpen;
        EXPECT_EQ(start("mouseClick", nameOf("other")), "");
    });
    EXPECT_TRUE(VantleTest::waitUntil([&] { return log() == "other;" && !isOpen; }));
    EXPECT_TRUE(wasOpenAtTheEnd);
    EXPECT_FALSE(isAnythingHeld());
}

TEST_F(InputPlayerTest, ReleaseThatOpensAnEventLoopEndsTheAction)
{
    QEventLoop loop;
    AtEvent opener(find("area"), QEvent::MouseButtonRelease, [&] { loop.exec(); });
    QObject::connect(find("other"), SIGNAL(clicked(QQuickMouseEvent *)), &loop, SLOT(quit()));
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    player()->whenIdle([&](const QString &) { EXPECT_EQ(start("mouseClick", nameOf("other")), ""); });
    EXPECT_TRUE(VantleTest::waitUntil([&] { return !loop.isRunning() && player()->isIdle(); }));
    EXPECT_THAT(log(), HasSubstr("other;"));
}

TEST_F(InputPlayerTest, KeyThatOpensAnEventLoopHoldsNothingUp)
{
    QEventLoop loop;
    AtEvent opener(find("input"), QEvent::KeyPress, [&] {
        if (!loop.isRunning())
            loop.exec();
    });
    QObject::connect(find("other"), SIGNAL(clicked(QQuickMouseEvent *)), &loop, SLOT(quit()));
    ASSERT_EQ(start("type", nameOf("input"), {QStringLiteral("<Ctrl+B>")}), "");
    player()->whenIdle([&](const QString &) { EXPECT_EQ(start("mouseClick", nameOf("other")), ""); });
    EXPECT_TRUE(VantleTest::waitUntil([&] { return log() == "other;" && player()->isIdle(); }));
    EXPECT_FALSE(isAnythingHeld());
}

TEST_F(InputPlayerTest, ObjectThatDiesAtThePressOfAClickIsNoError)
{
    QPointer<QQuickItem> area = find("area");
    AtEvent killer(area, QEvent::MouseButtonPress, [&] { area->deleteLater(); });
    play("mouseClick", "area");
    EXPECT_FALSE(area);
    EXPECT_FALSE(isAnythingHeld());
}

TEST_F(InputPlayerTest, ObjectThatDiesInADragIsAnErrorAndTheButtonIsLetGo)
{
    QPointer<QQuickItem> area = find("area");
    int moves = 0;
    AtEvent killer(area, QEvent::MouseMove, [&] {
        if (++moves == 3)
            area->deleteLater();
    });
    ASSERT_EQ(start("mouseDrag", nameOf("area"), {10, 10, 60, 0, int(Qt::ControlModifier), int(Qt::LeftButton)}), "");
    EXPECT_EQ(finish(), "mouseDrag failed: the object or its window was destroyed in the middle of it");
    EXPECT_FALSE(isAnythingHeld());
    play("mouseClick", "other");
    EXPECT_EQ(log(), "other;");
}

TEST_F(InputPlayerTest, WindowThatDiesInADragIsAnErrorAndTheButtonIsLetGo)
{
    int moves = 0;
    AtEvent killer(find("area"), QEvent::MouseMove, [&] {
        if (++moves == 3)
            QTimer::singleShot(0, window(), [this] { destroyWindow(); });
    });
    ASSERT_EQ(start("mouseDrag", nameOf("area"), {10, 10, 60, 0, int(Qt::ShiftModifier), int(Qt::LeftButton)}), "");
    EXPECT_THAT(finish(), HasSubstr("destroyed in the middle"));
    EXPECT_FALSE(isAnythingHeld());
}

TEST_F(InputPlayerTest, WindowThatDiesUnderAFingerIsAnErrorAndTheFingerIsLifted)
{
    int moves = 0;
    AtEvent killer(window(), QEvent::TouchUpdate, [&] {
        if (++moves == 3)
            QTimer::singleShot(0, window(), [this] { destroyWindow(); });
    });
    ASSERT_EQ(start("touchAndDrag", nameOf("area"), {10, 10, 60, 0}), "");
    EXPECT_THAT(finish(), HasSubstr("destroyed in the middle"));
    SetUp();
    play("tapObject", "area");
    EXPECT_EQ(log(), "area;");
}

TEST_F(InputPlayerTest, WindowThatDiesWhileAKeyIsDownIsNoErrorIfNothingElseIsToBeTyped)
{
    AtEvent killer(find("input"), QEvent::KeyPress,
                   [&] { QTimer::singleShot(0, window(), [this] { destroyWindow(); }); });
    ASSERT_EQ(start("type", nameOf("input"), {QStringLiteral("x")}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_FALSE(window());
}

TEST_F(InputPlayerTest, WindowThatDiesWhileTypingIsAnError)
{
    AtEvent killer(find("input"), QEvent::KeyPress,
                   [&] { QTimer::singleShot(0, window(), [this] { destroyWindow(); }); });
    ASSERT_EQ(start("type", nameOf("input"), {QStringLiteral("HELLO")}), "");
    EXPECT_EQ(finish(), "type failed: the object or its window was destroyed in the middle of it");
    EXPECT_FALSE(isAnythingHeld());
}

TEST_F(InputPlayerTest, ObjectThatDiesBeforeItsTurnIsAnError)
{
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    delete find("area");
    EXPECT_THAT(finish(), HasSubstr("mouseClick failed: "));
}

TEST_F(InputPlayerTest, ErrorOfOneActionDoesNotStopTheNext)
{
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    ASSERT_EQ(start("mouseClick", nameOf("other")), "");
    delete find("area");
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(log(), "other;");
}

TEST_F(InputPlayerTest, ErrorWaitsForWhoAsksLater)
{
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    delete find("area");
    ASSERT_TRUE(VantleTest::waitUntil([] { return player()->isIdle(); }));
    EXPECT_THAT(finish(), HasSubstr("mouseClick failed: "));
    EXPECT_EQ(finish(), "");
}

TEST_F(InputPlayerTest, InactiveWindowIsMadeActiveFirst)
{
    QWindow another;
    another.setGeometry(500, 60, 100, 100);
    another.show();
    another.requestActivate();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return QGuiApplication::focusWindow() == &another; }));
    play("type", "input", {QStringLiteral("abc")});
    EXPECT_EQ(text("input"), "abc");
    EXPECT_EQ(QGuiApplication::focusWindow(), window());
}

TEST_F(InputPlayerTest, ActionsAreAnnounced)
{
    recorded(); // which ends the recorder's own interest
    int actions = 0;
    InputPlayer::setBeforeAction([&] {
        ++actions;
        EXPECT_EQ(log(), "");
    });
    ASSERT_EQ(start("mouseClick", nameOf("area")), "");
    EXPECT_EQ(actions, 0);
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(actions, 1);
    InputPlayer::setBeforeAction({});
}

TEST_F(InputPlayerTest, FlickByNameIsThatOfTheClassOfTheObject)
{
    play("flick", "list", {0, 100});
    EXPECT_EQ(property("list", "contentY").toReal(), 100);
    EXPECT_THAT(start("flick", nameOf("main"), {0, 100}),
                HasSubstr("Cannot flick: nobody can flick an object of type "));
    EXPECT_THAT(start("flick", nameOf("area"), {0, 100}), HasSubstr("which is not a QtQuick Flickable"));
}
