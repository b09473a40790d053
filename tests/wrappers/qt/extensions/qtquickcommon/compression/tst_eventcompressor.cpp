#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"

#include "hook/eventdata.h"
#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QByteArray clickOnItem = "mouseClick item (QQuickItem) 10/20 LeftButton None @1000";

class EventCompressorTest : public testing::Test
{
protected:
    void click(quint64 time)
    {
        harness.eat(mousePress(item, {10, 20}, time));
        harness.eat(mouseRelease(item, {10, 20}, time + 100));
    }

    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
    TestObjectPtr widget = makeObject("widget", widgetClass());
};

/// Does something each time that a statement reaches it.
class ActingObserver : public EventCompressorObserver
{
public:
    void handleCompressedEvent(const EventData &statement) override
    {
        names.push_back(statement.objectName());
        if (action)
            action();
    }

    std::function<void()> action;
    std::vector<QString> names;
};

class ThrowingObserver : public EventCompressorObserver
{
    void handleCompressedEvent(const EventData &) override { throw std::runtime_error("refused"); }
};

} // namespace

TEST_F(EventCompressorTest, clickIsHeldUntilTheAlarmRings)
{
    click(1000);
    EXPECT_EQ(harness.queued(), 2u);
    EXPECT_THAT(harness.alarmClock.calls, ElementsAre(TestAlarmClock::Call{1, 800}));
    harness.pass(799);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.pass(1);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(EventCompressorTest, flushWritesAHeldClickAtOnce)
{
    click(1000);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, flushStopsTheAlarm)
{
    click(1000);
    harness.flush();
    EXPECT_THAT(harness.alarmClock.calls,
                ElementsAre(TestAlarmClock::Call{1, 800}, TestAlarmClock::Call{1, std::nullopt}));
}

TEST_F(EventCompressorTest, secondReleaseOfADoubleClickIsDropped)
{
    click(1000);
    harness.eat(mousePress(item, {10, 20}, 1200));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("doubleClick item (QQuickItem) 10/20 LeftButton None @1000"));
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseRelease(item, {10, 20}, 1250));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, pressAloneWaitsWithoutLimitAndAFlushDropsIt)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.pass(1'000'000);
    EXPECT_EQ(harness.queued(), 1u);
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
    harness.flush();
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseRelease(item, {10, 20}, 1'002'000));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, pressAloneIsDroppedByAResetWithoutAFlush)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.compressor.resetInput();
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseRelease(item, {10, 20}, 1100));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, finishingLeavesPatternsBehindTheOneThatCompletedAsTheyWere)
{
    harness.eat(keyPress(item, "a", 1000));
    harness.compressor.finishCompression();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type item \"a\" @1000"));
    harness.eat(keyPress(item, "b", 1100));
    EXPECT_EQ(harness.queued(), 0u) << "typing, which completed, waits no longer";
    harness.eat(wheel(item, {10, 20}, {0, 15}, 1200));
    EXPECT_EQ(harness.queued(), 1u) << "the wheel, which was not asked, does";
}

