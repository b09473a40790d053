#include "wrappers/qt/functions/replayscene.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QWheelEvent>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// When the notches of the wheel came: as the events say, and in milliseconds of the clock.
class WheelTimes : public QObject
{
public:
    WheelTimes() { m_timer.start(); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Wheel) {
            stamps.push_back(static_cast<QWheelEvent *>(event)->timestamp());
            clock.push_back(m_timer.elapsed());
        }
        return false;
    }

    std::vector<quint64> stamps;
    std::vector<qint64> clock;

private:
    QElapsedTimer m_timer;
};

class MouseFunctions : public VantleTest::ReplayScene
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
                    onClicked: mouse => main.log += "click " + mouse.x + " " + mouse.y + " " + mouse.button + " "
                               + mouse.modifiers + ";"
                    onDoubleClicked: main.log += "double;"
                    onPressAndHold: main.log += "hold;"
                    onEntered: main.log += "enter;"
                    onWheel: wheel => main.log += "wheel " + wheel.angleDelta.x + " " + wheel.angleDelta.y + ";"
                }
                Item {
                    objectName: "turned"; x: 200; y: 60; width: 60; height: 30; rotation: 90; scale: 2
                    MouseArea {
                        objectName: "turnedArea"; anchors.fill: parent
                        onClicked: mouse => main.log += "turned " + mouse.x + " " + mouse.y + ";"
                    }
                }
                Rectangle {
                    objectName: "box"; x: 20; y: 150; width: 50; height: 50
                    DragHandler {}
                }
                Slider { objectName: "slider"; x: 150; y: 200; width: 200; height: 30; from: 0; to: 100 }
                Text {
                    objectName: "tapped"; x: 150; y: 150; width: 50; height: 30; text: "tap"
                    property int taps: 0; property int lastCount: 0
                    TapHandler { onTapped: { ++parent.taps; parent.lastCount = tapCount } }
                }
                Flickable {
                    objectName: "list"; x: 300; width: 100; height: 100; contentHeight: 1000
                    Rectangle { objectName: "content"; width: 100; height: 1000 }
                }
            })");
    }

    std::string log() { return property("main", "log").toString().toStdString(); }
};

} // namespace

