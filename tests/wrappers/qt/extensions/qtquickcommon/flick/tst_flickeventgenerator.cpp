#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"

#include "flicksupport.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtQuick/QQuickWindow>

#include <limits>
#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Lends a private member: the recorder and the generator keep theirs to themselves.
template<auto Member, typename Tag>
struct Lend
{
    friend auto lend(Tag) { return Member; }
};

struct CompressorOfRecorder
{
    friend auto lend(CompressorOfRecorder);
};
template struct Lend<&QtEventRecorder::compressor, CompressorOfRecorder>;

struct MonitorOfGenerator
{
    friend auto lend(MonitorOfGenerator);
};
template struct Lend<&QtQuickFlickEventGenerator::monitor, MonitorOfGenerator>;

quint64 handTime = 0;

int integer(const SharedPtr<Object> &value)
{
    void *native = nullptr;
    return value->get(&native) ? *static_cast<int *>(native) : -1;
}

/// Two nested flickables and an item in them, in a window that isn't shown.
class FlickEvents : public testing::Test
{
protected:
    FlickEvents()
    {
        setupQtQuick();
        setTimeSource([] { return handTime; });
        recorder = QtEventRecorder::instance();
        generator = std::make_unique<QtQuickFlickEventGenerator>(recorder);
        outer->setParentItem(window.contentItem());
        inner->setParentItem(outer->contentItem());
        item->setParentItem(inner->contentItem());
        inner->setContentX(12);
        inner->setContentY(-3);
    }
    ~FlickEvents() override { setTimeSource(nullptr); }

    static SyntheticEvent eventOn(QObject *object, SyntheticEvent::Type type)
    {
        SyntheticEvent event;
        event.type = type;
        event.object = wrapAndRegisterQObject(object);
        event.objectClass = event.object->objectClass();
        return event;
    }

    static SyntheticEvent mouse(QObject *object, SyntheticEvent::MouseEventType type)
    {
        SyntheticEvent event = eventOn(object, SyntheticEvent::Mouse);
        event.mouseEventType = type;
        event.button = type == SyntheticEvent::Move ? MouseButton::None : MouseButton::LeftButton;
        event.globalX = event.globalY = event.x = event.y = 0;
        return event;
    }

    static SyntheticEvent touch(QObject *object, SyntheticEvent::TouchEventType type, std::size_t fingers = 1)
    {
        SyntheticEvent event = eventOn(object, SyntheticEvent::Touch);
        event.touch.touchEventType = type;
        event.touch.points.resize(fingers);
        event.touch.primaryIndex = 0;
        return event;
    }

    /// As the host does with an event that it sees.
    void offer(const SyntheticEvent &event)
    {
        generator->peekSyntheticEvent(event);
        recorder->eatEvent(event);
    }

    std::vector<SyntheticEvent> queue() const
    {
        const auto &pending = (recorder.get()->*lend(CompressorOfRecorder())).get()->pendingEvents();
        return {pending.begin(), pending.end()};
    }

    qsizetype watched() const { return (generator.get()->*lend(MonitorOfGenerator()))->watches().size(); }

    LibraryLog log;
    Application application{WrapperConfig{.compressionDebugLevel = 1, .classesWithoutCoordinates = {}}};
    SharedPtr<QtEventRecorder> recorder;
    std::unique_ptr<QtQuickFlickEventGenerator> generator;
    QQuickWindow window;
    std::unique_ptr<QQuickFlickable> outer = std::make_unique<QQuickFlickable>();
    std::unique_ptr<QQuickFlickable> inner = std::make_unique<QQuickFlickable>();
    std::unique_ptr<QQuickItem> item = std::make_unique<QQuickItem>();
};

std::vector<SyntheticEvent::Type> typesOf(const std::vector<SyntheticEvent> &events)
{
    std::vector<SyntheticEvent::Type> types;
    for (const SyntheticEvent &event : events)
        types.push_back(event.type);
    return types;
}

} // namespace

TEST_F(FlickEvents, MousePressWatchesAndReleaseEndsTheWatch)
{
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Press));
    EXPECT_EQ(watched(), 2);
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Release));
    EXPECT_EQ(watched(), 0);
}

TEST_F(FlickEvents, MouseMoveDoesNothing)
{
    TraceLog trace;
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Move));
    EXPECT_EQ(watched(), 0);
    QQuickItem lonely;
    generator->peekSyntheticEvent(mouse(&lonely, SyntheticEvent::Move));
    EXPECT_THAT(trace.takeTexts(), IsEmpty());
}

