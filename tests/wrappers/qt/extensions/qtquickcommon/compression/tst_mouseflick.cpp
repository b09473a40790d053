#include "support/compressionharness.h"
#include "support/syntheticevents.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MouseFlick : public testing::Test
{
protected:
    MouseFlick() { nothing->loseNative(); }

    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
    TestObjectPtr list = makeObject("list", itemClass());
    TestObjectPtr nothing = makeObject("nothing", itemClass());
};

} // namespace

TEST_F(MouseFlick, goesToTheFlickableWithTheWayOfItsContent)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(mouseMove(item, {10, 180}, 1010));
    harness.eat(flickStarted(list, item, {0, 5}, 1020));
    harness.eat(mouseMove(item, {10, 100}, 1030));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.eat(mouseMove(item, {10, 40}, 1500));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 6u);
    harness.eat(flickEnded(list, item, {-3, 205}, 3000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list -3/200 @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseFlick, endsWithTheObjectOfWhichTwoWrappersWereRecorded)
{
    other->wrapSameAs(item.get());
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, other, {0, 5}, 1020));
    EXPECT_EQ(harness.queued(), 2u);
    item->loseNative();
    other->loseNative();
    harness.eat(mouseMove(item, {10, 100}, 1030));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseFlick, asksNeitherForReadinessNorForModifiers)
{
    harness.eat(keyPress(item, "", 900, Modifier::Shift));
    harness.eat(makeEvent(SyntheticEvent::Invalid, item, 910));
    harness.eat(notReady(mousePress(item, {10, 200}, 1000)));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.eat(flickEnded(list, item, {0, 200}, 3000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/200 @1000"));
}

TEST_F(MouseFlick, allowsNoLeadingEvents)
{
    harness.eat(mouseMove(item, {10, 200}, 990));
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, isDefeatedByAFlickThatEndsBeforeTheRelease)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(flickEnded(list, item, {0, 200}, 1030));
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, isDefeatedByAFlickOfAnotherItem)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, other, {0, 0}, 1020));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, isDefeatedByTheEndOfAnotherItemsFlick)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.eat(flickEnded(list, other, {0, 200}, 1200));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, outlastsTheItemThatWasPressed)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(other, {10, 50}, 1040));
    item->loseNative();
    harness.eat(flickEnded(list, nothing, {0, 900}, 1900));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/900 @1000"));
}

TEST_F(MouseFlick, whoseItemIsGoneEndsWithTheFlickableThatBeganIt)
{
    const TestObjectPtr otherList = makeObject("otherList", itemClass());
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(other, {10, 50}, 1040));
    item->loseNative();
    harness.eat(flickEnded(otherList, nothing, {0, 900}, 1900));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, whoseItemIsGoneDoesNotEndWithAFlickableThatIsGoneToo)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(other, {10, 50}, 1040));
    item->loseNative();
    harness.eat(flickEnded(nothing, nothing, {0, 900}, 1900));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, comparesTheItemsOfItsEventsWithTheItemThatWasPressed)
{
    const SyntheticEvent press = mousePress(item, {10, 200}, 1000);
    EXPECT_TRUE(isFlickEvent(flickStarted(list, item, {}, 1020), press, SyntheticEvent::FlickStarted));
    EXPECT_FALSE(isFlickEvent(flickStarted(list, item, {}, 1020), press, SyntheticEvent::FlickEnded));
    EXPECT_FALSE(isFlickEvent(flickStarted(item, list, {}, 1020), press, SyntheticEvent::FlickStarted));
    EXPECT_FALSE(isFlickEvent(press, press, SyntheticEvent::FlickStarted));
    item->loseNative();
    EXPECT_FALSE(isFlickEvent(flickEnded(list, nothing, {}, 1020), press, SyntheticEvent::FlickEnded));
}

TEST_F(MouseFlick, beginsOnTheItemThatWasPressed)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    item->loseNative();
    harness.eat(flickStarted(list, nothing, {0, 0}, 1020));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseFlick, isDefeatedByTheEndOfAFlickThatLostAnotherItem)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.eat(flickEnded(list, nothing, {0, 200}, 1200));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, isDefeatedByAReleaseOfAnotherButton)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040, MouseButton::RightButton));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseFlick, anyOtherEventWhileItRunsOnDropsTheQueue)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.eat(keyPress(item, "a", 1100));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, runningOnIsHeldWithoutAnAlarmAndLostInAFlush)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(item, {10, 50}, 1040));
    harness.pass(60'000);
    EXPECT_EQ(harness.queued(), 3u);
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseFlick, releaseMayComeOverAnotherObject)
{
    harness.eat(mousePress(item, {10, 200}, 1000));
    harness.eat(flickStarted(list, item, {0, 0}, 1020));
    harness.eat(mouseRelease(other, {10, 50}, 1040));
    harness.eat(flickEnded(list, item, {0, 200}, 1200));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("flick list 0/200 @1000"));
}
