#include "support/compressionharness.h"
#include "support/syntheticevents.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/touchcompressors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class Taps : public testing::Test
{
protected:
    void tap(quint64 time, const TestObjectPtr &object, double x = 10, double y = 20)
    {
        harness.eat(touchBegin(object, {finger(1, x, y)}, time));
        harness.eat(touchEnd(object, {finger(1, x, y)}, time + 50));
    }

    /// A drag that sets off \p delay milliseconds after the finger came down.
    QByteArray dragWithDelay(quint64 delay)
    {
        harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
        harness.eat(touchUpdate(item, {finger(1, 11, 20)}, 1001));
        harness.eat(touchUpdate(item, {finger(1, 20, 20)}, 1000 + delay));
        harness.eat(touchEnd(item, {finger(1, 50, 40)}, 1000 + delay + 5000));
        const std::vector<QByteArray> statements = harness.takeStatements();
        return statements.size() == 1 ? statements.front() : QByteArray("not one statement");
    }

    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
};

const QByteArray tapOnItem = "tapObject item (QQuickItem) 10/20 None @1000";
const QByteArray doubleTapOnItem = "doubleTap item (QQuickItem) 10/20 None @1000";

} // namespace

TEST_F(Taps, tapIsNotWrittenByThePassingOfTime)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 12, 20)}, 1300));
    EXPECT_EQ(harness.queued(), 2u);
    harness.pass(8000);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 2u);
    // Each ring starts the alarm anew.
    EXPECT_THAT(harness.alarmClock.calls, SizeIs(11));
    EXPECT_EQ(harness.alarmClock.calls.back(), (TestAlarmClock::Call{11, 800}));
}

TEST_F(Taps, waitingTapIsWrittenByTheNextEvent)
{
    tap(1000, item);
    harness.pass(5000);
    harness.eat(keyPress(item, "a", 6100));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(Taps, waitingTapIsWrittenByTheFlush)
{
    tap(1000, item);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, waitingTapIsNotWrittenByMouseEvents)
{
    tap(1000, item);
    harness.eat(mousePress(item, {10, 20}, 5000));
    harness.eat(mouseRelease(item, {10, 20}, 5050));
    harness.eat(wheel(item, {10, 20}, {0, 15}, 5100));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 5u);
}

TEST_F(Taps, twoTapsInTimeAreADoubleTapOnceTheSecondIsOver)
{
    tap(1000, item);
    harness.eat(touchBegin(item, {finger(5, 12, 20)}, 1200));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(touchEnd(item, {finger(5, 12, 20)}, 1250));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleTapOnItem));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Taps, doubleTapIsTimedFromFingerDownToFingerDown)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1399));
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1400));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 9000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleTapOnItem));
}

TEST_F(Taps, twoTapsTooFarApartInTimeAreTwo)
{
    tap(1000, item);
    tap(1500, item);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
    EXPECT_EQ(harness.queued(), 2u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("tapObject item (QQuickItem) 10/20 None @1500"));
}

TEST_F(Taps, twoTapsOneMillisecondPastTheDoubleClickTimeAreTwo)
{
    tap(1000, item);
    tap(1401, item);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, twoTapsOnDifferentObjectsAreTwo)
{
    tap(1000, item);
    tap(1200, other);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("tapObject other (QQuickItem) 10/20 None @1200"));
}

TEST_F(Taps, twoTapsFarApartInPlaceAreStillADoubleTap)
{
    tap(1000, item, 10, 20);
    tap(1200, item, 300, 400);
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleTapOnItem));
}

TEST_F(Taps, secondTapThatDragsLeavesATapAndADrag)
{
    tap(1000, item);
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1200));
    harness.eat(touchUpdate(item, {finger(1, 30, 20)}, 1210));
    harness.eat(touchEnd(item, {finger(1, 40, 20)}, 1250));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem, "touchAndDrag item 10/20 10/0 0 None @1200"));
}

TEST_F(Taps, secondFingerInTheSecondTapLeavesATapAndAGesture)
{
    tap(1000, item);
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1200));
    harness.eat(touchUpdate(item, {finger(1, 10, 20), finger(2, 50, 60)}, 1210));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1250));
    const std::vector<Statement> statements = harness.takeStatementValues();
    ASSERT_THAT(statements, SizeIs(1));
    EXPECT_EQ(statements[0].method, "gesture");
}

TEST_F(Taps, doubleTapTakesTheMouseEventsThatComeAlong)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(mousePress(item, {10, 20}, 1001));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    harness.eat(mouseRelease(item, {10, 20}, 1051));
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1200));
    harness.eat(mousePress(item, {10, 20}, 1201));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1250));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(doubleTapOnItem));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Taps, carryModifiersPressedAheadOfThem)
{
    harness.eat(keyPress(item, "", 900, Modifier::Alt));
    tap(1000, item);
    tap(1200, item);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("doubleTap item (QQuickItem) 10/20 [Alt] @1000"));
}

TEST_F(Taps, tapNeedNotBeReady)
{
    harness.eat(notReady(touchBegin(item, {finger(1, 10, 20)}, 1000)));
    harness.eat(notReady(touchEnd(item, {finger(1, 10, 20)}, 1050)));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, fingerThatComesBackDragsAllTheSame)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 30, 20)}, 1010));
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    // Within the drag distance of where it began, so a second tap is waited for.
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("touchAndDrag item 10/20 -20/0 0 None @1000"));
}