TEST_F(FlickEvents, MouseMoveLeavesAWatchAlone)
{
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Press));
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Move));
    EXPECT_EQ(watched(), 2);
}

TEST_F(FlickEvents, EveryButtonWatches)
{
    SyntheticEvent press = mouse(item.get(), SyntheticEvent::Press);
    press.button = MouseButton::RightButton;
    generator->peekSyntheticEvent(press);
    EXPECT_EQ(watched(), 2);
}

TEST_F(FlickEvents, PressOnWhatIsNoItemWatchesNothing)
{
    TraceLog trace;
    QObject plain;
    SyntheticEvent nobody = mouse(&plain, SyntheticEvent::Press);
    nobody.object = nullptr;
    for (const SyntheticEvent &press : {mouse(&window, SyntheticEvent::Press), mouse(&plain, SyntheticEvent::Press),
                                        touch(&window, SyntheticEvent::TouchBegin), nobody}) {
        generator->peekSyntheticEvent(press);
    }
    generator->peekSyntheticEvent(mouse(&window, SyntheticEvent::Release));
    EXPECT_EQ(watched(), 0);
    EXPECT_THAT(trace.takeTexts(), IsEmpty());
}

TEST_F(FlickEvents, PressOnAnItemThatHasDiedWatchesNothing)
{
    const SyntheticEvent press = mouse(item.get(), SyntheticEvent::Press);
    const SyntheticEvent release = mouse(item.get(), SyntheticEvent::Release);
    item.reset();
    generator->peekSyntheticEvent(press);
    generator->peekSyntheticEvent(release);
    EXPECT_EQ(watched(), 0);
}

TEST_F(FlickEvents, TouchOfOneFingerWatchesUntilItEnds)
{
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchBegin));
    EXPECT_EQ(watched(), 2);
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchUpdate));
    EXPECT_EQ(watched(), 2);
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchEnd));
    EXPECT_EQ(watched(), 0);
}

TEST_F(FlickEvents, TouchOfSeveralFingersWatchesNothingAndItsEndOnlyTraces)
{
    TraceLog trace;
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchBegin, 0));
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchBegin, 2));
    EXPECT_EQ(watched(), 0);
    EXPECT_THAT(trace.takeTexts(), IsEmpty());
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchEnd, 2));
    EXPECT_THAT(trace.takeTexts(),
                ElementsAre(EndsWith(", 0 flickables left to watch"), EndsWith(", 0 flickables left to watch")));
}

TEST_F(FlickEvents, TouchEndOfSeveralFingersEndsTheWatch)
{
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchBegin));
    generator->peekSyntheticEvent(touch(item.get(), SyntheticEvent::TouchEnd, 2));
    EXPECT_EQ(watched(), 0);
}

TEST_F(FlickEvents, OtherEventsDoNothing)
{
    TraceLog trace;
    for (SyntheticEvent::Type type :
         {SyntheticEvent::Invalid, SyntheticEvent::InputMethod, SyntheticEvent::Key, SyntheticEvent::Wheel,
          SyntheticEvent::WindowClose, SyntheticEvent::WindowMove, SyntheticEvent::WindowResize,
          SyntheticEvent::WindowStateChange, SyntheticEvent::Flick}) {
        SyntheticEvent event = eventOn(item.get(), type);
        event.mouseEventType = SyntheticEvent::Press;
        event.touch.touchEventType = SyntheticEvent::TouchBegin;
        event.touch.points.resize(1);
        generator->peekSyntheticEvent(event);
    }
    EXPECT_EQ(watched(), 0);
    EXPECT_THAT(trace.takeTexts(), IsEmpty());
}

TEST_F(FlickEvents, ReleaseElsewhereLeavesTheWatchToALaterRelease)
{
    QQuickItem elsewhere;
    elsewhere.setParentItem(outer->contentItem());
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Press));
    generator->peekSyntheticEvent(mouse(&elsewhere, SyntheticEvent::Release));
    EXPECT_EQ(watched(), 1);
    generator->peekSyntheticEvent(mouse(item.get(), SyntheticEvent::Release));
    EXPECT_EQ(watched(), 0);
}

