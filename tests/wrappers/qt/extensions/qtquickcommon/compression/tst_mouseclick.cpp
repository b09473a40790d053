#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MouseClick : public testing::Test
{
protected:
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass(), {5, 6});
    TestObjectPtr button = makeObject("button", buttonClass());
    TestObjectPtr widget = makeObject("widget", widgetClass());
};

} // namespace

TEST_F(MouseClick, takesEverythingFromThePress)
{
    harness.eat(mousePress(item, {10, 20}, 1000, MouseButton::RightButton));
    harness.eat(mouseRelease(item, {12, 21}, 1100, MouseButton::RightButton));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 RightButton None @1000"));
}

TEST_F(MouseClick, heldLongerThanTwiceTheDoubleClickTimeIsLongOnAnItem)
{
    harness.eat(mousePress(button, {10, 20}, 1000));
    harness.eat(mouseRelease(button, {10, 20}, 1801));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("mouseClick button (TestButton) 10/20 LeftButton None long @1000"));
}

TEST_F(MouseClick, heldExactlyTwiceTheDoubleClickTimeIsNotLong)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1800));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton None @1000"));
}

TEST_F(MouseClick, isNeverLongOnAnythingButAnItem)
{
    harness.eat(mousePress(widget, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {10, 20}, 9000));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick widget (TestWidget) 10/20 LeftButton None @1000"));
}

TEST_F(MouseClick, longTimeIsA32BitProduct)
{
    harness.settings.time = 0x80000001u; // doubled it is 2
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1003));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton None long @1000"));
}

TEST_F(MouseClick, releaseOfAnotherButtonDropsBoth)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1100, MouseButton::RightButton));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseClick, consumesTheMovesBetweenPressAndRelease)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseMove(item, {300, 400}, 1010));
    harness.eat(mouseMove(item, {11, 20}, 1020));
    harness.eat(mouseRelease(item, {11, 20}, 1100));
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton None @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseClick, keyReleaseInsideDropsTheWholeQueue)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(keyRelease(item, "", 1050, Modifier::Shift));
    EXPECT_EQ(harness.queued(), 0u);
    harness.eat(mouseRelease(item, {10, 20}, 1100));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(MouseClick, secondPressInsideDropsTheWholeQueue)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mousePress(item, {10, 20}, 1050, MouseButton::RightButton));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(MouseClick, releaseOverAnotherObjectIsStillAClickOnThePressedOne)
{
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(widget, {12, 20}, 1100));
    // Nothing to wait for: no double click begins like this.
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton None @1000"));
}

TEST_F(MouseClick, modifierPressedBeforeArrivesByWayOfTheModifiersInForce)
{
    harness.eat(keyPress(item, "", 900, Modifier::Shift));
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1100));
    EXPECT_EQ(harness.queued(), 3u);
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton [Shift] @1000"));
}

TEST_F(MouseClick, modifierPressedBehindAMoveArrivesWithThePattern)
{
    harness.eat(mouseMove(item, {9, 20}, 890));
    harness.eat(keyPress(item, "", 900, Modifier::Shift));
    harness.eat(mouseMove(item, {10, 20}, 910));
    harness.eat(keyPress(item, "", 920, Modifier::Control));
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 1100));
    harness.pass(800);
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton [Control,Shift] @1000"));
    EXPECT_EQ(harness.compressor.modifiersBeforeQueue(), Modifier::Shift | Modifier::Control);
}

TEST_F(MouseClick, timeThatRunsBackwardsIsLong)
{
    // The difference is unsigned.
    harness.eat(mousePress(item, {10, 20}, 1000));
    harness.eat(mouseRelease(item, {10, 20}, 999));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick item (QQuickItem) 5/14 LeftButton None long @1000"));
}
