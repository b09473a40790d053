#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Wheel : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
};

} // namespace

TEST_F(Wheel, turnsAreSummedUpAtThePositionOfTheFirst)
{
    harness.eat(wheel(item, {10, 20}, {0, 120}, 1000));
    harness.eat(mouseMove(item, {11, 20}, 1010));
    harness.eat(wheel(item, {30, 40}, {5, 120}, 1020));
    harness.eat(mouseMove(item, {12, 20}, 1030));
    harness.eat(wheel(item, {50, 60}, {-2, 120}, 1040));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(keyPress(item, "a", 1050));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 3/360 None @1000"));
    EXPECT_EQ(harness.queued(), 1u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type item \"a\" @1050"));
}

TEST_F(Wheel, turnOnAnotherObjectClosesTheRun)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(wheel(other, {10, 20}, {0, 30}, 1010));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 None @1000"));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel other 10/20 0/30 None @1010"));
}

TEST_F(Wheel, moveEndsTheRunOnTwoWrappersWhoseNativeObjectIsGone)
{
    other->wrapSameAs(item.get());
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(wheel(other, {10, 20}, {0, 30}, 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    item->loseNative();
    other->loseNative();
    harness.eat(mouseMove(item, {11, 20}, 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 None @1000"));
}

TEST_F(Wheel, turnOnAnObjectThatIsNotReadyEndsTheRunAndIsDropped)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(notReady(wheel(item, {10, 20}, {0, 30}, 1010)));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 None @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Wheel, firstTurnMustBeReady)
{
    harness.eat(notReady(wheel(item, {10, 20}, {0, 15}, 1000)));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Wheel, movesBehindTheLastTurnAreConsumedWithIt)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(mouseMove(item, {11, 20}, 1010));
    harness.eat(mouseMove(item, {12, 20}, 1020));
    harness.compressor.finishCompression();
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 None @1000"));
    harness.compressor.resetInput();
}

TEST_F(Wheel, runIsHeldWithoutAnAlarm)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.pass(60'000);
    EXPECT_EQ(harness.queued(), 1u);
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
}

TEST_F(Wheel, carriesModifiersPressedAheadOfIt)
{
    harness.eat(mouseMove(item, {10, 20}, 900));
    harness.eat(keyPress(item, "", 910, Modifier::Control));
    harness.eat(mouseMove(item, {10, 20}, 920));
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    EXPECT_EQ(harness.queued(), 4u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 [Control] @1000"));
}

TEST_F(Wheel, turnsThatCancelOutAreStillWritten)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(wheel(item, {10, 20}, {0, -15}, 1010));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/0 None @1000"));
}

TEST_F(Wheel, pressBehindARunEndsItAndGoesOn)
{
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1000));
    harness.eat(mousePress(item, {10, 20}, 1010));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseWheel item 10/20 0/15 None @1000"));
    EXPECT_EQ(harness.queued(), 1u);
}
