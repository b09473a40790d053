#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include "support/compressionharness.h"
#include "support/syntheticevents.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>

#include <type_traits>
#include <utility>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

namespace {

/// An event in which every field that owns something is set.
SyntheticEvent fullEvent(const TestObjectPtr &object)
{
    SyntheticEvent event = touchBegin(object, {finger(1, 10, 20), finger(2, 30, 40)}, 1000);
    event.inputMethodText = "composed";
    event.text = "a";
    event.flickObject = object;
    event.touch.object = object;
    event.touch.objectName = "window name";
    return event;
}

bool holdsNoTextsAndPoints(const SyntheticEvent &event)
{
    return event.inputMethodText.isEmpty() && event.text.isEmpty() && event.objectName.isEmpty()
        && event.touch.objectName.isEmpty() && event.touch.points.empty();
}

bool isFullEvent(const SyntheticEvent &event)
{
    return event.type == SyntheticEvent::Touch && event.inputMethodText == "composed" && event.text == "a"
        && event.objectName == "item" && event.touch.objectName == "window name" && event.touch.points.size() == 2
        && event.touch.points[1].id == 2 && event.touch.areaWidth == 640 && event.timestamp == 1000 && event.ready;
}

class SyntheticEventTest : public testing::Test
{
protected:
    HandClock clock{5000};
    TestObjectPtr item = makeObject("item", itemClass());
};

} // namespace

TEST_F(SyntheticEventTest, aNewRecordIsInvalidEmptyAndStampedWhenItIsMade)
{
    const SyntheticEvent event;
    clock.setNow(9000);
    EXPECT_EQ(event.type, SyntheticEvent::Invalid);
    EXPECT_TRUE(holdsNoTextsAndPoints(event));
    EXPECT_TRUE(event.object.isNull());
    EXPECT_TRUE(event.flickObject.isNull());
    EXPECT_TRUE(event.touch.object.isNull());
    EXPECT_FALSE(event.ready);
    EXPECT_EQ(event.objectClass, nullptr);
    EXPECT_EQ(event.x, 0);
    EXPECT_EQ(event.y, 0);
    EXPECT_EQ(event.timestamp, 5000u);
}

TEST_F(SyntheticEventTest, aCopyHoldsReferencesOfItsOwn)
{
    const SyntheticEvent event = fullEvent(item);
    const qint32 references = item->referenceCount();
    {
        const SyntheticEvent copy(event);
        EXPECT_TRUE(isFullEvent(copy));
        EXPECT_EQ(item->referenceCount(), references + 3);
    }
    EXPECT_EQ(item->referenceCount(), references);
    EXPECT_TRUE(isFullEvent(event));
}

TEST_F(SyntheticEventTest, changingACopyLeavesTheOriginal)
{
    const SyntheticEvent event = fullEvent(item);
    SyntheticEvent copy(event);
    copy.text += "b";
    copy.touch.points[1].id = 77;
    EXPECT_TRUE(isFullEvent(event));
}

TEST_F(SyntheticEventTest, anAssignedRecordReplacesEverything)
{
    SyntheticEvent target = fullEvent(makeObject("other", widgetClass()));
    const SyntheticEvent source = fullEvent(item);
    target = source;
    EXPECT_TRUE(isFullEvent(target));
    EXPECT_EQ(target.object.get(), item.get());
    EXPECT_EQ(target.flickObject.get(), item.get());
    EXPECT_EQ(target.touch.object.get(), item.get());
}

TEST_F(SyntheticEventTest, moveConstructionTakesTextsAndPointsAndCopiesReferences)
{
    SyntheticEvent source = fullEvent(item);
    const qint32 references = item->referenceCount();
    const SyntheticEvent target(std::move(source));
    EXPECT_TRUE(isFullEvent(target));
    EXPECT_TRUE(holdsNoTextsAndPoints(source));
    EXPECT_EQ(source.object.get(), item.get());
    EXPECT_EQ(source.flickObject.get(), item.get());
    EXPECT_EQ(source.touch.object.get(), item.get());
    EXPECT_EQ(item->referenceCount(), references + 3);
}

TEST_F(SyntheticEventTest, moveAssignmentTakesTextsAndPointsAndCopiesReferences)
{
    SyntheticEvent source = fullEvent(item);
    SyntheticEvent target = fullEvent(makeObject("other", widgetClass()));
    const qint32 references = item->referenceCount();
    target = std::move(source);
    EXPECT_TRUE(isFullEvent(target));
    EXPECT_TRUE(holdsNoTextsAndPoints(source));
    EXPECT_EQ(source.object.get(), item.get());
    EXPECT_EQ(item->referenceCount(), references + 3);
}

