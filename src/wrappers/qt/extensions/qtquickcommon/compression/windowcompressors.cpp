#include "wrappers/qt/extensions/qtquickcommon/compression/windowcompressors.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

#include <algorithm>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// The end of the run of events that are of the head's type and on its object.
EventIterator endOfRun(const EventQueue &queue)
{
    const SyntheticEvent &head = queue.front();
    return std::find_if_not(std::next(queue.begin()), queue.end(), [&head](const SyntheticEvent &event) {
        return event.type == head.type && isSameObject(event.object, head.object);
    });
}

bool startsWith(const EventQueue &queue, SyntheticEvent::Type type)
{
    return !queue.empty() && queue.front().type == type;
}

} // namespace

Compressor::MatchResult WindowCloseCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    const EventIterator event = skipMoves(queue.begin(), queue.end());
    if (event == queue.end())
        return exhausted();
    return event->type == SyntheticEvent::WindowClose && event->ready ? CompleteMatch : NoMatch;
}

EventIterator WindowCloseCompressor::compress(const EventQueue &queue, Modifier::Value,
                                              StatementRecorder *recorder) const
{
    const EventIterator event = skipMoves(queue.begin(), queue.end());
    recorder->closeWindow(event->object, event->objectName, event->timestamp);
    return std::next(event);
}

const char *WindowCloseCompressor::name() const
{
    return "WindowCloseCompressor";
}

Compressor::MatchResult WindowMoveCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (!startsWith(queue, SyntheticEvent::WindowMove))
        return NoMatch;
    const EventIterator end = endOfRun(queue);
    if (end == queue.end() && !finishing)
        return PartialMatch;
    const bool isSingle = end == std::next(queue.begin());
    return isSingle ? NoMatch : CompleteMatch;
}

EventIterator WindowMoveCompressor::compress(const EventQueue &queue, Modifier::Value,
                                             StatementRecorder *recorder) const
{
    const SyntheticEvent &first = queue.front();
    const EventIterator end = endOfRun(queue);
    const SyntheticEvent &last = *std::prev(end);
    const qint32 dx = offset(first.oldWindowX, last.windowX);
    const qint32 dy = offset(first.oldWindowY, last.windowY);
    // A window that came back to its place was not moved.
    if (dx != 0 || dy != 0)
        recorder->moveWindow(first.object, first.objectName, dx, dy, first.timestamp);
    return end;
}

const char *WindowMoveCompressor::name() const
{
    return "WindowMoveCompressor";
}

Compressor::MatchResult WindowResizeCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (!startsWith(queue, SyntheticEvent::WindowResize))
        return NoMatch;
    // A run that is flushed is complete, and so is a single event.
    return endOfRun(queue) != queue.end() || finishing ? CompleteMatch : PartialMatch;
}

EventIterator WindowResizeCompressor::compress(const EventQueue &queue, Modifier::Value,
                                               StatementRecorder *recorder) const
{
    const SyntheticEvent &first = queue.front();
    const EventIterator end = endOfRun(queue);
    const EventIterator last = std::prev(end);
    if (last != queue.begin()) {
        recorder->setWindowSize(first.object, first.objectName, last->windowWidth, last->windowHeight, first.timestamp);
    }
    return end;
}

const char *WindowResizeCompressor::name() const
{
    return "WindowResizeCompressor";
}

Compressor::MatchResult WindowStateChangeCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    return startsWith(queue, SyntheticEvent::WindowStateChange) && queue.front().ready ? CompleteMatch : NoMatch;
}

EventIterator WindowStateChangeCompressor::compress(const EventQueue &queue, Modifier::Value,
                                                    StatementRecorder *recorder) const
{
    const SyntheticEvent &head = queue.front();
    recorder->setWindowState(head.object, head.objectName, head.windowState, head.timestamp);
    return std::next(queue.begin());
}

const char *WindowStateChangeCompressor::name() const
{
    return "WindowStateChangeCompressor";
}
