#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"

#include "flicksupport.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaMethod>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto Started = FlickReport::Started;
constexpr auto Ended = FlickReport::Ended;

/// Qt's debug form of an item.
std::string debugText(QQuickItem *item)
{
    QString text;
    QDebug(&text).nospace() << item;
    return text.toStdString();
}

/// A flickable within a flickable, and an item in the inner one.
class FlickMonitoring : public testing::Test
{
protected:
    FlickMonitoring()
    {
        inner.setParentItem(outer.contentItem());
        item.setParentItem(inner.contentItem());
        monitor.setObserver(&reports);
        outer.setContentX(100);
        inner.setContentY(-30);
    }

    void press() { monitor.watchFlickablesOf(&item); }
    void release() { monitor.unwatchIdleFlickablesOf(&item); }

    std::vector<QQuickFlickable *> watched() const
    {
        std::vector<QQuickFlickable *> flickables;
        for (auto watch = monitor.watches().keyBegin(); watch != monitor.watches().keyEnd(); ++watch)
            flickables.push_back(*watch);
        return flickables;
    }

    LibraryLog log;
    FlickReports reports;
    QQuickFlickable outer;
    QQuickFlickable inner;
    QQuickItem item;
    FlickMonitor monitor;
};

} // namespace

TEST_F(FlickMonitoring, HasAMetaObjectWithItsTwoSlotsInOrder)
{
    const QMetaObject *const metaObject = monitor.metaObject();
    EXPECT_STREQ(metaObject->className(), "Vantle::QtWrapper::FlickMonitor");
    ASSERT_EQ(metaObject->methodCount() - metaObject->methodOffset(), 2);
    const QMetaMethod first = metaObject->method(metaObject->methodOffset());
    const QMetaMethod second = metaObject->method(metaObject->methodOffset() + 1);
    EXPECT_EQ(first.methodSignature(), "flickable_movementStarted()");
    EXPECT_EQ(first.methodType(), QMetaMethod::Slot);
    EXPECT_EQ(second.methodSignature(), "flickable_movementEnded()");
    EXPECT_EQ(second.methodType(), QMetaMethod::Slot);
    EXPECT_EQ(metaObject->propertyCount(), metaObject->propertyOffset());
    EXPECT_EQ(monitor.parent(), nullptr);
}

TEST_F(FlickMonitoring, WatchesNothingAtFirst)
{
    EXPECT_TRUE(FlickMonitor().watches().isEmpty());
}

TEST_F(FlickMonitoring, PressAndReleaseWithoutMovementLeaveNothingBehind)
{
    press();
    EXPECT_EQ(monitor.watches().size(), 2);
    release();
    EXPECT_THAT(watched(), IsEmpty());

    Q_EMIT inner.movementStarted();
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(), IsEmpty());
    EXPECT_THAT(log.warnings, IsEmpty());
}

TEST_F(FlickMonitoring, WatchOfAMovingFlickableOutlivesTheReleaseAndEndsWithTheMovement)
{
    press();
    Q_EMIT inner.movementStarted();
    release();
    EXPECT_THAT(watched(), ElementsAre(&inner));
    EXPECT_TRUE(monitor.watches().first().inMovement);

    Q_EMIT inner.movementEnded();
    EXPECT_THAT(watched(), IsEmpty());
    EXPECT_THAT(reports.take(),
                ElementsAre(FlickReport{Started, &inner, QPointF(0, -30), &item},
                            FlickReport{Ended, &inner, QPointF(0, -30), &item}));
}

TEST_F(FlickMonitoring, StartIsReportedWithThePositionAtThePressAndTheEndWithThatAtTheEnd)
{
    press();
    inner.setContentY(-10);
    Q_EMIT inner.movementStarted();
    inner.setContentX(7.5);
    inner.setContentY(80);
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(),
                ElementsAre(FlickReport{Started, &inner, QPointF(0, -30), &item},
                            FlickReport{Ended, &inner, QPointF(7.5, 80), &item}));
}

