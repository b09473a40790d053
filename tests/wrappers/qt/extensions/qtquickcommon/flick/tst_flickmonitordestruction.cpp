#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"

#include "flicksupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto Started = FlickReport::Started;
constexpr auto Ended = FlickReport::Ended;

enum class Victim {
    Flickable,
    Item,
    Monitor,
    All
};
enum class Moment {
    Watched,
    StartReport,
    Moving,
    Released,
    EndReport
};

/// One flick during which something dies.
class DestructionDuringAFlick : public testing::TestWithParam<std::tuple<Victim, Moment, bool>>
{
protected:
    DestructionDuringAFlick()
    {
        item->setParentItem(flickable->contentItem());
        monitor->setObserver(&reports);
    }

    void destroyAt(Moment moment)
    {
        const auto [victim, when, doubled] = GetParam();
        if (moment != when)
            return;
        if (victim == Victim::Item || victim == Victim::All)
            item.reset();
        if (victim == Victim::Flickable || victim == Victim::All)
            flickable.reset();
        if (victim == Victim::Monitor || victim == Victim::All)
            monitor.reset();
    }

    LibraryLog log;
    FlickReports reports;
    std::unique_ptr<QQuickFlickable> flickable = std::make_unique<QQuickFlickable>();
    std::unique_ptr<QQuickItem> item = std::make_unique<QQuickItem>();
    std::unique_ptr<FlickMonitor> monitor = std::make_unique<FlickMonitor>();
};

} // namespace

TEST_P(DestructionDuringAFlick, IsSurvived)
{
    const auto [victim, moment, doubled] = GetParam();
    QQuickFlickable *const flicked = flickable.get();
    QQuickItem *const pressed = item.get();
    const bool destroysItem = victim == Victim::Item || victim == Victim::All;
    const bool destroysOther = victim != Victim::Item;
    reports.onStarted = [this] { destroyAt(Moment::StartReport); };
    reports.onEnded = [this] { destroyAt(Moment::EndReport); };

    monitor->watchFlickablesOf(pressed);
    if (doubled)
        monitor->watchFlickablesOf(pressed);
    destroyAt(Moment::Watched);
    if (flickable)
        Q_EMIT flickable->movementStarted();
    destroyAt(Moment::Moving);
    if (monitor && item)
        monitor->unwatchIdleFlickablesOf(item.get());
    destroyAt(Moment::Released);
    if (flickable)
        Q_EMIT flickable->movementEnded();

    std::vector<FlickReport> expected;
    QQuickItem *const reported = destroysItem && moment == Moment::Watched ? nullptr : pressed;
    if (!(destroysOther && moment == Moment::Watched))
        expected.push_back({Started, flicked, QPointF(0, 0), reported});
    // With the connections doubled the second report comes only if flickable and monitor are still there for it.
    if (doubled && !(destroysOther && moment <= Moment::StartReport)) {
        const bool gone = destroysItem && moment <= Moment::StartReport;
        expected.push_back({Started, flicked, QPointF(0, 0), gone ? nullptr : pressed});
    }
    if (!(destroysOther && moment < Moment::EndReport)) {
        const bool gone = destroysItem && moment < Moment::EndReport;
        expected.push_back({Ended, flicked, QPointF(0, 0), gone ? nullptr : pressed});
    }
    EXPECT_EQ(reports.take(), expected);
    EXPECT_THAT(log.warnings, IsEmpty());

    if (!monitor)
        return;
    // A flickable that dies leaves its entry behind, with a null key.
    if (flickable) {
        EXPECT_TRUE(monitor->watches().isEmpty());
    } else {
        ASSERT_EQ(monitor->watches().size(), 1);
        EXPECT_TRUE(monitor->watches().firstKey().isNull());
    }
}

INSTANTIATE_TEST_SUITE_P(AtEveryPoint, DestructionDuringAFlick,
                         testing::Combine(testing::Values(Victim::Flickable, Victim::Item, Victim::Monitor,
                                                          Victim::All),
                                          testing::Values(Moment::Watched, Moment::StartReport, Moment::Moving,
                                                          Moment::Released, Moment::EndReport),
                                          testing::Bool()));

TEST(FlickMonitorWithDeadFlickables, CountsThemInItsTraces)
{
    FlickMonitor monitor;
    QQuickFlickable flickable;
    monitor.watchFlickable(std::make_unique<QQuickFlickable>().get(), nullptr);
    TraceLog trace;
    monitor.watchFlickable(&flickable, &flickable);
    monitor.unwatchFlickable(&flickable);
    const std::vector<std::string> texts = trace.takeTexts();
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_TRUE(texts[0].ends_with("Currently watching 1 other flickables.")) << texts[0];
    EXPECT_TRUE(texts[1].ends_with(", 1 flickables left to watch")) << texts[1];
}

