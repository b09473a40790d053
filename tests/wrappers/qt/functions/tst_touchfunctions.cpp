#include "hook/touchbuilder.h"
#include "wrappers/qt/functions/replayscene.h"

#include <QtCore/QRegularExpression>

#include <cmath>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class TouchFunctions : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 400; height: 300
                property string log
                MouseArea {
                    objectName: "area"; width: 100; height: 100
                    onClicked: main.log += "click;"
                    onDoubleClicked: main.log += "double;"
                }
                MultiPointTouchArea {
                    id: fingers
                    objectName: "fingers"; x: 100; width: 200; height: 200; mouseEnabled: false
                    property int most: 0
                    onPressed: points => { for (const p of points) main.log += "down " + p.x + " " + p.y + ";" }
                    onUpdated: points => { most = Math.max(most, points.length) }
                    onReleased: points => { for (const p of points) main.log += "up " + p.x + " " + p.y + ";" }
                }
                Rectangle {
                    objectName: "box"; x: 20; y: 150; width: 50; height: 50
                    DragHandler { id: dragger }
                }
                Rectangle {
                    objectName: "tapped"; x: 20; y: 210; width: 50; height: 50
                    property int taps: 0; property int lastCount: 0
                    TapHandler {
                        onTapped: { ++parent.taps; parent.lastCount = tapCount }
                        onLongPressed: main.log += "long;"
                    }
                }
                Flickable {
                    objectName: "list"; x: 310; width: 90; height: 100; contentHeight: 1000
                    Rectangle { objectName: "content"; width: 90; height: 1000 }
                }
            })");
    }

    std::string log() { return property("main", "log").toString().toStdString(); }

    /// What was recorded, as the only statement, is this gesture; by its text.
    static QString gestureIn(const std::string &line)
    {
        const QString text = QString::fromStdString(line);
        return text.mid(text.indexOf(u'<'));
    }

    /// Two fingers that come down one after the other, part, and leave one by one.
    static TouchBuilder::MultiTouchInfo pinch()
    {
        TouchBuilder::MultiTouchInfo info(400, 300, TouchBuilder::Pixels);
        const auto point = [](qint32 id, float x, float y, float pressure) {
            return TouchBuilder::Point{id, x, y, pressure, 8, 0};
        };
        info.steps = {
            {0, {point(1, 180, 100, 1)}},
            {20, {point(1, 180, 100, 1), point(2, 220, 100.5, 0.5)}},
            {60, {point(1, 160, 100, 1), point(2, 240, 100, 0.5)}},
            {100, {point(1, 140, 100, 1), point(2, 260, 100, 0.5)}},
            {140, {point(1, 140, 100, 0), point(2, 260, 100, 0.5)}},
            {160, {point(2, 262, 110, 0)}},
        };
        return info;
    }
    static QString xml(const TouchBuilder::MultiTouchInfo &info) { return QString::fromUtf8(info.toXml("  ", 1)); }
};

/// The differences between two gestures that a user or a script could care
/// about: times may differ by what a busy machine needs.
void expectSameGesture(const TouchBuilder::MultiTouchInfo &actual, const TouchBuilder::MultiTouchInfo &expected)
{
    EXPECT_EQ(actual.areaWidth(), expected.areaWidth());
    EXPECT_EQ(actual.areaHeight(), expected.areaHeight());
    ASSERT_EQ(actual.steps.size(), expected.steps.size());
    for (std::size_t i = 0; i < actual.steps.size(); ++i) {
        EXPECT_EQ(actual.steps[i].points, expected.steps[i].points) << "step " << i;
        // Times count from the first step, which may have been late itself.
        EXPECT_GE(actual.steps[i].time + 20, expected.steps[i].time) << "step " << i;
    }
}

} // namespace

TEST_F(TouchFunctions, TapGoesToThePixelThatIsRecordedAgain)
{
    play("tapObject", "area", {12, 34});
    EXPECT_EQ(log(), "click;");
    EXPECT_EQ(recorded(), Lines({"tapObject area 12 34"}));
}

TEST_F(TouchFunctions, TapsOfAllFormsAreRecordedAgain)
{
    play("tapObject", "area");
    play("tapObject", "area", {int(Qt::ControlModifier)});
    play("tapObject", "area", {1, 2, int(Qt::ShiftModifier)});
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
    EXPECT_EQ(recorded(),
              Lines({"tapObject area 49 49", "tapObject area 49 49 67108864", "tapObject area 1 2 33554432"}));
}

TEST_F(TouchFunctions, TwoTapsInOnePlaceAreNoDoubleTap)
{
    for (int i = 0; i < 2; ++i)
        play("tapObject", "area", {12, 34});
    EXPECT_EQ(log(), "click;click;");
    EXPECT_EQ(recorded(), Lines({"tapObject area 12 34", "tapObject area 12 34"}));
}

TEST_F(TouchFunctions, TwoTapsAreTwoSingleTapsOfAHandler)
{
    for (int i = 0; i < 2; ++i)
        play("tapObject", "tapped", {5, 5});
    EXPECT_EQ(property("tapped", "taps").toInt(), 2);
    EXPECT_EQ(property("tapped", "lastCount").toInt(), 1);
}

