#include "wrappers/qt/extensions/qtquickcommon/compression/wheelcompressor.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

bool isReadyWheel(const SyntheticEvent &event)
{
    return event.type == SyntheticEvent::Wheel && event.ready;
}

bool continuesRun(const SyntheticEvent &event, const SyntheticEvent &first)
{
    return isMove(event) || (isReadyWheel(event) && isSameObject(event.object, first.object));
}

/// The sum, modulo 2^32.
qint32 add(qint32 a, qint32 b)
{
    return static_cast<qint32>(static_cast<qint64>(a) + b);
}

} // namespace

Compressor::MatchResult WheelCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    const EventIterator first = skipLeadingEvents(queue.begin(), queue.end());
    if (first == queue.end())
        return exhausted();
    if (!isReadyWheel(*first))
        return NoMatch;

    EventIterator event = std::next(first);
    while (event != queue.end() && continuesRun(*event, *first))
        ++event;
    // A run that is flushed is complete.
    return event != queue.end() || finishing ? CompleteMatch : PartialMatch;
}

EventIterator WheelCompressor::compress(const EventQueue &queue, Modifier::Value initialModifiers,
                                        StatementRecorder *recorder) const
{
    const EventIterator first = skipLeadingEvents(queue.begin(), queue.end());
    qint32 sumX = first->wheelDeltaX;
    qint32 sumY = first->wheelDeltaY;
    EventIterator event = std::next(first);
    for (; event != queue.end() && continuesRun(*event, *first); ++event) {
        if (event->type == SyntheticEvent::Wheel) {
            sumX = add(sumX, event->wheelDeltaX);
            sumY = add(sumY, event->wheelDeltaY);
        }
    }
    recorder->mouseWheel(first->object, first->objectName, first->x, first->y, sumX, sumY,
                         joinModifiers(initialModifiers, queue.begin(), first), first->timestamp);
    return event;
}

const char *WheelCompressor::name() const
{
    return "WheelCompressor";
}