TEST_F(FlickMonitoring, NestedFlickablesReportEachForItself)
{
    press();
    Q_EMIT outer.movementStarted();
    Q_EMIT inner.movementStarted();
    outer.setContentX(150);
    Q_EMIT outer.movementEnded();
    EXPECT_THAT(watched(), ElementsAre(&inner));
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(),
                ElementsAre(FlickReport{Started, &outer, QPointF(100, 0), &item},
                            FlickReport{Started, &inner, QPointF(0, -30), &item},
                            FlickReport{Ended, &outer, QPointF(150, 0), &item},
                            FlickReport{Ended, &inner, QPointF(0, -30), &item}));
}

TEST_F(FlickMonitoring, PressOnAFlickableItselfWatchesItForItself)
{
    monitor.watchFlickablesOf(&inner);
    EXPECT_EQ(monitor.watches().value(&inner).item, &inner);
    EXPECT_EQ(monitor.watches().value(&outer).item, &inner);
    EXPECT_EQ(monitor.watches().value(&outer).contentStartPos, QPointF(100, 0));
    EXPECT_FALSE(monitor.watches().value(&outer).inMovement);
}

TEST_F(FlickMonitoring, PressWithoutAFlickableAboveItChangesNothing)
{
    TraceLog trace;
    QQuickItem lonely;
    monitor.watchFlickablesOf(&lonely);
    monitor.watchFlickablesOf(nullptr);
    monitor.unwatchIdleFlickablesOf(&lonely);
    monitor.unwatchIdleFlickablesOf(nullptr);
    EXPECT_THAT(watched(), IsEmpty());
    EXPECT_THAT(trace.takeTexts(), IsEmpty());
}

TEST_F(FlickMonitoring, WithoutAnObserverAMovementGoesThroughTheSameStates)
{
    monitor.setObserver(nullptr);
    press();
    Q_EMIT inner.movementStarted();
    EXPECT_TRUE(monitor.watches().value(&inner).inMovement);
    release();
    EXPECT_THAT(watched(), ElementsAre(&inner));
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(watched(), IsEmpty());
    EXPECT_THAT(reports.take(), IsEmpty());
}

TEST_F(FlickMonitoring, EndWithoutAStartIsReportedAndEndsTheWatch)
{
    press();
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(), ElementsAre(FlickReport{Ended, &inner, QPointF(0, -30), &item}));
    EXPECT_THAT(watched(), ElementsAre(&outer));
}

TEST_F(FlickMonitoring, SecondPressStartsTheWatchAnewAndDoublesTheStart)
{
    press();
    Q_EMIT inner.movementStarted();
    reports.take();
    inner.setContentY(55);

    press();
    EXPECT_FALSE(monitor.watches().value(&inner).inMovement);
    EXPECT_EQ(monitor.watches().size(), 2);
    Q_EMIT inner.movementStarted();
    const FlickReport started{Started, &inner, QPointF(0, 55), &item};
    EXPECT_THAT(reports.take(), ElementsAre(started, started));

    // The first arrival of the end takes both connections away.
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(), ElementsAre(FlickReport{Ended, &inner, QPointF(0, 55), &item}));
    Q_EMIT inner.movementStarted();
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(), IsEmpty());
    EXPECT_THAT(log.warnings, IsEmpty());
}

TEST_F(FlickMonitoring, ReleaseAfterTwoPressesTakesAllConnectionsAway)
{
    press();
    press();
    release();
    Q_EMIT inner.movementStarted();
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(reports.take(), IsEmpty());
    EXPECT_THAT(log.warnings, IsEmpty());
}

