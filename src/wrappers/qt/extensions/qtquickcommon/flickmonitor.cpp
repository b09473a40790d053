#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"

#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"

#include <QtQuick/private/qquickflickable_p.h>

#include <functional>

namespace Vantle::QtWrapper {

using QtQuickCommon::logWarning;

namespace {

QPointF contentPosition(const QQuickFlickable *flickable)
{
    return {flickable->contentX(), flickable->contentY()};
}

/// Calls \p visit for each flickable from \p item, which may be null, to the top.
template<typename Visitor>
void forEachFlickableOf(QQuickItem *item, Visitor visit)
{
    for (; item; item = item->parentItem()) {
        if (auto *const flickable = qobject_cast<QQuickFlickable *>(item))
            visit(flickable);
    }
}

} // namespace

FlickMonitor::FlickMonitor() = default;

FlickMonitor::~FlickMonitor() = default;

void FlickMonitor::setObserver(FlickObserver *newObserver)
{
    observer = newObserver;
}

// A key turns to null when its flickable dies and stays where it is, so the
// keys may be out of order, and searching by order could miss one.
FlickMonitor::FlickStates::iterator FlickMonitor::findWatch(const QQuickFlickable *flickable)
{
    auto watch = flickables.begin();
    if (!flickable)
        return flickables.end();
    while (watch != flickables.end() && watch.key().data() != flickable)
        ++watch;
    return watch;
}

void FlickMonitor::watchFlickable(QQuickFlickable *flickable, QQuickItem *item)
{
    VANTLE_TRACE("Watching flickable " << flickable << " for item " << item << ". "
                                       << "Currently watching " << flickables.size() << " other flickables.");
    const FlickState state{item, contentPosition(flickable), false};
    connect(flickable, &QQuickFlickable::movementStarted, this, &FlickMonitor::flickable_movementStarted);
    connect(flickable, &QQuickFlickable::movementEnded, this, &FlickMonitor::flickable_movementEnded);

    if (const auto watch = findWatch(flickable); watch != flickables.end()) {
        *watch = state;
        return;
    }
    // Ahead of the first greater key: everything before it is smaller, also
    // among keys that are out of order, so the map accepts the place.
    auto next = flickables.constBegin();
    while (next != flickables.constEnd() && !std::less<>()(flickable, next.key().data()))
        ++next;
    flickables.insert(next, flickable, state);
}

void FlickMonitor::unwatchFlickable(QQuickFlickable *flickable)
{
    disconnect(flickable, &QQuickFlickable::movementStarted, this, &FlickMonitor::flickable_movementStarted);
    disconnect(flickable, &QQuickFlickable::movementEnded, this, &FlickMonitor::flickable_movementEnded);
    if (const auto watch = findWatch(flickable); watch != flickables.end())
        flickables.erase(watch);
    VANTLE_TRACE("Unwatching flickable " << flickable << ", " << flickables.size() << " flickables left to watch");
}

void FlickMonitor::watchFlickablesOf(QQuickItem *item)
{
    forEachFlickableOf(item, [this, item](QQuickFlickable *flickable) { watchFlickable(flickable, item); });
}

void FlickMonitor::unwatchIdleFlickablesOf(QQuickItem *item)
{
    forEachFlickableOf(item, [this](QQuickFlickable *flickable) {
        const auto watch = findWatch(flickable);
        const bool inMovement = watch != flickables.end() && watch->inMovement;
        if (!inMovement)
            unwatchFlickable(flickable);
    });
}

void FlickMonitor::flickable_movementStarted()
{
    auto *const flickable = qobject_cast<QQuickFlickable *>(sender());
    const auto watch = findWatch(flickable);
    if (watch == flickables.end()) {
        logWarning("Start of flick seen for flickable that is not monitored");
        return;
    }
    VANTLE_TRACE("Start of flick movement on " << flickable);
    watch->inMovement = true;
    if (!observer)
        return;

    const FlickState fs = *watch;
    VANTLE_TRACE("Informing observer about start of flick; "
                 << "fs.contentStartPos"
                 << "=" << fs.contentStartPos);
    // Nothing may follow: the observer may destroy all that this works on.
    observer->flickStarted(flickable, fs.contentStartPos, fs.item);
}

void FlickMonitor::flickable_movementEnded()
{
    auto *const flickable = qobject_cast<QQuickFlickable *>(sender());
    const auto watch = findWatch(flickable);
    if (watch == flickables.end()) {
        logWarning("End of flick seen for flickable that is not monitored");
        return;
    }
    VANTLE_TRACE("End of flick movement on " << flickable);
    const QPointF position = contentPosition(flickable);
    if (!observer) {
        unwatchFlickable(flickable);
        return;
    }

    const FlickState fs = *watch;
    // The start position, although the observer gets that of the end: with
    // both ends in the trace of one flick its distance can be read off.
    VANTLE_TRACE("Informing observer about end of flick; "
                 << "fs.contentStartPos"
                 << "=" << fs.contentStartPos);
    const QPointer<FlickMonitor> monitorGuard(this);
    const QPointer<QQuickFlickable> flickableGuard(flickable);
    observer->flickEnded(flickable, position, fs.item);
    if (monitorGuard && flickableGuard)
        unwatchFlickable(flickable);
}

} // namespace Vantle::QtWrapper
