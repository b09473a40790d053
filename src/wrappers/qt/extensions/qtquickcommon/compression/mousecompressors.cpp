#include "wrappers/qt/extensions/qtquickcommon/compression/mousecompressors.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

#include <algorithm>
#include <cstdlib>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

bool isReadyPress(const SyntheticEvent &event)
{
    return isMouse(event, SyntheticEvent::Press) && event.ready;
}

bool isGone(const SharedPtr<Object> &object)
{
    return !object || object->isNull();
}

/// Whether \p event ends what \p started began on the item of \p press.
bool endsFlick(const SyntheticEvent &event, const SyntheticEvent &started, const SyntheticEvent &press)
{
    // A list destroys the row that was pressed when it has moved far enough, so
    // that the end of the flick knows of none. What flicks has to tell then.
    if (isFlick(event, SyntheticEvent::FlickEnded) && isGone(event.flickObject) && press.object && isGone(press.object))
        return isSameObject(event.object, started.object);
    return isFlickEvent(event, press, SyntheticEvent::FlickEnded);
}

} // namespace

MouseButtonCompressor::MouseButtonCompressor(const UISettings *uiSettings) : settings(uiSettings)
{
}

bool MouseButtonCompressor::exceedsDragDistance(const SyntheticEvent &first, const SyntheticEvent &second) const
{
    const qint64 dx = static_cast<qint64>(second.globalX) - first.globalX;
    const qint64 dy = static_cast<qint64>(second.globalY) - first.globalY;
    return std::abs(dy) + std::abs(dx) >= settings->dragDistance();
}

bool MouseButtonCompressor::exceedsLongPressTime(const SyntheticEvent &first, const SyntheticEvent &second) const
{
    return second.timestamp - first.timestamp > 2 * settings->doubleClickTime();
}

MouseFlickCompressor::MouseFlickCompressor(const UISettings *uiSettings) : MouseButtonCompressor(uiSettings)
{
}

Compressor::MatchResult MouseFlickCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    // Neither leading events nor readiness matter here: the statement goes to
    // the flickable, whatever the state of the item that was pressed.
    if (queue.empty() || !isMouse(queue.front(), SyntheticEvent::Press))
        return NoMatch;
    const SyntheticEvent &press = queue.front();

    EventIterator event = skipMoves(std::next(queue.begin()), queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isFlickEvent(*event, press, SyntheticEvent::FlickStarted))
        return NoMatch;
    const SyntheticEvent &started = *event;

    event = skipMoves(std::next(event), queue.end());
    if (event == queue.end())
        return exhausted();
    if (!isReleaseOf(press, *event))
        return NoMatch;

    event = skipMoves(std::next(event), queue.end());
    if (event == queue.end())
        return exhausted();
    return endsFlick(*event, started, press) ? CompleteMatch : NoMatch;
}

EventIterator MouseFlickCompressor::compress(const EventQueue &queue, Modifier::Value,
                                             StatementRecorder *recorder) const
{
    const SyntheticEvent &press = queue.front();
    const EventIterator started = skipMoves(std::next(queue.begin()), queue.end());
    const EventIterator release = skipMoves(std::next(started), queue.end());
    const EventIterator ended = skipMoves(std::next(release), queue.end());
    recorder->flick(started->object, started->objectName, offset(started->contentX, ended->contentX),
                    offset(started->contentY, ended->contentY), press.timestamp);
    return std::next(ended);
}

const char *MouseFlickCompressor::name() const
{
    return "MouseFlickCompressor";
}

DoubleClickCompressor::DoubleClickCompressor(const UISettings *uiSettings) : MouseButtonCompressor(uiSettings)
{
}

Compressor::MatchResult DoubleClickCompressor::match(const EventQueue &queue, Modifier::Value, quint64 now) const
{
    if (queue.empty())
        return NoMatch;
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    if (press == queue.end())
        return exhausted();
    if (!isReadyPress(*press))
        return NoMatch;

    const EventIterator release = skipMoves(std::next(press), queue.end());
    if (release == queue.end())
        return exhausted();
    if (!isReleaseOf(*press, *release) || !isSameObject(release->object, press->object)
        || exceedsDragDistance(*press, *release))
        return NoMatch;

    const EventIterator secondPress = skipMoves(std::next(release), queue.end());
    if (secondPress == queue.end()) {
        if (finishing)
            return NoMatch;
        return now - release->timestamp > settings->doubleClickTime() ? NoMatch : PartialMatchWithAlarm;
    }
    if (!isMouse(*secondPress, SyntheticEvent::Press) || secondPress->button != press->button
        || exceedsDragDistance(*press, *secondPress) || !isSameObject(secondPress->object, press->object))
        return NoMatch;

    // Only the first click is timed. The gap before the second press is
    // limited by the alarm, which runs for twice the double click time.
    return release->timestamp - press->timestamp > settings->doubleClickTime() ? NoMatch : CompleteMatch;
}

