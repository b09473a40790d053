#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Windows : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr window = makeObject("window", widgetClass());
    TestObjectPtr dialog = makeObject("dialog", widgetClass());
};

} // namespace

TEST_F(Windows, closeIsWrittenAtOnce)
{
    harness.eat(windowClose(window, 1000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("closeWindow window @1000"));
}

TEST_F(Windows, movesAheadOfACloseAreConsumedWithIt)
{
    harness.eat(mouseMove(window, {1, 2}, 900));
    harness.eat(mouseMove(window, {1, 3}, 910));
    harness.eat(windowClose(window, 1000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("closeWindow window @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Windows, pressAheadOfACloseDefeatsIt)
{
    harness.eat(mousePress(window, {1, 2}, 900));
    harness.eat(windowClose(window, 1000));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Windows, modifierAheadOfACloseLeavesFirst)
{
    harness.eat(keyPress(window, "", 900, Modifier::Alt));
    harness.eat(windowClose(window, 1000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("closeWindow window @1000"));
}

TEST_F(Windows, closeOfAWindowThatIsNotReadyIsDropped)
{
    harness.eat(notReady(windowClose(window, 1000)));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Windows, runOfMovesIsWrittenFromTheFirstOldToTheLastNewPlace)
{
    harness.eat(windowMove(window, {100, 100}, {110, 101}, 1000));
    harness.eat(windowMove(window, {110, 101}, {90, 130}, 1010));
    harness.eat(windowMove(window, {90, 130}, {105, 150}, 1020));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("moveWindow window 5/50 @1000"));
}

TEST_F(Windows, windowThatCameBackToItsPlaceWritesNothing)
{
    harness.eat(windowMove(window, {100, 100}, {150, 150}, 1000));
    harness.eat(windowMove(window, {150, 150}, {100, 100}, 1010));
    harness.eat(windowClose(window, 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("closeWindow window @1020"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Windows, windowThatMovedOnOneAxisOnlyIsWritten)
{
    harness.eat(windowMove(window, {100, 100}, {150, 150}, 1000));
    harness.eat(windowMove(window, {150, 150}, {100, 101}, 1010));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("moveWindow window 0/1 @1000"));
}

TEST_F(Windows, loneMoveIsThrownAwayTogetherWithWhatFollows)
{
    harness.eat(windowMove(window, {100, 100}, {150, 150}, 1000));
    harness.eat(windowClose(window, 1010));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Windows, loneMoveIsDroppedByAFlush)
{
    harness.eat(windowMove(window, {100, 100}, {150, 150}, 1000));
    harness.compressor.finishCompression();
    EXPECT_EQ(harness.queued(), 1u);
    harness.compressor.resetInput();
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Windows, moveOfAnotherWindowEndsTheRun)
{
    harness.eat(windowMove(window, {0, 0}, {5, 5}, 1000));
    harness.eat(windowMove(window, {5, 5}, {7, 7}, 1010));
    harness.eat(windowMove(dialog, {0, 0}, {1, 1}, 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("moveWindow window 7/7 @1000"));
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(Windows, runOfResizesIsWrittenWithTheLastSize)
{
    harness.eat(windowResize(window, {100, 200}, 1000));
    harness.eat(windowResize(window, {110, 220}, 1010));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("setWindowSize window 110/220 @1000"));
}

TEST_F(Windows, loneResizeIsEatenAloneUnlikeALoneMove)
{
    harness.eat(windowResize(window, {100, 200}, 1000));
    harness.eat(mousePress(window, {1, 2}, 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(mouseRelease(window, {1, 2}, 1020));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick window (TestWidget) 1/2 LeftButton None @1010"));
}

TEST_F(Windows, loneResizeIsEatenByAFlush)
{
    harness.eat(windowResize(window, {100, 200}, 1000));
    harness.compressor.finishCompression();
    EXPECT_EQ(harness.queued(), 0u);
    harness.compressor.resetInput();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Windows, resizeOfAnotherWindowEndsTheRun)
{
    harness.eat(windowResize(window, {100, 200}, 1000));
    harness.eat(windowResize(dialog, {1, 2}, 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 1u);
}

TEST_F(Windows, runsNeedNotBeReady)
{
    harness.eat(notReady(windowResize(window, {100, 200}, 1000)));
    harness.eat(notReady(windowResize(window, {110, 220}, 1010)));
    harness.eat(notReady(windowMove(window, {0, 0}, {1, 1}, 1020)));
    harness.eat(notReady(windowMove(window, {1, 1}, {2, 2}, 1030)));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("setWindowSize window 110/220 @1000", "moveWindow window 2/2 @1020"));
}

TEST_F(Windows, eachChangeOfStateIsAStatement)
{
    harness.eat(windowState(window, 2, 1000));
    harness.eat(windowState(window, 1, 1010));
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("setWindowState window 2 @1000", "setWindowState window 1 @1010"));
}

TEST_F(Windows, changeOfStateNeedsAReadyWindowAndTheHeadOfTheQueue)
{
    harness.eat(notReady(windowState(window, 2, 1000)));
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseMove(window, {1, 2}, 1010));
    harness.eat(windowState(window, 2, 1020));
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}