TEST_F(MouseFunctions, ClickGoesToThePixelThatIsRecordedAgain)
{
    play("mouseClick", "area", {12, 34, int(Qt::LeftButton)});
    EXPECT_EQ(log(), "enter;click 12 34 1 0;");
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(MouseFunctions, ClickWithoutCoordinatesGoesToTheMiddle)
{
    play("mouseClick", "area");
    EXPECT_EQ(recorded(), Lines({"mouseClick area 49 49 1"}));
}

TEST_F(MouseFunctions, ClickHoldsTheModifiersAsKeys)
{
    play("mouseClick", "area", {12, 34, int(Qt::ControlModifier | Qt::ShiftModifier), int(Qt::RightButton)});
    EXPECT_EQ(log(), "enter;click 12 34 2 100663296;");
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
    play("mouseClick", "area", {12, 34, int(Qt::MiddleButton)});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 100663296 2", "mouseClick area 12 34 4"}));
}

TEST_F(MouseFunctions, ClickWithModifiersButWithoutCoordinatesGoesToTheMiddle)
{
    play("mouseClick", "area", {int(Qt::AltModifier), int(Qt::LeftButton)});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 49 49 134217728 1"}));
}

TEST_F(MouseFunctions, ClickFindsItsPointInATurnedAndScaledItem)
{
    play("mouseClick", "turnedArea", {7, 9, int(Qt::LeftButton)});
    EXPECT_THAT(log(), HasSubstr("turned "));
    EXPECT_EQ(recorded(), Lines({"mouseClick turnedArea 7 9 1"}));
}

TEST_F(MouseFunctions, TwoClicksInOnePlaceAreNoDoubleClick)
{
    for (int i = 0; i < 2; ++i)
        play("mouseClick", "area", {12, 34, int(Qt::LeftButton)});
    EXPECT_EQ(log(), "enter;click 12 34 1 0;click 12 34 1 0;");
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1", "mouseClick area 12 34 1"}));
}

TEST_F(MouseFunctions, TwoClicksAreTwoSingleTapsOfAHandler)
{
    for (int i = 0; i < 2; ++i)
        play("mouseClick", "tapped", {5, 5, int(Qt::LeftButton)});
    EXPECT_EQ(property("tapped", "taps").toInt(), 2);
    EXPECT_EQ(property("tapped", "lastCount").toInt(), 1);
}

TEST_F(MouseFunctions, DoubleClickIsOne)
{
    play("doubleClick", "area", {12, 34, int(Qt::LeftButton)});
    EXPECT_EQ(log(), "enter;click 12 34 1 0;double;");
    EXPECT_EQ(recorded(), Lines({"doubleClick area 12 34 1"}));
}

TEST_F(MouseFunctions, DoubleClicksOfAllFormsAreRecordedAgain)
{
    play("doubleClick", "area");
    play("doubleClick", "area", {int(Qt::ShiftModifier), int(Qt::RightButton)});
    play("doubleClick", "area", {1, 2, int(Qt::ShiftModifier), int(Qt::LeftButton)});
    EXPECT_EQ(recorded(),
              Lines({"doubleClick area 49 49 1", "doubleClick area 49 49 33554432 2",
                     "doubleClick area 1 2 33554432 1"}));
}

TEST_F(MouseFunctions, LongClickIsHeld)
{
    play("longMouseClick", "area", {12, 34, int(Qt::LeftButton)});
    EXPECT_EQ(log(), "enter;hold;");
    EXPECT_EQ(recorded(), Lines({"longMouseClick area 12 34 1"}));
}

TEST_F(MouseFunctions, LongClicksOfAllFormsAreRecordedAgain)
{
    play("longMouseClick", "area");
    play("longMouseClick", "area", {0, int(Qt::RightButton)});
    play("longMouseClick", "area", {1, 2, int(Qt::ControlModifier), int(Qt::LeftButton)});
    EXPECT_EQ(recorded(),
              Lines({"longMouseClick area 49 49 1", "longMouseClick area 49 49 2",
                     "longMouseClick area 1 2 67108864 1"}));
}

TEST_F(MouseFunctions, DragIsMeasuredFromWhereItBecomesOne)
{
    play("mouseDrag", "box", {10, 10, 60, -40, 0, int(Qt::LeftButton)});
    // From the press: the drag became one 10 pixels behind it.
    EXPECT_EQ(find("box")->x(), 86);
    EXPECT_EQ(find("box")->y(), 106);
    EXPECT_EQ(recorded(), Lines({"mouseDrag box 10 10 60 -40 0 1"}));
}

TEST_F(MouseFunctions, DragsOfAllDirectionsAreRecordedAgain)
{
    Lines expected;
    for (const QPoint distance : {QPoint(1, 0), QPoint(0, -1), QPoint(0, 0), QPoint(-3, 7), QPoint(50, -49)}) {
        const std::string text = std::to_string(distance.x()) + ' ' + std::to_string(distance.y());
        play("mouseDrag", "area", {50, 50, distance.x(), distance.y(), 0, int(Qt::LeftButton)});
        expected.push_back("mouseDrag area 50 50 " + text + " 0 1");
    }
    EXPECT_EQ(recorded(), expected);
}

TEST_F(MouseFunctions, LongDragStaysStillFirst)
{
    play("longMouseDrag", "box", {10, 10, 30, 0, int(Qt::ShiftModifier), int(Qt::LeftButton)});
    EXPECT_EQ(recorded(), Lines({"longMouseDrag box 10 10 30 0 33554432 1"}));
}

TEST_F(MouseFunctions, DragMovesASlider)
{
    play("mouseDrag", "slider", {100, 15, 60, 0, 0, int(Qt::LeftButton)});
    EXPECT_NEAR(property("slider", "value").toReal(), 87, 3);
}

TEST_F(MouseFunctions, DragOfAFlickableComesToRest)
{
    play("mouseDrag", "content", {50, 80, 0, -40, 0, int(Qt::LeftButton)});
    EXPECT_NEAR(property("list", "contentY").toReal(), 40, 2);
    EXPECT_FALSE(property("list", "flicking").toBool());
}

TEST_F(MouseFunctions, WheelTurnsNotchByNotch)
{
    play("mouseWheel", "area", {12, 34, 0, -45, 0});
    EXPECT_EQ(log(), "enter;wheel 0 -120;wheel 0 -120;wheel 0 -120;");
    EXPECT_EQ(recorded(), Lines({"mouseWheel area 12 34 0 -45 0"}));
}

TEST_F(MouseFunctions, WheelTurnsOfAllSizesAreRecordedAgain)
{
    Lines expected;
    for (const QPoint delta : {QPoint(1, 0), QPoint(-7, 22), QPoint(0, 100)}) {
        play("mouseWheel", "area", {12, 34, delta.x(), delta.y(), int(Qt::ControlModifier)});
        expected.push_back("mouseWheel area 12 34 " + std::to_string(delta.x()) + ' ' + std::to_string(delta.y())
                           + " 67108864");
    }
    EXPECT_EQ(recorded(), expected);
}

TEST_F(MouseFunctions, WheelIsTurnedByWholeNotchesAndWhatIsLeft)
{
    play("mouseWheel", "area", {12, 34, 0, 40, 0});
    EXPECT_EQ(log(), "enter;wheel 0 120;wheel 0 120;wheel 0 80;");
}

TEST_F(MouseFunctions, WheelTakesTheTimeOfAHandBetweenNotches)
{
    WheelTimes times;
    window()->installEventFilter(&times);
    play("mouseWheel", "list", {50, 50, 0, -45, 0});
    ASSERT_EQ(times.stamps.size(), 3U);
    for (std::size_t i = 1; i < 3; ++i) {
        EXPECT_NEAR(static_cast<double>(times.stamps[i] - times.stamps[i - 1]), 50, 5);
        EXPECT_GE(times.clock[i] - times.clock[i - 1], 45);
    }
    EXPECT_GT(property("list", "contentY").toReal(), 0);
}

TEST_F(MouseFunctions, WheelLeavesTheContentWhereItIsTold)
{
    for (const int end : {123, 45}) {
        play("mouseWheel", "content", {50, 50 + property("list", "contentY").toInt(), 0, -75, 0, 0, end});
        EXPECT_EQ(property("list", "contentY").toReal(), end);
        EXPECT_FALSE(property("list", "moving").toBool());
    }
    // Nothing scrolls here.
    play("mouseWheel", "area", {12, 34, 0, -15, 0, 0, 10});
    EXPECT_THAT(log(), HasSubstr("wheel 0 -120;"));
}

TEST_F(MouseFunctions, WheelThatDoesNotTurnDoesNothing)
{
    play("mouseWheel", "area", {12, 34, 0, 0, 0});
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(MouseFunctions, ObjectsAreTakenInPlaceOfNames)
{
    ASSERT_EQ(start("mouseClick", wrap("area"), {12, 34, int(Qt::LeftButton)}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(MouseFunctions, WindowIsAnObjectToo)
{
    play("mouseClick", "main", {110, 250, int(Qt::LeftButton)});
    play("mouseDrag", "main", {110, 250, 30, 10, 0, int(Qt::LeftButton)});
    EXPECT_EQ(recorded(), Lines({"mouseClick main 110 250 1", "mouseDrag main 110 250 30 10 0 1"}));
}

TEST_F(MouseFunctions, CallsThatFollowEachOtherArePlayedInTheirOrder)
{
    ASSERT_EQ(start("mouseClick", nameOf("area"), {1, 1, int(Qt::LeftButton)}), "");
    ASSERT_EQ(start("doubleClick", nameOf("area"), {2, 2, int(Qt::LeftButton)}), "");
    ASSERT_EQ(start("mouseClick", nameOf("area"), {3, 3, int(Qt::LeftButton)}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(recorded(), Lines({"mouseClick area 1 1 1", "doubleClick area 2 2 1", "mouseClick area 3 3 1"}));
}

TEST_F(MouseFunctions, NameThatDenotesNothingIsAnError)
{
    const std::string error = start("mouseClick", value(QStringLiteral("Window#nobody")));
    EXPECT_THAT(error, HasSubstr("Cannot find Window#nobody: "));
    EXPECT_TRUE(InputPlayer::self()->isIdle());
}

TEST_F(MouseFunctions, ObjectThatCannotBeSeenIsAnError)
{
    const auto name = nameOf("area");
    const auto object = wrap("area");
    find("area")->setVisible(false);
    EXPECT_THAT(start("mouseClick", object), HasSubstr("the item is not visible"));
    EXPECT_THAT(start("mouseClick", name), HasSubstr("Cannot find "));
}

TEST_F(MouseFunctions, PointOutsideOfTheWindowIsAnError)
{
    EXPECT_THAT(start("mouseClick", nameOf("area"), {12, 340, int(Qt::LeftButton)}),
                HasSubstr("the point (12, 340) of the window, where it would be done, is outside of it"));
    EXPECT_THAT(start("mouseWheel", nameOf("area"), {-1, 5, 0, 15, 0}), HasSubstr("is outside of it"));
}

TEST_F(MouseFunctions, UnknownButtonsAndModifiersAreErrors)
{
    EXPECT_THAT(start("mouseClick", nameOf("area"), {1, 1, 3}), HasSubstr("No mouse button has the value 3"));
    EXPECT_THAT(start("mouseClick", nameOf("area"), {1, 1, 0}), HasSubstr("No mouse button has the value 0"));
    EXPECT_THAT(start("mouseClick", nameOf("area"), {1, 1, 1, 1}), HasSubstr("1 is no set of keyboard modifiers"));
}
