#pragma once

#include "hook/inputvalues.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <list>
#include <memory>

class Compressor;

namespace Vantle {

class EventData;

namespace QtWrapper {

class HeldPattern;
class StatementRecorder;

/// The user interface settings that patterns depend on.
class UISettings
{
public:
    virtual ~UISettings();

    /// From how many pixels on a moved pointer or finger drags.
    virtual qint32 dragDistance() const = 0;
    /// In milliseconds.
    virtual quint32 doubleClickTime() const = 0;
};

/// Rings its observer after a time.
class AlarmClock
{
public:
    virtual ~AlarmClock();

    /// Sets an alarm and returns its id, which is never 0.
    virtual qint32 start(quint32 milliseconds) = 0;
    virtual void stop(qint32 id) = 0;
};

/// Is told when an alarm rings.
class AlarmClockObserver
{
public:
    virtual ~AlarmClockObserver();

    virtual void alarm(qint32 id) = 0;
};

/// Receives finished statements.
class EventCompressorObserver
{
public:
    virtual ~EventCompressorObserver();

    /// \p statement lives only for the call. The observer may feed or flush
    /// the compressor, but must not destroy it. Whatever completes a pattern
    /// in there delivers again all statements that are being delivered, so an
    /// observer must not do so for every statement.
    virtual void handleCompressedEvent(const EventData &statement) = 0;
};

/// Turns a stream of raw events into statements.
///
/// Events wait in a queue. After each new one an ordered list of patterns is
/// held against the head of the queue: a pattern that is complete writes its
/// statement and leaves with its events, one that may yet become complete
/// holds the queue, and what no pattern claims is thrown away, all of it.
///
/// Used on the one thread that delivers the toolkit's events; takes no locks.
/// Reports no failures: a sequence that makes no sense makes no statement.
class EventCompressor : public AlarmClockObserver
{
public:
    /// Takes ownership of \p statementRecorder. \p uiSettings must outlive the compressor. Neither may be null.
    /// The class "QQuickItem" is looked up here, so it should be registered before.
    EventCompressor(StatementRecorder *statementRecorder, UISettings *uiSettings);
    ~EventCompressor() override;

    /// Called by the clock. An \p id other than that of the running alarm changes nothing.
    void alarm(qint32 id) override;

    /// \p observer is not owned and must outlive the compressor. One that is added twice is told twice.
    void addObserver(EventCompressorObserver *observer);
    /// \p clock is not owned. Without one, the default, a finished click waits for the next event.
    void setAlarmClock(AlarmClock *clock);
    /// 0 for silence, 1 to log each event, 2 and more to trace how the queue is compressed.
    void setDebugLevel(unsigned int level);

    /// The one way in for events. Those on objects of an "HTML_Object" class are refused silently.
    void eatEvent(const SyntheticEvent &event);

    /// Gives the queue a last chance to make a statement, one at most.
    /// To be followed by resetInput(), which drops what is left.
    void finishCompression();
    void resetInput();

    /// The pending events, oldest first.
    const std::list<SyntheticEvent> &pendingEvents() const noexcept { return queue; }
    /// The modifiers that were in force before the oldest pending event.
    Modifier::Value modifiersBeforeQueue() const noexcept { return initialModifiers; }

private:
    Q_DISABLE_COPY_MOVE(EventCompressor)

    using EventIterator = std::list<SyntheticEvent>::const_iterator;

    void compressEvents(quint64 now);
    void compressWith(const Compressor &compressor);
    void restartAlarm();
    void stopAlarm();
    void trimQueue(EventIterator until);
    void deliverStatements();

    std::list<std::unique_ptr<Compressor>> compressors;
    std::list<SyntheticEvent> queue;
    std::unique_ptr<StatementRecorder> recorder;
    Modifier::Value initialModifiers = Modifier::None;
    std::list<EventCompressorObserver *> observers;
    AlarmClock *alarmClock = nullptr;
    qint32 alarmId = 0;
    UISettings *settings;
    unsigned int debugLevel = 0;
    std::unique_ptr<HeldPattern> heldPattern;
};

} // namespace QtWrapper
} // namespace Vantle