TEST_F(FlickEvents, MovementStandsInTheQueueBetweenPressAndRelease)
{
    handTime = 1000;
    offer(mouse(item.get(), SyntheticEvent::Press));
    handTime = 1020;
    Q_EMIT inner->movementStarted();
    handTime = 1040;
    offer(mouse(item.get(), SyntheticEvent::Release));
    EXPECT_THAT(typesOf(queue()), ElementsAre(SyntheticEvent::Mouse, SyntheticEvent::Flick, SyntheticEvent::Mouse));
    EXPECT_EQ(queue().at(1).flickState, SyntheticEvent::FlickStarted);

    std::vector<EventData> statements;
    application.setStatementHandler([&](const EventData &statement) { statements.push_back(statement); });
    handTime = 1500;
    inner->setContentY(40);
    Q_EMIT inner->movementEnded();
    EXPECT_THAT(queue(), IsEmpty());
    EXPECT_THAT(log.infos, Contains(AllOf(HasSubstr("(flick ended, contentPos=12/40)"), HasSubstr("1500"))));
    ASSERT_EQ(statements.size(), 1U);
    EXPECT_EQ(statements.front().method(), flickODByNameFn());
    EXPECT_EQ(statements.front().objectName(), wrapAndRegisterQObject(inner.get())->scriptName());
    ASSERT_EQ(statements.front().arguments().size(), 2U);
    EXPECT_EQ(integer(statements.front().arguments().at(0)), 0);
    EXPECT_EQ(integer(statements.front().arguments().at(1)), 43);
}

TEST_F(FlickEvents, RecordIsOneOfTheFlickableWhateverWasPressed)
{
    const std::initializer_list<QQuickItem *> pressable = {item.get(), inner.get(), outer.get()};
    for (QQuickItem *pressed : pressable) {
        for (QQuickFlickable *moving : {inner.get(), outer.get()}) {
            offer(mouse(pressed, SyntheticEvent::Press));
            generator->flickStarted(moving, {1, 2}, pressed);
            const std::vector<SyntheticEvent> events = queue();
            ASSERT_EQ(events.size(), 2U);
            EXPECT_EQ(nativeQObject(events.back().object), moving);
            EXPECT_EQ(nativeQObject(events.back().flickObject), pressed);
            EXPECT_EQ(events.back().x, 0);
            EXPECT_EQ(events.back().y, 0);
            recorder->flushEventQueue();
        }
    }
}

TEST_F(FlickEvents, RecordIsOneOfTheFlickableWithThePressedItemBeside)
{
    handTime = 1000;
    offer(mouse(item.get(), SyntheticEvent::Press));
    handTime = 1234;
    Q_EMIT inner->movementStarted();

    const std::vector<SyntheticEvent> events = queue();
    ASSERT_THAT(typesOf(events), ElementsAre(SyntheticEvent::Mouse, SyntheticEvent::Flick));
    const SyntheticEvent &flick = events.back();
    EXPECT_EQ(flick.flickState, SyntheticEvent::FlickStarted);
    EXPECT_EQ(nativeQObject(flick.object), inner.get());
    EXPECT_EQ(flick.objectClass, classForMetaObject(&QQuickFlickable::staticMetaObject));
    EXPECT_EQ(flick.objectName, wrapAndRegisterQObject(inner.get())->scriptName().toUtf8());
    EXPECT_FALSE(flick.ready) << "the window isn't shown";
    EXPECT_EQ(nativeQObject(flick.flickObject), item.get());
    EXPECT_EQ(flick.x, 0);
    EXPECT_EQ(flick.y, 0);
    EXPECT_EQ(flick.contentX, 12);
    EXPECT_EQ(flick.contentY, -3);
    EXPECT_EQ(flick.timestamp, 1234U);
}

TEST_F(FlickEvents, PositionsAreCutTowardZeroAndToWhatFits)
{
    constexpr qreal huge = 1e300;
    constexpr qreal nan = std::numeric_limits<qreal>::quiet_NaN();
    const auto recorded = [this](qreal x, qreal y) {
        offer(mouse(item.get(), SyntheticEvent::Press));
        generator->flickStarted(inner.get(), QPointF(x, y), item.get());
        const SyntheticEvent flick = queue().back();
        recorder->flushEventQueue();
        return std::pair(flick.contentX, flick.contentY);
    };
    EXPECT_EQ(recorded(1.99, -1.99), std::pair(1, -1));
    EXPECT_EQ(recorded(0.5, -0.5), std::pair(0, 0));
    EXPECT_EQ(recorded(huge, -huge), std::pair(std::numeric_limits<qint32>::max(), std::numeric_limits<qint32>::min()));
    EXPECT_EQ(recorded(nan, 3), std::pair(0, 3));
}