TEST_F(TouchFunctions, DoubleTapsOfAllFormsAreRecordedAgain)
{
    play("doubleTap", "area", {12, 34});
    EXPECT_EQ(log(), "click;double;");
    play("doubleTap", "tapped");
    EXPECT_EQ(property("tapped", "lastCount").toInt(), 2);
    play("doubleTap", "area", {int(Qt::ControlModifier)});
    play("doubleTap", "area", {1, 2, int(Qt::ShiftModifier)});
    EXPECT_EQ(recorded(),
              Lines({"doubleTap area 12 34", "doubleTap tapped 24 24", "doubleTap area 49 49 67108864",
                     "doubleTap area 1 2 33554432"}));
}

TEST_F(TouchFunctions, DragMovesAnItem)
{
    play("touchAndDrag", "box", {10, 10, 60, -40});
    EXPECT_EQ(find("box")->x(), 86);
    EXPECT_EQ(find("box")->y(), 106);
    EXPECT_EQ(recorded(), Lines({"touchAndDrag box 10 10 60 -40"}));
}

TEST_F(TouchFunctions, DragsOfAllFormsAreRecordedAgain)
{
    play("touchAndDrag", "area", {50, 50, 1, 0});
    play("touchAndDrag", "area", {50, 50, 0, -30, int(Qt::ShiftModifier)});
    play("touchAndDrag", "area", {50, 50, 0, 0, 0, 0});
    EXPECT_EQ(recorded(),
              Lines({"touchAndDrag area 50 50 1 0", "touchAndDrag area 50 50 0 -30 33554432",
                     "touchAndDrag area 50 50 0 0"}));
}

TEST_F(TouchFunctions, DelayIsHowLongTheFingerStays)
{
    play("touchAndDrag", "tapped", {10, 10, 30, 0, 0, 1000});
    EXPECT_EQ(log(), "long;");
    const Lines lines = recorded();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines.front(), StartsWith("touchAndDrag tapped 10 10 30 0 0 10"));
}

TEST_F(TouchFunctions, DragOfAFlickableComesToRest)
{
    play("touchAndDrag", "content", {50, 80, 0, -40});
    // Where exactly the flickable takes over depends on when frames are drawn.
    EXPECT_NEAR(property("list", "contentY").toReal(), 40, 10);
    EXPECT_FALSE(property("list", "flicking").toBool());
}

TEST_F(TouchFunctions, GestureIsMadeFingerByFingerAndRecordedAgain)
{
    play("gesture", "main", {xml(pinch())});
    EXPECT_EQ(log(), "down 80 100;down 120 100.5;up 40 100;up 162 110;");
    EXPECT_EQ(property("fingers", "most").toInt(), 2);
    const Lines lines = recorded();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines.front(), StartsWith("gesture main "));
    QString problem;
    const auto again = TouchBuilder::MultiTouchInfo::fromXml(gestureIn(lines.front()).toUtf8(), &problem);
    ASSERT_TRUE(again) << problem.toStdString();
    expectSameGesture(*again, pinch());
}

TEST_F(TouchFunctions, GestureOnAnItemIsInTheCoordinatesOfTheItem)
{
    ASSERT_EQ(start("gesture", wrap("fingers"), {xml(pinch())}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_THAT(log(), StartsWith("down 180 100;"));
}

TEST_F(TouchFunctions, FingerInASingleStepComesDownAndLeaves)
{
    play("gesture", "main",
         {QStringLiteral("<gesture width='400' height='300' unit='pixels'><step time='0'>"
                         "<point id='7' x='150' y='50' pressure='1' size='-1'/></step></gesture>")});
    EXPECT_EQ(log(), "down 50 50;up 50 50;");
}

TEST_F(TouchFunctions, GesturesThatCannotBeReadAreErrors)
{
    EXPECT_THAT(start("gesture", nameOf("main"), {QStringLiteral("<pinch/>")}),
                HasSubstr("Cannot play the gesture: line 1, column 1: expected <gesture>, found <pinch>"));
    EXPECT_THAT(start("gesture", nameOf("main"), {QString()}), HasSubstr("Cannot play the gesture: "));
}

TEST_F(TouchFunctions, GesturesThatNoHandCouldMakeAreErrors)
{
    TouchBuilder::MultiTouchInfo info(400, 300, TouchBuilder::Pixels);
    EXPECT_THAT(start("gesture", nameOf("main"), {xml(info)}), HasSubstr("no finger touches anything in it"));
    info = pinch();
    info.steps[2].time = 5;
    EXPECT_THAT(start("gesture", nameOf("main"), {xml(info)}),
                HasSubstr("the step at 5 ms comes behind the one at 20 ms"));
    info = pinch();
    info.steps[1].points[1].id = 1;
    EXPECT_THAT(start("gesture", nameOf("main"), {xml(info)}),
                HasSubstr("the step at 20 ms has the same finger twice"));
}

TEST_F(TouchFunctions, NegativeDelayIsAnError)
{
    EXPECT_THAT(start("touchAndDrag", nameOf("area"), {1, 1, 10, 0, 0, -1}), HasSubstr("the delay -1 ms is negative"));
}

TEST_F(TouchFunctions, InvisibleObjectsAndPointsOutsideAreErrors)
{
    EXPECT_THAT(start("tapObject", nameOf("area"), {500, 1}), HasSubstr("is outside of it"));
    find("area")->setVisible(false);
    EXPECT_THAT(start("tapObject", wrap("area")), HasSubstr("the item is not visible"));
    EXPECT_THAT(start("gesture", wrap("area"), {xml(pinch())}), HasSubstr("the item is not visible"));
}