TEST(FlickMonitorWithDeadFlickables, WatchesANewOneAtTheSameAddress)
{
    LibraryLog log;
    FlickReports reports;
    FlickMonitor monitor;
    monitor.setObserver(&reports);
    alignas(QQuickFlickable) std::byte storage[sizeof(QQuickFlickable)];
    auto *flickable = new (storage) QQuickFlickable;
    monitor.watchFlickable(flickable, flickable);
    Q_EMIT flickable->movementStarted();
    flickable->~QQuickFlickable();
    reports.take();

    flickable = new (storage) QQuickFlickable;
    Q_EMIT flickable->movementStarted();
    EXPECT_THAT(reports.take(), IsEmpty());
    flickable->setContentX(20);
    monitor.watchFlickable(flickable, flickable);
    EXPECT_EQ(monitor.watches().size(), 2);
    Q_EMIT flickable->movementStarted();
    Q_EMIT flickable->movementEnded();
    EXPECT_THAT(reports.take(),
                ElementsAre(FlickReport{Started, flickable, QPointF(20, 0), flickable},
                            FlickReport{Ended, flickable, QPointF(20, 0), flickable}));
    EXPECT_EQ(monitor.watches().size(), 1);
    flickable->~QQuickFlickable();
}

// Keys that turn to null where they stand upset the order of the map.
TEST(FlickMonitorWithDeadFlickables, StillFindsAllThatLive)
{
    std::mt19937 random(20240501);
    LibraryLog log;
    FlickReports reports;
    FlickMonitor monitor;
    monitor.setObserver(&reports);
    std::vector<std::unique_ptr<QQuickFlickable>> unwatched;
    for (int i = 0; i < 200; ++i)
        unwatched.push_back(std::make_unique<QQuickFlickable>());
    std::shuffle(unwatched.begin(), unwatched.end(), random);

    std::vector<std::unique_ptr<QQuickFlickable>> live;
    qsizetype dead = 0;
    while (!unwatched.empty()) {
        live.push_back(std::move(unwatched.back()));
        unwatched.pop_back();
        monitor.watchFlickable(live.back().get(), live.back().get());
        if (random() % 3 == 0) {
            live.erase(live.begin() + static_cast<std::ptrdiff_t>(random() % live.size()));
            ++dead;
        }
        ASSERT_EQ(monitor.watches().size(), static_cast<qsizetype>(live.size()) + dead);
    }
    std::shuffle(live.begin(), live.end(), random);
    for (const auto &flickable : live) {
        Q_EMIT flickable->movementStarted();
        Q_EMIT flickable->movementEnded();
        QQuickFlickable *const expected = flickable.get();
        ASSERT_THAT(reports.take(),
                    ElementsAre(FlickReport{Started, expected, QPointF(0, 0), expected},
                                FlickReport{Ended, expected, QPointF(0, 0), expected}));
    }
    EXPECT_EQ(monitor.watches().size(), dead);
    EXPECT_GT(dead, 20);
    EXPECT_THAT(log.warnings, IsEmpty());
}

TEST(FlickMonitorReentrancy, ObserverMayBeginAnotherWatchInAReport)
{
    LibraryLog log;
    FlickReports reports;
    FlickMonitor monitor;
    monitor.setObserver(&reports);
    QQuickFlickable first;
    std::vector<std::unique_ptr<QQuickFlickable>> others;
    const auto watchMore = [&] {
        for (int i = 0; i < 20; ++i) {
            others.push_back(std::make_unique<QQuickFlickable>());
            monitor.watchFlickable(others.back().get(), nullptr);
        }
    };
    reports.onStarted = watchMore;
    reports.onEnded = watchMore;
    monitor.watchFlickable(&first, &first);
    Q_EMIT first.movementStarted();
    EXPECT_TRUE(monitor.watches().value(&first).inMovement);
    Q_EMIT first.movementEnded();
    EXPECT_EQ(monitor.watches().size(), 40);
    EXPECT_FALSE(monitor.watches().contains(&first));
}

TEST(FlickMonitorReentrancy, WatchBegunAnewInTheReportOfTheEndIsOver)
{
    LibraryLog log;
    FlickReports reports;
    FlickMonitor monitor;
    monitor.setObserver(&reports);
    QQuickFlickable flickable;
    reports.onEnded = [&] { monitor.watchFlickable(&flickable, &flickable); };
    monitor.watchFlickable(&flickable, &flickable);
    Q_EMIT flickable.movementEnded();
    EXPECT_TRUE(monitor.watches().isEmpty());
    Q_EMIT flickable.movementStarted();
    EXPECT_EQ(reports.take().size(), 1U);
}
