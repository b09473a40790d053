#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TouchFlick : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
    TestObjectPtr list = makeObject("list", itemClass());
};

} // namespace

TEST_F(TouchFlick, goesToTheFlickableWithTheTimeOfTheFinger)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 10, 150)}, 1010));
    harness.eat(mouseMove(item, {10, 150}, 1011));
    harness.eat(flickStarted(list, item, {0, 10}, 1020));
    harness.eat(touchUpdate(item, {finger(1, 10, 100)}, 1030));
    harness.eat(wheel(item, {10, 100}, {0, 15}, 1035));
    harness.eat(touchEnd(item, {finger(1, 10, 50)}, 1040));
    EXPECT_EQ(harness.queued(), 7u);
    harness.eat(flickEnded(list, item, {4, 310}, 2000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 4/300 @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchFlick, doesNotCompareTheObjectsOfTheFlick)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(flickStarted(list, other, {0, 0}, 1020));
    harness.eat(touchEnd(item, {finger(1, 10, 50)}, 1040));
    harness.eat(flickEnded(other, list, {0, 9}, 2000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/9 @1000"));
}

TEST_F(TouchFlick, toleratesFurtherFingersInUpdates)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 10, 200), finger(2, 50, 60)}, 1010));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(touchEnd(item, {finger(1, 10, 50)}, 1040));
    harness.eat(flickEnded(list, item, {0, 9}, 2000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/9 @1000"));
}

TEST_F(TouchFlick, mustEndRightBehindTheTouch)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(touchEnd(item, {finger(1, 10, 50)}, 1040));
    harness.eat(mouseMove(item, {10, 50}, 1050));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(TouchFlick, modifierAheadOfItLeavesWhenTheFlickStarts)
{
    harness.eat(keyPress(item, "", 990, Modifier::Shift));
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    EXPECT_EQ(harness.queued(), 2u);
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    EXPECT_EQ(harness.queued(), 2u);
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::Shift);
    harness.eat(touchEnd(item, {finger(1, 10, 50)}, 1040));
    harness.eat(flickEnded(list, item, {0, 9}, 2000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/9 @1000"));
}

TEST_F(TouchFlick, moveAheadOfItDefeatsIt)
{
    harness.eat(mouseMove(item, {10, 200}, 990));
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchFlick, isDefeatedByTwoFingersAtTheBegin)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200), finger(2, 20, 20)}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchFlick, isDefeatedWhenAnotherFingerIsLifted)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(touchEnd(item, {finger(2, 10, 50)}, 1040));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchFlick, isDefeatedByAFlickThatEndsBeforeTheTouch)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(flickEnded(list, item, {0, 9}, 1030));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(TouchFlick, winsOverADragOfTheFinger)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 300, 300)}, 1010));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(touchEnd(item, {finger(1, 310, 310)}, 1040));
    harness.eat(flickEnded(list, item, {7, 8}, 1500));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 7/8 @1000"));
}

TEST_F(TouchFlick, fingerIsHeldWithoutAnAlarmAndLostInAFlush)
{
    harness.eat(touchBegin(item, {finger(1, 10, 200)}, 1000));
    harness.pass(60'000);
    EXPECT_EQ(harness.queued(), 1u);
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
    harness.flush();
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}
