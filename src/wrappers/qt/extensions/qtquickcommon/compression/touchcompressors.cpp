#include "wrappers/qt/extensions/qtquickcommon/compression/touchcompressors.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/touchsequences_p.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

// A finger that lies still for a moment before it sets off doesn't mean to:
// only a longer stay is played back, to the hundredth of a second.
constexpr quint64 longestIgnoredDelay = 800;
constexpr quint64 delayGranularity = 10;

qint32 dragDelay(const SyntheticEvent &begin, const SyntheticEvent &crossing)
{
    const quint64 delay = crossing.timestamp - begin.timestamp;
    return delay > longestIgnoredDelay ? static_cast<qint32>(delay - delay % delayGranularity) : 0;
}

} // namespace

TouchCompressor::TouchCompressor(const UISettings *uiSettings) : settings(uiSettings)
{
}

bool TouchCompressor::exceedsDragDistance(const SyntheticEvent &first, const SyntheticEvent &second) const
{
    return primaryDelta(first, second).distance() >= settings->dragDistance();
}

TouchFlickCompressor::TouchFlickCompressor(const UISettings *uiSettings) : TouchCompressor(uiSettings)
{
}

Compressor::MatchResult TouchFlickCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty() || !isSingleTouchBegin(queue.front()))
        return NoMatch;
    const SyntheticEvent &begin = queue.front();

    EventIterator event = std::next(queue.begin());
    skipTouchSpan(event, queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isFlick(*event, SyntheticEvent::FlickStarted))
        return NoMatch;

    skipTouchSpan(++event, queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isPrimaryTouchEnd(*event, begin))
        return NoMatch;

    // Nothing is passed over here: the flick must end right behind the touch.
    if (++event == queue.end())
        return exhausted();
    return isFlick(*event, SyntheticEvent::FlickEnded) ? CompleteMatch : NoMatch;
}

EventIterator TouchFlickCompressor::compress(const EventQueue &queue, Modifier::Value,
                                             StatementRecorder *recorder) const
{
    const SyntheticEvent &begin = queue.front();
    EventIterator event = std::next(queue.begin());
    skipTouchSpan(event, queue.end());
    const SyntheticEvent &started = *event;
    skipTouchSpan(++event, queue.end());
    const SyntheticEvent &ended = *++event;
    recorder->flick(started.object, started.objectName, offset(started.contentX, ended.contentX),
                    offset(started.contentY, ended.contentY), begin.timestamp);
    return std::next(event);
}

const char *TouchFlickCompressor::name() const
{
    return "TouchFlickCompressor";
}

TouchGestureCompressor::TouchGestureCompressor(const UISettings *uiSettings) : TouchCompressor(uiSettings)
{
}

Compressor::MatchResult TouchGestureCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    EventIterator event = skipModifierPresses(queue.begin(), queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isTouch(*event, SyntheticEvent::TouchBegin))
        return NoMatch;
    const SyntheticEvent &begin = *event;

    const std::size_t maxFingers = skipTouchSpan(++event, queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isTouch(*event, SyntheticEvent::TouchEnd))
        return NoMatch;
    const bool isMultiTouch = begin.touch.points.size() > 1 || maxFingers > 1 || event->touch.points.size() > 1;
    return isMultiTouch ? CompleteMatch : NoMatch;
}

EventIterator TouchGestureCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                               StatementRecorder *recorder) const
{
    const EventIterator begin = skipModifierPresses(queue.begin(), queue.end());
    TouchBuilder::MultiTouchInfo info(static_cast<float>(begin->touch.areaWidth),
                                      static_cast<float>(begin->touch.areaHeight), TouchBuilder::Pixels);
    EventIterator event = begin;
    bool ended = false;
    for (; event != queue.end() && !ended; ++event) {
        if (event->type == SyntheticEvent::Mouse || event->type == SyntheticEvent::Wheel)
            continue;
        addGestureStep(info, *begin, *event);
        ended = isTouch(*event, SyntheticEvent::TouchEnd);
    }
    // The steps are in coordinates of the window, and so is the statement.
    recorder->gesture(begin->touch.object, begin->touch.objectName, info,
                      joinModifiers(initialModifiers, queue.begin(), begin), begin->timestamp);
    return event;
}

const char *TouchGestureCompressor::name() const
{
    return "TouchGestureCompressor";
}

DoubleTapCompressor::DoubleTapCompressor(const UISettings *uiSettings) : TouchCompressor(uiSettings)
{
}