TEST_F(Taps, fingerThatJumpsAtTheEndOnlyTaps)
{
    // Only updates are looked at for where a drag sets off.
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchEnd(item, {finger(1, 90, 90)}, 1050));
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, dragBeginsExactlyAtTheDragDistance)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 12, 22)}, 1010));
    harness.eat(touchEnd(item, {finger(1, 15, 22)}, 1050));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("touchAndDrag item 10/20 3/0 0 None @1000"));
}

TEST_F(Taps, distanceOfEachAxisIsTruncatedBeforeTheyAreAdded)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 12.9, 18.1)}, 1010)); // 2 + 1
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, growingContactCountsAsMovement)
{
    // Half the extent is part of where a finger is.
    SyntheticEvent::TouchPoint flattened = finger(1, 10, 20);
    flattened.width = 8;
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchUpdate(item, {flattened}, 1010));
    harness.eat(touchEnd(item, {flattened}, 1050));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("touchAndDrag item 10/20 0/0 0 None @1000"));
}

TEST_F(Taps, delayOfExactly800IsIgnored)
{
    EXPECT_EQ(dragWithDelay(800), "touchAndDrag item 10/20 30/20 0 None @1000");
}

TEST_F(Taps, delayAbove800IsRoundedDownToTens)
{
    EXPECT_EQ(dragWithDelay(805), "touchAndDrag item 10/20 30/20 800 None @1000");
    EXPECT_EQ(dragWithDelay(1237), "touchAndDrag item 10/20 30/20 1230 None @1000");
}

TEST_F(Taps, delayCountsToTheCrossingAndNotToTheEndOfTheTouch)
{
    EXPECT_EQ(dragWithDelay(20), "touchAndDrag item 10/20 30/20 0 None @1000");
}

TEST_F(Taps, keyInsideADragDropsTheQueue)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 30, 20)}, 1010));
    harness.eat(keyPress(item, "", 1020, Modifier::Shift));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Taps, liftingAnotherFingerThanThePrimaryOneDropsTheQueue)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchEnd(item, {finger(2, 10, 20)}, 1050));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Taps, endWithoutItsPrimaryFingerDropsTheQueue)
{
    SyntheticEvent end = touchEnd(item, {finger(1, 10, 20)}, 1050);
    end.touch.primaryIndex = noPrimaryFinger;
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(end);
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Taps, beginWithoutItsPrimaryFingerMakesNoTap)
{
    SyntheticEvent begin = touchBegin(item, {finger(1, 10, 20)}, 1000);
    begin.touch.primaryIndex = 1;
    harness.eat(begin);
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Taps, updateWithoutThePrimaryFingerIsNoMovement)
{
    SyntheticEvent update = touchUpdate(item, {finger(2, 300, 300)}, 1010);
    update.touch.primaryIndex = noPrimaryFinger;
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(update);
    harness.eat(touchEnd(item, {finger(1, 10, 20)}, 1050));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre(tapOnItem));
}

TEST_F(Taps, secondBeginInsideASequenceDropsTheQueue)
{
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1000));
    harness.eat(touchBegin(item, {finger(1, 10, 20)}, 1010));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Taps, absurdPositionsAreHeldToTheRangeOfCoordinates)
{
    const double far = 1e300;
    harness.eat(touchBegin(item, {finger(1, 0, 0)}, 1000));
    harness.eat(touchUpdate(item, {finger(1, 10, 0)}, 1010));
    SyntheticEvent end = touchEnd(item, {finger(1, 0, 0)}, 1050);
    end.touch.points[0].globalX = far;
    end.touch.points[0].globalY = std::numeric_limits<double>::quiet_NaN();
    harness.eat(end);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("touchAndDrag item 0/0 2147483647/0 0 None @1000"));
}

TEST_F(Taps, sequenceOfOneFingerHasItsBeginItsCrossingAndItsEnd)
{
    const TapOrDragCompressor pattern(&harness.settings);
    const std::list<SyntheticEvent> queue{touch(SyntheticEvent::TouchBegin, item, {finger(0, 10, 20)}, 1000),
                                          touch(SyntheticEvent::TouchUpdate, item, {finger(0, 12, 20)}, 1010),
                                          touch(SyntheticEvent::TouchUpdate, item, {finger(0, 13, 21)}, 1020),
                                          touch(SyntheticEvent::TouchEnd, item, {finger(0, 10, 20)}, 1030),
                                          mouseMove(item, {10, 20}, 1040)};
    auto event = queue.begin();
    TapOrDragCompressor::Sequence sequence;
    EXPECT_TRUE(pattern.scanTouchSequence(event, queue.end(), sequence));
    EXPECT_EQ(sequence.begin, &queue.front());
    EXPECT_EQ(sequence.crossing, &*std::next(queue.begin(), 2));
    EXPECT_EQ(sequence.touchEnd, &*std::next(queue.begin(), 3));
    EXPECT_EQ(&*event, sequence.touchEnd);

    event = std::next(queue.begin());
    EXPECT_FALSE(pattern.scanTouchSequence(event, queue.end(), sequence));
}