TEST_F(FlickEvents, RecordWithoutAnItemIsStillFedIn)
{
    offer(mouse(item.get(), SyntheticEvent::Press));
    item.reset();
    Q_EMIT inner->movementStarted();
    ASSERT_FALSE(log.infos.empty());
    EXPECT_THAT(log.infos.back(), HasSubstr("flick event: (flick started, contentPos=12/-3)"));
    // Nothing ties it to the press, so nobody claims either of them.
    EXPECT_THAT(queue(), IsEmpty());
}

TEST_F(FlickEvents, GeneratorKeepsTheRecorderAlive)
{
    EXPECT_EQ(recorder->referenceCount(), 2);
    QtEventRecorder *const address = recorder.get();
    recorder = nullptr;
    EXPECT_EQ(QtEventRecorder::instance().get(), address);
    recorder = QtEventRecorder::instance();
    generator.reset();
    EXPECT_EQ(recorder->referenceCount(), 1);
}

TEST_F(FlickEvents, MovementsPassUnseenOnceTheGeneratorIsGone)
{
    offer(mouse(item.get(), SyntheticEvent::Press));
    generator.reset();
    Q_EMIT inner->movementStarted();
    EXPECT_THAT(typesOf(queue()), ElementsAre(SyntheticEvent::Mouse));
}

TEST_F(FlickEvents, GeneratorMayBeDestroyedByTheStatementThatItsReportLeadsTo)
{
    application.setStatementHandler([this](const EventData &) { generator.reset(); });
    offer(mouse(item.get(), SyntheticEvent::Press));
    Q_EMIT inner->movementStarted();
    offer(mouse(item.get(), SyntheticEvent::Release));
    Q_EMIT inner->movementEnded();
    EXPECT_EQ(generator, nullptr);
    EXPECT_EQ(recorder->referenceCount(), 1);
}

TEST_F(FlickEvents, CopySharesMonitorAndRecorder)
{
    // Only one of the two may be destroyed, so the other one's storage is simply given back.
    alignas(QtQuickFlickEventGenerator) std::byte storage[sizeof(QtQuickFlickEventGenerator)];
    auto *const original = new (storage) QtQuickFlickEventGenerator(recorder);
    {
        QtQuickFlickEventGenerator copy(*original);
        EXPECT_EQ(copy.*lend(MonitorOfGenerator()), original->*lend(MonitorOfGenerator()));
        EXPECT_EQ(recorder->referenceCount(), 4);

        const SyntheticEvent press = mouse(item.get(), SyntheticEvent::Press);
        copy.peekSyntheticEvent(press);
        recorder->eatEvent(press);
        Q_EMIT inner->movementStarted();
        EXPECT_THAT(typesOf(queue()), ElementsAre(SyntheticEvent::Mouse, SyntheticEvent::Flick));
    }
    EXPECT_EQ(recorder->referenceCount(), 3);
    recorder->releaseReference();
}

TEST_F(FlickEvents, AssignmentLeavesTheMonitorThatItReplacesAlone)
{
    alignas(QtQuickFlickEventGenerator) std::byte storage[sizeof(QtQuickFlickEventGenerator)];
    auto *const assigned = new (storage) QtQuickFlickEventGenerator(recorder);
    const std::unique_ptr<FlickMonitor> replaced(assigned->*lend(MonitorOfGenerator()));
    const SyntheticEvent press = mouse(item.get(), SyntheticEvent::Press);
    assigned->peekSyntheticEvent(press);
    recorder->eatEvent(press);

    *assigned = *generator;
    EXPECT_EQ(assigned->*lend(MonitorOfGenerator()), *generator.*lend(MonitorOfGenerator()));
    EXPECT_EQ(recorder->referenceCount(), 3);
    EXPECT_EQ(replaced->watches().size(), 2);
    Q_EMIT inner->movementStarted();
    EXPECT_THAT(typesOf(queue()), ElementsAre(SyntheticEvent::Mouse, SyntheticEvent::Flick));
    recorder->releaseReference();
}