Compressor::MatchResult DoubleTapCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    EventIterator event = skipModifierPresses(queue.begin(), queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isSingleTouchBegin(*event))
        return NoMatch;
    const SyntheticEvent &first = *event;

    if (skipTouchSpan(++event, queue.end()) > 1)
        return NoMatch;
    if (event == queue.end())
        return exhausted();
    if (!isPrimaryTouchEnd(*event, first) || exceedsDragDistance(first, *event))
        return NoMatch;

    if (skipTouchSpan(++event, queue.end()) > 1)
        return NoMatch;
    // The time is not looked at, so that a tap waits here until an event or a
    // flush comes, however often the alarm rings.
    if (event == queue.end())
        return finishing ? NoMatch : PartialMatchWithAlarm;
    if (!isSingleTouchBegin(*event))
        return NoMatch;
    const SyntheticEvent &second = *event;
    if (!isSameObject(second.object, first.object))
        return NoMatch;
    // From finger down to finger down, where a double click times the first click alone.
    if (second.timestamp - first.timestamp > settings->doubleClickTime())
        return NoMatch;

    if (skipTouchSpan(++event, queue.end()) > 1)
        return NoMatch;
    if (event == queue.end())
        return exhausted();
    if (!isPrimaryTouchEnd(*event, second))
        return NoMatch;
    return exceedsDragDistance(second, *event) ? NoMatch : CompleteMatch;
}

EventIterator DoubleTapCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                            StatementRecorder *recorder) const
{
    const EventIterator first = skipModifierPresses(queue.begin(), queue.end());
    EventIterator event = first;
    // To the first touch end, the second begin and the second touch end.
    for (int i = 0; i < 3; ++i)
        skipTouchSpan(++event, queue.end());
    recorder->doubleTap(first->object, first->objectName, first->objectClass, first->x, first->y,
                        joinModifiers(initialModifiers, queue.begin(), first), first->timestamp);
    return std::next(event);
}

const char *DoubleTapCompressor::name() const
{
    return "DoubleTapCompressor";
}

TapOrDragCompressor::TapOrDragCompressor(const UISettings *uiSettings) : TouchCompressor(uiSettings)
{
}

Compressor::MatchResult TapOrDragCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    EventIterator event = skipModifierPresses(queue.begin(), queue.end());
    if (event == queue.end())
        return exhausted();
    Sequence sequence;
    if (!scanTouchSequence(event, queue.end(), sequence))
        return NoMatch;
    return sequence.touchEnd ? CompleteMatch : exhausted();
}

EventIterator TapOrDragCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                            StatementRecorder *recorder) const
{
    const EventIterator begin = skipModifierPresses(queue.begin(), queue.end());
    const Modifier::Value modifiers = joinModifiers(initialModifiers, queue.begin(), begin);
    EventIterator event = begin;
    Sequence sequence;
    if (!scanTouchSequence(event, queue.end(), sequence) || !sequence.touchEnd)
        return queue.end();
    if (!sequence.crossing) {
        recorder->tapObject(begin->object, begin->objectName, begin->objectClass, begin->x, begin->y, modifiers,
                            begin->timestamp);
    } else {
        const TouchOffset way = primaryDelta(*sequence.crossing, *sequence.touchEnd);
        recorder->touchAndDrag(begin->object, begin->objectName, begin->x, begin->y, way.dx, way.dy, modifiers,
                               dragDelay(*begin, *sequence.crossing), begin->timestamp);
    }
    return std::next(event);
}

const char *TapOrDragCompressor::name() const
{
    return "TapOrDragCompressor";
}

bool TapOrDragCompressor::scanTouchSequence(EventIterator &event, EventIterator end, Sequence &sequence) const
{
    if (event == end || !isSingleTouchBegin(*event))
        return false;
    sequence.begin = &*event;
    for (++event; event != end; ++event) {
        if (isTouch(*event, SyntheticEvent::TouchUpdate)) {
            if (event->touch.points.size() > 1)
                return false;
            if (!sequence.crossing && exceedsDragDistance(*sequence.begin, *event))
                sequence.crossing = &*event;
        } else if (isTouch(*event, SyntheticEvent::TouchEnd)) {
            if (!isPrimaryTouchEnd(*event, *sequence.begin))
                return false;
            sequence.touchEnd = &*event;
            return true;
        } else if (event->type != SyntheticEvent::Mouse && event->type != SyntheticEvent::Wheel) {
            return false;
        }
    }
    return true;
}
