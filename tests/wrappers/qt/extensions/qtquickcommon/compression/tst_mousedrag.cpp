#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MouseDrag : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass(), {5, 5});
    TestObjectPtr button = makeObject("button", buttonClass());
    TestObjectPtr widget = makeObject("widget", widgetClass(), {5, 5});
};

} // namespace

TEST_F(MouseDrag, beginsExactlyAtTheDragDistance)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {14, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 4/0 LeftButton None @1000"));
}

TEST_F(MouseDrag, oneLessThanTheDragDistanceIsAClick)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {13, 20}, 1100));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick widget (TestWidget) 5/15 LeftButton None @1000"));
}

TEST_F(MouseDrag, distanceIsTheSumOfBothAxes)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {13, 23}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 3/3 LeftButton None @1000"));
}

TEST_F(MouseDrag, pointerThatCameBackMadeNoDrag)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseMove(widget, {500, 500}, 1050));
    harness.eat(mouseRelease(widget, {10, 20}, 1100));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick widget (TestWidget) 5/15 LeftButton None @1000"));
}

TEST_F(MouseDrag, isMeasuredFromTheCrossingMoveOnAnItem)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {13, 20}, 1010)); // 3: not yet out
    harness.eat(mouseMove(item, {12, 22}, 1020)); // 4: out
    harness.eat(mouseMove(item, {40, 40}, 1030));
    harness.eat(mouseRelease(item, {50, 60}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag item 5/15 38/38 LeftButton None @1000"));
}

TEST_F(MouseDrag, isMeasuredFromThePressOnAnythingElse)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseMove(widget, {12, 22}, 1020));
    harness.eat(mouseRelease(widget, {50, 60}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 40/40 LeftButton None @1000"));
}

TEST_F(MouseDrag, withoutACrossingMoveIsMeasuredFromThePressOnAnItemToo)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {11, 20}, 9000));
    harness.eat(mouseRelease(item, {50, 60}, 9100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag item 5/15 40/40 LeftButton None @1000"));
}

TEST_F(MouseDrag, isLongOnAnItemWhenThePressWasHeldBeforeThePointerSetOff)
{
    harness.eat(mousePress(button, {10, 20}, 1000));
    harness.eat(mouseMove(button, {20, 20}, 1801));
    harness.eat(mouseRelease(button, {30, 20}, 1900));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag button 10/20 10/0 LeftButton None long @1000"));
}

TEST_F(MouseDrag, isNotLongWhenThePointerSetsOffAfterExactlyTwiceTheDoubleClickTime)
{
    harness.eat(mousePress(button, {10, 20}, 1000));
    harness.eat(mouseMove(button, {20, 20}, 1800));
    harness.eat(mouseRelease(button, {30, 20}, 1900));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag button 10/20 10/0 LeftButton None @1000"));
}

TEST_F(MouseDrag, thatTakesLongIsNotALongDrag)
{
    harness.eat(mousePress(button, {10, 20}, 1000));
    harness.eat(mouseMove(button, {20, 20}, 1010));
    harness.eat(mouseRelease(button, {30, 20}, 60'000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag button 10/20 10/0 LeftButton None @1000"));
}

TEST_F(MouseDrag, isNeverLongOnAnythingButAnItem)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseMove(widget, {20, 20}, 9000));
    harness.eat(mouseRelease(widget, {30, 20}, 9100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 20/0 LeftButton None @1000"));
}

TEST_F(MouseDrag, releaseOfAnotherButtonDropsTheQueue)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {30, 20}, 1010));
    harness.eat(mouseRelease(item, {50, 20}, 1100, MouseButton::MiddleButton));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseDrag, mayEndOverAnotherObject)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {50, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 40/0 LeftButton None @1000"));
}

TEST_F(MouseDrag, carriesModifiersPressedAheadOfIt)
{
    harness.eat(keyPress(item, "", 900, Modifier::Control));
    harness.eat(mouseMove(item, {10, 20}, 950));
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {50, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag widget 5/15 40/0 LeftButton [Control] @1000"));
}

TEST_F(MouseDrag, withoutItsReleaseIsLostInAFlush)
{
    harness.eat(mouseMove(widget, {0, 0}, 900));
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseMove(widget, {50, 20}, 1050));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseDrag, measuresTheWidestPossibleDistanceWithoutOverflow)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    harness.settings.distance = most;
    harness.eat(mousePress(widget, {least, least}, 1000));
    harness.eat(mouseRelease(widget, {most, most}, 1100));
    EXPECT_EQ(harness.takeStatementValues().at(0).method, "mouseDrag");
}
