#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/heldpattern_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/mousecompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/textcompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/touchcompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/wheelcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/windowcompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

namespace Vantle::QtWrapper {

using QtQuickCommon::logInfo;

namespace {

constexpr unsigned int logEvents = 1;
constexpr unsigned int traceCompression = 2;

/// Every place in this order is load-bearing: the first pattern that claims
/// the head of the queue, or holds it, wins.
std::list<std::unique_ptr<Compressor>> makeCompressors(const UISettings *settings)
{
    const Class *const itemClass = Inspector::self()->classByName(QStringLiteral("QQuickItem"));
    std::list<std::unique_ptr<Compressor>> compressors;
    const auto add = [&compressors](Compressor *compressor) { compressors.emplace_back(compressor); };

    // Touch goes before mouse, to consume the mouse events that come along
    // with a touch sequence. A finger that sets a flickable moving flicks, and
    // doesn't drag; a second finger at any time makes a gesture of everything;
    // a tap may be the first half of two.
    add(new TouchFlickCompressor(settings));
    add(new TouchGestureCompressor(settings));
    add(new DoubleTapCompressor(settings));
    add(new TapOrDragCompressor(settings));

    // The double click holds a finished click, and so goes before drag and
    // click. Of twins the one for items comes first.
    add(new MouseFlickCompressor(settings));
    add(new DoubleClickCompressor(settings));
    add(new MouseDragCompressor(settings, itemClass,
                                MouseDragCompressor::DetectLongDrag | MouseDragCompressor::MeasureFromCrossing));
    add(new MouseDragCompressor(settings, nullptr, 0));

    // Typed text leaves the queue ahead of a later click. A modifier pressed
    // ahead of a click gets here only after the patterns above have decided.
    add(new InputMethodCompressor);
    add(new TextInputCompressor);

    // A click tests no distance: it takes what the drags have declined.
    add(new MouseClickCompressor(settings, itemClass, MouseClickCompressor::DetectLongClick));
    add(new MouseClickCompressor(settings, nullptr, 0));

    add(new WheelCompressor);
    add(new WindowCloseCompressor);
    add(new WindowMoveCompressor);
    add(new WindowResizeCompressor);
    add(new WindowStateChangeCompressor);
    return compressors;
}

bool isRefused(const SyntheticEvent &event)
{
    // Web content is recorded by the part of the tool that knows its objects.
    // The class appears with the first such object, so it is looked up anew.
    const Class *const htmlObject = Inspector::self()->classByName(QStringLiteral("HTML_Object"));
    return htmlObject && event.objectClass && event.objectClass->isSubClassOf(htmlObject);
}

} // namespace

UISettings::~UISettings() = default;
AlarmClock::~AlarmClock() = default;
AlarmClockObserver::~AlarmClockObserver() = default;
EventCompressorObserver::~EventCompressorObserver() = default;

EventCompressor::EventCompressor(StatementRecorder *statementRecorder, UISettings *uiSettings)
    : compressors(makeCompressors(uiSettings))
    , recorder(statementRecorder)
    , settings(uiSettings)
    , heldPattern(std::make_unique<HeldPattern>())
{
}

EventCompressor::~EventCompressor() = default;

void EventCompressor::addObserver(EventCompressorObserver *observer)
{
    observers.push_back(observer);
}

void EventCompressor::setAlarmClock(AlarmClock *clock)
{
    alarmClock = clock;
}

void EventCompressor::setDebugLevel(unsigned int level)
{
    debugLevel = level;
}

void EventCompressor::eatEvent(const SyntheticEvent &event)
{
    if (isRefused(event))
        return;
    const bool isStillHeld = heldPattern->outlasts(event);
    queue.push_back(event);
    if (debugLevel >= logEvents)
        logInfo("EventCompressor::eatEvent: %s", describeEvent(event).constData());
    // The event's own time, not the clock's: an event may have waited before it got here.
    if (!isStillHeld)
        compressEvents(event.timestamp);
}

void EventCompressor::alarm(qint32 id)
{
    if (id != alarmId)
        return;
    // A clock that repeats is not stopped: it rings on under an id that nobody expects.
    alarmId = 0;
    compressEvents(currentTime());
}

void EventCompressor::compressEvents(quint64 now)
{
    heldPattern->forget();
    auto compressor = compressors.cbegin();
    while (compressor != compressors.cend()) {
        switch ((*compressor)->match(queue, initialModifiers, now)) {
        case Compressor::NoMatch: ++compressor; break;
        case Compressor::PartialMatch:
            // While finishing, a pattern may decline only because the queue ends.
            if (!compressors.front()->finishing)
                heldPattern->remember(**compressor, queue);
            return;
        case Compressor::PartialMatchWithAlarm: restartAlarm(); return;
        case Compressor::CompleteMatch:
            compressWith(**compressor);
            deliverStatements();
            // What is left may be a pattern in its turn.
            compressor = compressors.cbegin();
            break;
        }
    }
    if (debugLevel >= traceCompression && !queue.empty())
        dumpQueue("<None>", queue, initialModifiers);
    trimQueue(queue.cend());
}

void EventCompressor::compressWith(const Compressor &compressor)
{
    if (debugLevel >= traceCompression)
        dumpQueue(compressor.name(), queue, initialModifiers);
    trimQueue(compressor.compress(queue, initialModifiers, recorder.get()));
    if (debugLevel >= traceCompression)
        logInfo("%s: %d events left after compression", compressor.name(), static_cast<int>(queue.size()));
}

void EventCompressor::restartAlarm()
{
    if (!alarmClock)
        return;
    stopAlarm();
    alarmId = alarmClock->start(2 * settings->doubleClickTime());
}

void EventCompressor::stopAlarm()
{
    if (!alarmClock || alarmId == 0)
        return;
    alarmClock->stop(alarmId);
    alarmId = 0;
}

void EventCompressor::trimQueue(EventIterator until)
{
    heldPattern->forget();
    while (queue.cbegin() != until) {
        const SyntheticEvent &event = queue.front();
        if (event.type == SyntheticEvent::Key) {
            if (event.keyEventType == SyntheticEvent::KeyRelease)
                initialModifiers &= ~event.modifiers;
            else
                initialModifiers |= event.modifiers;
        }
        queue.pop_front();
    }
}

void EventCompressor::deliverStatements()
{
    // A copy, since an observer may feed or flush the compressor.
    const std::list<EventData> statements = recorder->statements;
    for (const EventData &statement : statements) {
        for (EventCompressorObserver *observer : observers)
            observer->handleCompressedEvent(statement);
    }
    recorder->statements.clear();
}

void EventCompressor::finishCompression()
{
    if (debugLevel >= traceCompression)
        logInfo("Finishing event compression with %d events in queue", static_cast<int>(queue.size()));
    stopAlarm();
    heldPattern->forget();
    for (const std::unique_ptr<Compressor> &compressor : compressors) {
        compressor->finishing = true;
        // Once it is finishing, a pattern decides.
        Compressor::MatchResult result;
        do {
            result = compressor->match(queue, initialModifiers, 0);
        } while (result != Compressor::CompleteMatch && result != Compressor::NoMatch);
        if (result == Compressor::CompleteMatch) {
            compressWith(*compressor);
            break;
        }
    }
    deliverStatements();
}

void EventCompressor::resetInput()
{
    if (debugLevel >= traceCompression) {
        logInfo("Clearing event compression queue which still holds %d events", static_cast<int>(queue.size()));
        dumpEvents(queue, "resetInput");
    }
    recorder->statements.clear();
    queue.clear();
    heldPattern->forget();
    initialModifiers = Modifier::None;
    for (const std::unique_ptr<Compressor> &compressor : compressors)
        compressor->finishing = false;
}

} // namespace Vantle::QtWrapper