TEST_F(EventCompressorTest, buttonThatAMoveCarriesCountsForNothing)
{
    const auto moveWithButton = [this](QPoint point, quint64 time) {
        SyntheticEvent move = mouseMove(item, point, time);
        move.button = MouseButton::RightButton;
        return move;
    };
    harness.eat(moveWithButton({9, 20}, 990));
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(moveWithButton({11, 20}, 1010));
    harness.eat(mouseRelease(item, {10, 20}, 1100));
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    harness.eat(mousePress(item, {10, 20}, 3000));
    harness.eat(moveWithButton({50, 20}, 3010));
    harness.eat(mouseRelease(item, {60, 20}, 3100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseDrag item 10/20 10/0 LeftButton None @3000"));
}

TEST_F(EventCompressorTest, moveBehindAHeldClickRestartsTheAlarmForTheFullTime)
{
    click(1000);
    harness.eat(mouseMove(item, {11, 20}, 1300));
    EXPECT_THAT(harness.alarmClock.calls,
                ElementsAre(TestAlarmClock::Call{1, 800}, TestAlarmClock::Call{1, std::nullopt},
                            TestAlarmClock::Call{2, 800}));
    harness.pass(799);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.pass(1);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, alarmOfAnotherIdChangesNothing)
{
    click(1000);
    harness.clock.setNow(5000);
    const auto calls = harness.alarmClock.calls;
    harness.compressor.alarm(7);
    EXPECT_EQ(harness.queued(), 2u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.alarmClock.calls, calls);
    harness.compressor.alarm(1);
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(EventCompressorTest, clockThatRepeatsIsIgnoredUnderItsOldId)
{
    click(1000);
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
    harness.eat(mousePress(item, {10, 20}, 5000));
    harness.eat(mouseRelease(item, {10, 20}, 5050));
    // The second click has an alarm of its own; the first one's rings on.
    harness.clock.setNow(9000);
    harness.compressor.alarm(1);
    EXPECT_EQ(harness.queued(), 2u);
}

TEST_F(EventCompressorTest, rungAlarmIsNotStopped)
{
    click(1000);
    harness.pass(800);
    EXPECT_THAT(harness.alarmClock.calls, ElementsAre(TestAlarmClock::Call{1, 800}));
}

TEST_F(EventCompressorTest, statementDoesNotCancelARunningAlarm)
{
    click(1000);
    harness.eat(mousePress(item, {10, 20}, 1200));
    EXPECT_THAT(harness.takeStatements(), testing::SizeIs(1));
    EXPECT_THAT(harness.alarmClock.calls, ElementsAre(TestAlarmClock::Call{1, 800}));
    EXPECT_TRUE(harness.isAlarmRunning());
}

TEST_F(EventCompressorTest, alarmZeroRunsTheLoopWhileNoneIsRunning)
{
    harness.compressor.setAlarmClock(nullptr);
    click(1000);
    harness.clock.setNow(1501);
    harness.compressor.alarm(0);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, withoutAClockAHeldClickLeavesWithALaterEvent)
{
    harness.compressor.setAlarmClock(nullptr);
    click(1000);
    harness.pass(10'000);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(mouseMove(item, {11, 20}, 11'000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, withoutAClockAHeldClickLeavesWithTheFlush)
{
    harness.compressor.setAlarmClock(nullptr);
    click(1000);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, timeOfAnEatenEventIsItsOwnAndNotTheClocks)
{
    click(1000);
    // Long past by the clock, but not for the event.
    harness.clock.setNow(100'000);
    harness.compressor.eatEvent(mouseMove(item, {10, 20}, 1200));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, oneEventCanReleaseSeveralStatements)
{
    harness.eat(windowMove(widget, {0, 0}, {5, 5}, 1000));
    harness.eat(windowMove(widget, {5, 5}, {9, 9}, 1010));
    harness.eat(inputMethod(item, "ab", 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("moveWindow widget 9/9 @1000", "type item \"ab\" @1020"));
}

TEST_F(EventCompressorTest, unclaimedEventTakesTheWholeQueueWithIt)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {10, 21}, 1010));
    harness.eat(makeEvent(SyntheticEvent::Invalid, item, 1020));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, newRecordIsClaimedByNoPattern)
{
    harness.compressor.eatEvent(SyntheticEvent());
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, pressOnAnObjectThatIsNotReadyIsHeldUntilTheNextEventDropsIt)
{
    harness.eat(notReady(mousePress(item, {10, 20}, 1000)));
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(mouseRelease(item, {10, 20}, 1050));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, loneMoveIsHeld)
{
    harness.eat(mouseMove(item, {10, 20}, 1000));
    EXPECT_EQ(harness.queued(), 1u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(EventCompressorTest, modifiersOfRemovedKeyPressesStayInForce)
{
    harness.eat(keyPress(item, "", 1000, Modifier::Shift));
    // Held as the possible head of a gesture: nothing was removed yet.
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::None);
    harness.eat(makeEvent(SyntheticEvent::Invalid, item, 1010));
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::Shift);
}

TEST_F(EventCompressorTest, keyReleaseClearsOnlyTheModifiersThatItCarries)
{
    harness.eat(keyPress(item, "", 1000, Modifier::Shift | Modifier::Control));
    harness.eat(makeEvent(SyntheticEvent::Invalid, item, 1010));
    harness.eat(keyRelease(item, "", 1020, Modifier::Shift));
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::Control);
    harness.eat(keyRelease(item, "", 1030, Modifier::None));
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::Control);
    harness.compressor.resetInput();
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::None);
}

