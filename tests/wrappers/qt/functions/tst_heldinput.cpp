#include "wrappers/qt/functions/replayscene.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const int left = Qt::LeftButton;
const int right = Qt::RightButton;

/// Buttons and keys that stay held from one call to the next.
class HeldInput : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 400; height: 300
                property string log
                MouseArea {
                    objectName: "area"; width: 100; height: 100; acceptedButtons: Qt.AllButtons; hoverEnabled: true
                    onEntered: main.log += "enter;"
                    onExited: main.log += "exit;"
                    onPressed: mouse => main.log += "press " + mouse.x + " " + mouse.y + " " + mouse.button + " "
                               + mouse.modifiers + ";"
                    onReleased: mouse => main.log += "release " + mouse.x + " " + mouse.y + " " + mouse.button + " "
                                + mouse.modifiers + ";"
                }
                Rectangle {
                    objectName: "box"; x: 20; y: 150; width: 50; height: 50
                    DragHandler { dragThreshold: 0 }
                }
                Rectangle { objectName: "cover"; x: 200; y: 200; width: 50; height: 50; MouseArea { anchors.fill: parent } }
                Item {
                    objectName: "keys"; x: 200; y: 100; width: 20; height: 20
                    Keys.onPressed: event => main.log += "down " + event.key + " " + event.modifiers + ";"
                    Keys.onReleased: event => main.log += "up " + event.key + " " + event.modifiers + ";"
                }
                TextInput { objectName: "input"; x: 200; y: 250; width: 100; height: 20 }
            })");
    }

    void TearDown() override { InputPlayer::letGo(); }

    std::string log() { return property("main", "log").toString().toStdString(); }
    std::string failureOf(const char *function, const char *objectName, const QVariantList &arguments)
    {
        const std::string error = start(function, nameOf(objectName), arguments);
        return error.empty() ? finish() : error;
    }
};

} // namespace

TEST_F(HeldInput, PressAndReleaseAreEachOneCall)
{
    play("mousePress", "area", {12, 34, right});
    EXPECT_EQ(log(), "enter;press 12 34 2 0;");
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::RightButton);
    play("mouseRelease", "area", {12, 34, right});
    EXPECT_EQ(log(), "enter;press 12 34 2 0;release 12 34 2 0;");
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
}

TEST_F(HeldInput, PressWithoutCoordinatesIsInTheMiddleAndOfTheLeftButton)
{
    play("mousePress", "area");
    play("mouseRelease", "area");
    EXPECT_EQ(log(), "enter;press 49 49 1 0;release 49 49 1 0;");
}

TEST_F(HeldInput, ModifiersOfAPressStayDownUntilTheRelease)
{
    play("mousePress", "area", {1, 2, int(Qt::ControlModifier), left});
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::ControlModifier);
    play("mouseRelease", "area", {1, 2, left});
    EXPECT_EQ(log(), "enter;press 1 2 1 67108864;release 1 2 1 67108864;");
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