EventIterator DoubleClickCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                              StatementRecorder *recorder) const
{
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    const Modifier::Value modifiers = joinModifiers(initialModifiers, queue.begin(), press);
    recorder->doubleClick(press->object, press->objectName, press->objectClass, press->x, press->y, press->button,
                          modifiers, press->timestamp);
    const EventIterator release = skipMoves(std::next(press), queue.end());
    const EventIterator secondPress = skipMoves(std::next(release), queue.end());
    return std::next(secondPress);
}

const char *DoubleClickCompressor::name() const
{
    return "DoubleClickCompressor";
}

MouseDragCompressor::MouseDragCompressor(const UISettings *uiSettings, const Class *pressedClass, qint32 flags)
    : MouseButtonCompressor(uiSettings)
    , itemClass(pressedClass)
    , dragFlags(flags)
{
}

Compressor::MatchResult MouseDragCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    if (press == queue.end())
        return exhausted();
    if (!isReadyPress(*press) || !isOnClass(*press, itemClass))
        return NoMatch;

    const EventIterator release = skipMoves(std::next(press), queue.end());
    if (release == queue.end())
        return exhausted();
    if (!isReleaseOf(*press, *release))
        return NoMatch;

    // Only the end points count: a pointer that came back made no drag.
    return exceedsDragDistance(*press, *release) ? CompleteMatch : NoMatch;
}

EventIterator MouseDragCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                            StatementRecorder *recorder) const
{
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    const EventIterator release = skipMoves(std::next(press), queue.end());
    EventIterator crossing = std::find_if(std::next(press), release, [this, press](const SyntheticEvent &move) {
        return exceedsDragDistance(*press, move);
    });
    // Without a move far enough out, the pointer jumped there from the press.
    if (crossing == release)
        crossing = press;

    const bool longDrag = (dragFlags & DetectLongDrag) && exceedsLongPressTime(*press, *crossing);
    const EventIterator start = (dragFlags & MeasureFromCrossing) ? crossing : press;
    recorder->mouseDrag(press->object, press->objectName, press->x, press->y, offset(start->globalX, release->globalX),
                        offset(start->globalY, release->globalY), press->button,
                        joinModifiers(initialModifiers, queue.begin(), press), press->timestamp, longDrag);
    return std::next(release);
}

const char *MouseDragCompressor::name() const
{
    return "MouseDragCompressor";
}

MouseClickCompressor::MouseClickCompressor(const UISettings *uiSettings, const Class *pressedClass, qint32 flags)
    : MouseButtonCompressor(uiSettings)
    , itemClass(pressedClass)
    , clickFlags(flags)
{
}

Compressor::MatchResult MouseClickCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    if (press == queue.end())
        return exhausted();
    if (!isReadyPress(*press) || !isOnClass(*press, itemClass))
        return NoMatch;

    const EventIterator release = skipMoves(std::next(press), queue.end());
    if (release == queue.end())
        return exhausted();
    return isReleaseOf(*press, *release) ? CompleteMatch : NoMatch;
}

EventIterator MouseClickCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                             StatementRecorder *recorder) const
{
    const EventIterator press = skipLeadingEvents(queue.begin(), queue.end());
    const EventIterator release = skipMoves(std::next(press), queue.end());
    const bool longClick = clickFlags == DetectLongClick && exceedsLongPressTime(*press, *release);
    recorder->mouseClick(press->object, press->objectName, press->objectClass, press->x, press->y, press->button,
                         joinModifiers(initialModifiers, queue.begin(), press), press->timestamp, longClick);
    return std::next(release);
}

const char *MouseClickCompressor::name() const
{
    return "MouseClickCompressor";
}