TEST_F(EventCompressorTest, flushCompressesOnePatternOnlyAndDropsTheClickBehindAModifier)
{
    harness.eat(keyPress(item, "", 900, Modifier::Shift));
    click(1000);
    EXPECT_EQ(harness.queued(), 3u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(EventCompressorTest, flushOfAnEmptyQueueDoesNothing)
{
    harness.flush();
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
}

TEST_F(EventCompressorTest, recordingGoesOnAfterAFlush)
{
    harness.eat(mousePress(item, {10, 20}, 500));
    harness.flush();
    click(1000);
    EXPECT_EQ(harness.queued(), 2u);
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(clickOnItem));
}

TEST_F(EventCompressorTest, observersAreToldInOrderAndTwiceWhenAddedTwice)
{
    std::vector<int> order;
    ActingObserver first;
    ActingObserver second;
    first.action = [&order] { order.push_back(1); };
    second.action = [&order] { order.push_back(2); };
    harness.compressor.addObserver(&first);
    harness.compressor.addObserver(&second);
    harness.compressor.addObserver(&first);
    harness.eat(inputMethod(item, "a", 1000));
    EXPECT_THAT(order, ElementsAre(1, 2, 1));
}

TEST_F(EventCompressorTest, observerMayFlushFromInsideAStatement)
{
    ActingObserver observer;
    observer.action = [this] {
        harness.compressor.finishCompression();
        harness.compressor.resetInput();
    };
    // Once only: a flush inside delivers anew what is still being delivered.
    observer.action = [this, inner = observer.action, done = false]() mutable {
        if (!std::exchange(done, true))
            inner();
    };
    harness.compressor.addObserver(&observer);
    harness.eat(keyPress(item, "a", 1000));
    harness.eat(mousePress(item, {10, 20}, 1010));
    EXPECT_EQ(harness.queued(), 0u);
    harness.takeStatements();
    click(2000);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 10/20 LeftButton None @2000"));
}

TEST_F(EventCompressorTest, observerMayFeedEventsFromInsideAStatement)
{
    ActingObserver observer;
    observer.action = [this, done = false]() mutable {
        if (!std::exchange(done, true))
            harness.eat(mousePress(other, {30, 40}, 1020));
    };
    harness.compressor.addObserver(&observer);
    harness.eat(inputMethod(item, "a", 1000));
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(mouseRelease(other, {30, 40}, 1030));
    harness.takeStatements();
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick other (QQuickItem) 30/40 LeftButton None @1020"));
}

TEST_F(EventCompressorTest, observerAddedFromInsideAStatementIsToldToo)
{
    ActingObserver late;
    ActingObserver observer;
    observer.action = [this, &late, done = false]() mutable {
        if (!std::exchange(done, true))
            harness.compressor.addObserver(&late);
    };
    harness.compressor.addObserver(&observer);
    harness.eat(inputMethod(item, "a", 1000));
    EXPECT_THAT(late.names, testing::SizeIs(1));
}

TEST_F(EventCompressorTest, whatAnObserverThrowsPassesThrough)
{
    ThrowingObserver observer;
    harness.compressor.addObserver(&observer);
    EXPECT_THROW(harness.eat(inputMethod(item, "a", 1000)), std::runtime_error);
    // The event had left the queue before it was delivered.
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(EventCompressorTest, touchTakesTheMouseEventsThatComeAlong)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(mousePress(item, {10, 20}, 1001));
    harness.eat(mouseRelease(item, {10, 20}, 1040));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("tapObject item (QQuickItem) 10/20 None @1000"));
}

TEST_F(EventCompressorTest, mouseEventsBehindATapKeepItWaiting)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    click(1100);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 4u);
}

TEST_F(EventCompressorTest, pendingEventsGoWithTheCompressor)
{
    {
        CompressionHarness shortLived;
        shortLived.eat(mousePress(item, {10, 20}, 1000));
        EXPECT_EQ(item->referenceCount(), 2);
    }
    EXPECT_EQ(item->referenceCount(), 1);
}

TEST_F(EventCompressorTest, doubleClickTimeAboveHalfTheRangeWrapsInTheAlarm)
{
    harness.settings.time = 0x80000001u;
    click(1000);
    EXPECT_THAT(harness.alarmClock.calls, ElementsAre(TestAlarmClock::Call{1, 2}));
}
