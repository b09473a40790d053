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

class DoubleClick : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
    TestObjectPtr widget = makeObject("widget", widgetClass());
};

const QByteArray doubleClickOnItem = "doubleClick item (QQuickItem) 10/20 LeftButton None @1000";
const QByteArray clickOnItem = "mouseClick item (QQuickItem) 10/20 LeftButton None @1000";

} // namespace

TEST_F(DoubleClick, isWrittenAtTheSecondPressWithAllOfTheFirst)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {11, 20}, 1010));
    harness.eat(mouseRelease(item, {11, 20}, 1050));
    harness.eat(mouseMove(item, {12, 20}, 1080));
    harness.eat(mousePress(item, {12, 21}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
}

TEST_F(DoubleClick, needsNoItem)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {10, 20}, 1050));
    harness.eat(mousePress(widget, {10, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("doubleClick widget (TestWidget) 10/20 LeftButton None @1000"));
}

TEST_F(DoubleClick, carriesModifiersPressedAheadOfIt)
{
    harness.eat(mouseMove(item, {1, 2}, 900));
    harness.eat(keyPress(item, "", 910, Modifier::Alt));
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(mousePress(item, {10, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("doubleClick item (QQuickItem) 10/20 LeftButton [Alt] @1000"));
}

TEST_F(DoubleClick, gapMayReachTwiceTheDoubleClickTimeWhenNothingComesBetween)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.pass(799);
    harness.eat(mousePress(item, {10, 20}, 1849));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
}

TEST_F(DoubleClick, moveBehindTheReleaseEndsTheWaitOnceTheDoubleClickTimeHasPassed)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(mouseMove(item, {10, 20}, 1450)); // exactly the time: still waiting
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(mouseMove(item, {10, 20}, 1451));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(DoubleClick, firstClickMayTakeTheDoubleClickTimeButNotLonger)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1400));
    harness.eat(mousePress(item, {10, 20}, 1410));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
    harness.flush();

    harness.eat(mousePress(item, {10, 20}, 2000));
    harness.eat(mouseRelease(item, {10, 20}, 2401));
    harness.eat(mousePress(item, {10, 20}, 2402));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 10/20 LeftButton None @2000"));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(DoubleClick, secondPressOnAnotherObjectStartsAnew)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(mousePress(other, {10, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(mouseRelease(other, {10, 20}, 1150));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick other (QQuickItem) 10/20 LeftButton None @1100"));
}

TEST_F(DoubleClick, secondPressThroughAnotherWrapperOfTheObjectCounts)
{
    const TestObjectPtr alias = makeObject("alias", itemClass());
    alias->wrapSameAs(item.get());
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(alias, {10, 20}, 1050));
    harness.eat(mousePress(alias, {10, 20}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
}

TEST_F(DoubleClick, secondPressAtTheDragDistanceStartsAnew)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(mousePress(item, {12, 22}, 1100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(DoubleClick, secondPressOfAnotherButtonStartsAnew)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(mousePress(item, {10, 20}, 1100, MouseButton::RightButton));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(DoubleClick, releaseOnAnotherObjectIsNotWaitedFor)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(other, {10, 20}, 1050));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_FALSE(harness.isAlarmRunning());
}

TEST_F(DoubleClick, secondPressNeedNotBeReady)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(notReady(mousePress(item, {10, 20}, 1100)));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
}

TEST_F(DoubleClick, keyBehindTheClickEndsTheWait)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.eat(keyPress(item, "a", 1060));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(DoubleClick, thirdPressBeginsAPatternOfItsOwn)
{
    for (quint64 time : {1000, 1100, 1200}) {
        harness.eat(mousePress(item, {10, 20}, time));
        harness.eat(mouseRelease(item, {10, 20}, time + 50));
    }
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleClickOnItem));
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 10/20 LeftButton None @1200"));
}

TEST_F(DoubleClick, alarmTimeRelativeToAClockThatStandsBeforeTheReleaseEndsTheWait)
{
    // The difference is unsigned: a clock that was set back ends the wait.
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    harness.clock.setNow(500);
    harness.compressor.alarm(harness.alarmClock.runningId());
    EXPECT_THAT(harness.takeStatements(), SizeIs(1));
}