TEST_F(SyntheticEventTest, aSourceThatSharesItsTextsBecomesEmptyToo)
{
    SyntheticEvent source = fullEvent(item);
    const SyntheticEvent sharer(source);
    const SyntheticEvent target(std::move(source));
    EXPECT_TRUE(holdsNoTextsAndPoints(source));
    EXPECT_TRUE(isFullEvent(sharer));
    EXPECT_TRUE(isFullEvent(target));
}

TEST_F(SyntheticEventTest, assigningARecordToItselfChangesNothing)
{
    SyntheticEvent event = fullEvent(item);
    SyntheticEvent &same = event;
    event = same;
    EXPECT_TRUE(isFullEvent(event));
    event = std::move(same);
    EXPECT_TRUE(isFullEvent(event));
    EXPECT_EQ(event.object.get(), item.get());
}

TEST_F(SyntheticEventTest, anObjectLivesAsLongAsARecordRefersToIt)
{
    SyntheticEvent event = fullEvent(item);
    const SharedPtr<TestObject> watcher = item;
    item = TestObjectPtr();
    EXPECT_EQ(watcher->referenceCount(), 4);
    event = SyntheticEvent();
    EXPECT_EQ(watcher->referenceCount(), 1);
}

TEST_F(SyntheticEventTest, centreOfAFingerAddsHalfTheDiameterToTheGlobalPosition)
{
    SyntheticEvent::TouchPoint point = finger(1, 100, 200);
    point.width = 5;
    point.height = 3;
    EXPECT_DOUBLE_EQ(point.centerX(), 102.5);
    EXPECT_DOUBLE_EQ(point.centerY(), 201.5);
}

TEST_F(SyntheticEventTest, diameterOfAFingerIsItsLongerAxis)
{
    SyntheticEvent::TouchPoint point = finger(1, 0, 0);
    point.width = 5;
    point.height = 3;
    EXPECT_DOUBLE_EQ(point.diameter(), 5);
    point.height = 8;
    EXPECT_DOUBLE_EQ(point.diameter(), 8);
}

TEST(CurrentTime, isThatOfTheSystemClockInMilliseconds)
{
    const auto before = static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
    const quint64 now = currentTime();
    const auto after = static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
    EXPECT_EQ(SyntheticEvent().timestamp / 1'000'000, now / 1'000'000);
}

TEST(EventValues, areThoseThatHostsRelyOn)
{
    EXPECT_EQ(SyntheticEvent::Invalid, -1);
    EXPECT_EQ(SyntheticEvent::Mouse, 0);
    EXPECT_EQ(SyntheticEvent::InputMethod, 1);
    EXPECT_EQ(SyntheticEvent::Key, 2);
    EXPECT_EQ(SyntheticEvent::Wheel, 3);
    EXPECT_EQ(SyntheticEvent::WindowClose, 4);
    EXPECT_EQ(SyntheticEvent::WindowMove, 5);
    EXPECT_EQ(SyntheticEvent::WindowResize, 6);
    EXPECT_EQ(SyntheticEvent::WindowStateChange, 7);
    EXPECT_EQ(SyntheticEvent::Flick, 8);
    EXPECT_EQ(SyntheticEvent::Touch, 9);
    EXPECT_EQ(SyntheticEvent::Press, 0);
    EXPECT_EQ(SyntheticEvent::Move, 1);
    EXPECT_EQ(SyntheticEvent::Release, 2);
    EXPECT_EQ(SyntheticEvent::KeyPress, 0);
    EXPECT_EQ(SyntheticEvent::KeyRelease, 1);
    EXPECT_EQ(SyntheticEvent::FlickStarted, 0);
    EXPECT_EQ(SyntheticEvent::FlickEnded, 1);
    EXPECT_EQ(SyntheticEvent::TouchBegin, 0);
    EXPECT_EQ(SyntheticEvent::TouchUpdate, 1);
    EXPECT_EQ(SyntheticEvent::TouchEnd, 2);
    EXPECT_EQ(SyntheticEvent::TouchPoint::Released, 0);
    EXPECT_EQ(SyntheticEvent::TouchPoint::Updated, 1);
    EXPECT_EQ(SyntheticEvent::TouchPoint::Pressed, 2);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<SyntheticEvent::Type>, qint32>));
    EXPECT_TRUE((std::is_same_v<decltype(SyntheticEvent::timestamp), quint64>));
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<SyntheticEvent>);
}