TEST_F(HeldInput, ModifiersOfAReleaseComeOnTop)
{
    play("mousePress", "area", {1, 2, left});
    play("mouseRelease", "area", {int(Qt::ShiftModifier), left});
    EXPECT_THAT(log(), HasSubstr("release 49 49 1 33554432;"));
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

TEST_F(HeldInput, MoveWithAButtonHeldDrags)
{
    play("mousePress", "box", {10, 10, left});
    play("mouseMove", "main", {130, 200});
    const QPointF reached = find("box")->position();
    EXPECT_NEAR(reached.x(), 120, 2);
    EXPECT_NEAR(reached.y(), 190, 2);
    play("mouseRelease", "main", {130, 200, left});
    EXPECT_EQ(find("box")->position(), reached);
}

TEST_F(HeldInput, ReleaseGoesToItsPointFirst)
{
    play("mousePress", "box", {10, 10, left});
    play("mouseRelease", "main", {130, 160, left});
    EXPECT_NEAR(find("box")->x(), 120, 2);
}

TEST_F(HeldInput, ReleaseMayBeOutsideOfTheWindow)
{
    play("mousePress", "area", {12, 34, left});
    play("mouseRelease", "main", {-20, 310, left});
    EXPECT_THAT(log(), HasSubstr("release -20 310 1 0;"));
}

TEST_F(HeldInput, ReleaseWithoutAPressIsAnError)
{
    EXPECT_EQ(failureOf("mouseRelease", "area", {1, 2, right}),
              "mouseRelease failed: the right button is not held; mousePress has to come first");
    play("mousePress", "area", {1, 2, left});
    EXPECT_THAT(failureOf("mouseRelease", "area", {1, 2, right}), HasSubstr("the right button is not held"));
}

TEST_F(HeldInput, SecondPressOfAHeldButtonIsAnError)
{
    play("mousePress", "area", {1, 2, left});
    EXPECT_EQ(failureOf("mousePress", "area", {1, 2, left}), "mousePress failed: the left button is held already");
}

TEST_F(HeldInput, MoveHoversWithoutAButton)
{
    play("mouseMove", "area", {12, 34});
    EXPECT_EQ(log(), "enter;");
    play("mouseMove", "cover");
    EXPECT_EQ(log(), "enter;exit;");
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(HeldInput, MoveMayLeaveTheWindow)
{
    play("mouseMove", "area", {12, 34});
    play("mouseMove", "main", {-20, 34});
    EXPECT_EQ(log(), "enter;exit;");
}

TEST_F(HeldInput, LongClickIsHeldForTheGivenTime)
{
    play("longMouseClick", "area", {1, 2, 0, left, 300});
    EXPECT_EQ(log(), "enter;press 1 2 1 0;release 1 2 1 0;");
    play("longMouseClick", "area", {1});
    EXPECT_THAT(log(), HasSubstr("press 49 49 1 0;"));
    EXPECT_EQ(start("longMouseClick", nameOf("area"), {-1}), "No button can be held for -1 ms");
}

TEST_F(HeldInput, KeysAreHeldUntilTheyAreLetGo)
{
    play("keyPress", "keys", {QStringLiteral("<Down>")});
    EXPECT_EQ(log(), "down 16777237 0;");
    play("keyRelease", "keys", {QStringLiteral("<Down>")});
    EXPECT_EQ(log(), "down 16777237 0;up 16777237 0;");
}

TEST_F(HeldInput, ModifiersAreHeldForOtherActions)
{
    play("keyPress", "keys", {QStringLiteral("<Ctrl>")});
    EXPECT_EQ(log(), "down 16777249 67108864;");
    play("mousePress", "area", {1, 2, int(Qt::ControlModifier), left});
    play("mouseRelease", "area", {1, 2, left});
    EXPECT_THAT(log(), HasSubstr("press 1 2 1 67108864;"));
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::ControlModifier) << "an action lets go of its own keys only";
    play("mouseClick", "area", {1, 2, int(Qt::ControlModifier), left});
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::ControlModifier);
    play("keyRelease", "keys", {QStringLiteral("<Ctrl>")});
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

TEST_F(HeldInput, KeyReleaseWithoutAPressIsAnError)
{
    EXPECT_EQ(failureOf("keyRelease", "keys", {QStringLiteral("<Shift>")}),
              "keyRelease failed: the key <Shift> is not held; keyPress has to come first");
    EXPECT_EQ(failureOf("keyPress", "keys", {QStringLiteral("<Foo>")}),
              "Cannot keyPress: \"<Foo>\" is no key: expected one character, or the name of a key such as \"<Shift>\"");
    play("keyPress", "keys", {QStringLiteral("a")});
    EXPECT_EQ(failureOf("keyPress", "keys", {QStringLiteral("a")}), "keyPress failed: the key a is held already");
}

TEST_F(HeldInput, AllIsLetGoAtTheEnd)
{
    play("keyPress", "keys", {QStringLiteral("<Shift>")});
    play("keyPress", "keys", {QStringLiteral("<Right>")});
    play("mousePress", "area", {1, 2, left});
    InputPlayer::letGo();
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
    EXPECT_THAT(log(), HasSubstr("release 1 2 1 "));
    EXPECT_THAT(log(), HasSubstr("up 16777236 "));
    InputPlayer::letGo();
    EXPECT_THAT(failureOf("mouseRelease", "area", {1, 2, left}), HasSubstr("is not held"));
}

TEST_F(HeldInput, LiteralTextIsTypedAsItStands)
{
    play("typeText", "input", {QStringLiteral("<Tab>\u00e9")});
    EXPECT_EQ(text("input"), "<Tab>\u00e9");
    play("typeText", "input", {QStringLiteral("<b>")});
    EXPECT_EQ(text("input"), "<Tab>\u00e9<b>");
    EXPECT_EQ(start("typeText", nameOf("input"), {QStringLiteral("\x01")}),
              "Cannot typeText: no key writes the character U+0001");
}