TEST_F(FlickMonitoring, SignalsOfAFlickableThatIsNotWatchedAreLoggedAndReportedToNobody)
{
    press();
    QQuickFlickable stranger;
    QObject::connect(&stranger, &QQuickFlickable::movementStarted, &monitor, &FlickMonitor::flickable_movementStarted);
    QObject::connect(&stranger, &QQuickFlickable::movementEnded, &monitor, &FlickMonitor::flickable_movementEnded);
    Q_EMIT stranger.movementStarted();
    Q_EMIT stranger.movementEnded();
    EXPECT_THAT(log.warnings,
                ElementsAre("Start of flick seen for flickable that is not monitored",
                            "End of flick seen for flickable that is not monitored"));
    EXPECT_THAT(reports.take(), IsEmpty());
    EXPECT_EQ(monitor.watches().size(), 2);
}

TEST_F(FlickMonitoring, SlotsCalledByNobodyMatchNoWatchNotEvenADeadOne)
{
    monitor.watchFlickable(std::make_unique<QQuickFlickable>().get(), &item);
    ASSERT_THAT(watched(), ElementsAre(nullptr));
    monitor.flickable_movementStarted();
    monitor.flickable_movementEnded();
    EXPECT_EQ(log.warnings.size(), 2U);
    EXPECT_EQ(monitor.watches().size(), 1);
}

TEST_F(FlickMonitoring, TracesEachStepOfAFlick)
{
    TraceLog trace;
    const std::string itemText = debugText(&item);

    press();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Watching flickable " + addressText(&inner) + " for item " + itemText
                                + ". Currently watching 0 other flickables.",
                            "Watching flickable " + addressText(&outer) + " for item " + itemText
                                + ". Currently watching 1 other flickables."));
    Q_EMIT inner.movementStarted();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Start of flick movement on " + addressText(&inner),
                            "Informing observer about start of flick; fs.contentStartPos=QPointF(0,-30)"));
    release();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Unwatching flickable " + addressText(&outer) + ", 1 flickables left to watch"));
    inner.setContentY(12);
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("End of flick movement on " + addressText(&inner),
                            "Informing observer about end of flick; fs.contentStartPos=QPointF(0,-30)",
                            "Unwatching flickable " + addressText(&inner) + ", 0 flickables left to watch"));
}

TEST_F(FlickMonitoring, TracesNoReportWithoutAnObserver)
{
    monitor.setObserver(nullptr);
    monitor.watchFlickable(&inner, &item);
    TraceLog trace;
    Q_EMIT inner.movementStarted();
    Q_EMIT inner.movementEnded();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Start of flick movement on " + addressText(&inner),
                            "End of flick movement on " + addressText(&inner),
                            "Unwatching flickable " + addressText(&inner) + ", 0 flickables left to watch"));
}

TEST_F(FlickMonitoring, CountsTheWatchItselfWhenItBeginsAnew)
{
    monitor.watchFlickable(&inner, &inner);
    TraceLog trace;
    monitor.watchFlickable(&inner, nullptr);
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Watching flickable " + addressText(&inner) + " for item " + debugText(nullptr)
                            + ". Currently watching 1 other flickables."));
    ASSERT_EQ(monitor.watches().size(), 1);
    EXPECT_EQ(monitor.watches().first().item, nullptr) << "the earlier watch is replaced";
}

TEST_F(FlickMonitoring, ReleaseWithoutAPressOnlyTraces)
{
    TraceLog trace;
    release();
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre("Unwatching flickable " + addressText(&inner) + ", 0 flickables left to watch",
                            "Unwatching flickable " + addressText(&outer) + ", 0 flickables left to watch"));
}

TEST_F(FlickMonitoring, PressAfterReparentingFollowsTheNewParents)
{
    press();
    inner.setParentItem(nullptr);
    release();
    // What lay above the item at the press only, a later release has to find.
    EXPECT_THAT(watched(), ElementsAre(&outer));
    monitor.unwatchIdleFlickablesOf(&outer);
    EXPECT_THAT(watched(), IsEmpty());
}
