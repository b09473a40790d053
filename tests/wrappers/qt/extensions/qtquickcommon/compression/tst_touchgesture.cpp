#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class TouchGesture : public testing::Test
{
protected:
    TouchBuilder::MultiTouchInfo takeGesture()
    {
        const std::vector<Statement> statements = harness.takeStatementValues();
        if (statements.size() != 1 || !statements.front().gesture) {
            ADD_FAILURE() << "not one gesture but " << statements.size() << " statements";
            return TouchBuilder::MultiTouchInfo(0, 0, TouchBuilder::Pixels);
        }
        return *statements.front().gesture;
    }

    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
};

} // namespace

TEST_F(TouchGesture, hasOneStepForTheBeginOnePerUpdateAndOneForTheEnd)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 5, 5), finger(2, 55, 55)}, 1100));
    harness.eat(mouseMove(item, {5, 5}, 1101));
    harness.eat(wheel(item, {5, 5}, {0, 15}, 1102));
    harness.eat(touchUpdate(item, {finger(1, 0, 0), finger(2, 60, 60)}, 1200));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(touchEnd(item, {finger(1, 0, 0), finger(2, 60, 60)}, 1300));
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("gesture window area 640x480"
                            " +0{ 1:10/10 pressure=1 size=-1 2:50/50 pressure=1 size=-1 }"
                            " +100{ 1:5/5 pressure=1 size=-1 2:55/55 pressure=1 size=-1 }"
                            " +200{ 1:0/0 pressure=1 size=-1 2:60/60 pressure=1 size=-1 }"
                            " +300{ 1:0/0 pressure=1 size=-1 2:60/60 pressure=1 size=-1 }"
                            " None @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchGesture, goesToTheWindowOfTheTouchAndNotToTheItemUnderTheFinger)
{
    const TestObjectPtr dialog = makeObject("dialog", widgetClass());
    SyntheticEvent begin = touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000);
    begin.touch.object = dialog;
    begin.touch.objectName = "the dialog";
    harness.eat(begin);
    harness.eat(touchEnd(item, {finger(1, 0, 0)}, 1300));
    const std::vector<Statement> statements = harness.takeStatementValues();
    ASSERT_THAT(statements, SizeIs(1));
    EXPECT_EQ(statements[0].object, dialog.get());
    EXPECT_EQ(statements[0].objectName, "the dialog");
}

TEST_F(TouchGesture, stepsAreInWindowCoordinatesAndNotInThoseOfTheScreen)
{
    SyntheticEvent::TouchPoint first = finger(1, 1000, 2000);
    first.x = 3.5;
    first.y = 4.25;
    first.pressure = 0.5;
    first.width = 6;
    first.height = 8;
    harness.eat(touchBegin(item, {first, finger(2, 50, 50)}, 1000));
    harness.eat(touchEnd(item, {first}, 1300));
    const TouchBuilder::Point point = takeGesture().steps.at(0).points.at(0);
    EXPECT_EQ(point, (TouchBuilder::Point{.id = 1, .x = 3.5f, .y = 4.25f, .pressure = 0.5f, .size = 8}));
}

TEST_F(TouchGesture, sizeIsUnknownForAContactWithoutExtent)
{
    SyntheticEvent::TouchPoint flat = finger(1, 0, 0);
    flat.width = -3;
    flat.height = 0;
    harness.eat(touchBegin(item, {flat, finger(2, 50, 50)}, 1000));
    harness.eat(touchEnd(item, {flat}, 1300));
    EXPECT_EQ(takeGesture().steps.at(0).points.at(0).size, -1.0f);
}

TEST_F(TouchGesture, isMadeByASecondFingerInAnUpdateAlone)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1100));
    harness.eat(touchUpdate(item, {finger(1, 10, 10)}, 1200));
    harness.eat(touchEnd(item, {finger(1, 10, 10)}, 1300));
    EXPECT_THAT(takeGesture().steps, SizeIs(4));
}

TEST_F(TouchGesture, isMadeByASecondFingerAtTheEndAlone)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1300));
    EXPECT_THAT(takeGesture().steps, SizeIs(2));
}

TEST_F(TouchGesture, maySwapThePrimaryFinger)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    SyntheticEvent end = touchEnd(item, {finger(2, 10, 10)}, 1300);
    end.touch.primaryIndex = noPrimaryFinger;
    harness.eat(end);
    EXPECT_THAT(takeGesture().steps, SizeIs(2));
}

TEST_F(TouchGesture, carriesModifiersPressedAheadOfIt)
{
    harness.eat(keyPress(item, "", 900, Modifier::Control));
    harness.eat(keyPress(item, "", 950, Modifier::Shift));
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 10, 10)}, 1300));
    const std::vector<Statement> statements = harness.takeStatementValues();
    ASSERT_THAT(statements, SizeIs(1));
    EXPECT_EQ(statements[0].modifiers, Modifier::Control | Modifier::Shift);
}

TEST_F(TouchGesture, allowsNoMoveAheadOfIt)
{
    harness.eat(mouseMove(item, {10, 10}, 900));
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchGesture, isDefeatedByAKeyInside)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.eat(keyPress(item, "", 1100, Modifier::Shift));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(TouchGesture, isDefeatedByASecondBegin)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.eat(touchBegin(item, {finger(3, 10, 10)}, 1100));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchGesture, isHeldWithoutAnAlarmAndLostInAFlush)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.pass(60'000);
    EXPECT_EQ(harness.queued(), 1u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(TouchGesture, timeOfAStepIsCutTo32Bits)
{
    harness.eat(touchBegin(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 10, 10)}, 1000 + (quint64(1) << 32) + 7));
    EXPECT_EQ(takeGesture().steps.at(1).time, 7u);
}

TEST_F(TouchGesture, mayBeginWithoutAnyFinger)
{
    harness.eat(touchBegin(item, {}, 1000));
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(touchUpdate(item, {finger(1, 10, 10), finger(2, 50, 50)}, 1100));
    harness.eat(touchEnd(item, {}, 1300));
    EXPECT_THAT(takeGesture().steps, SizeIs(3));
}
