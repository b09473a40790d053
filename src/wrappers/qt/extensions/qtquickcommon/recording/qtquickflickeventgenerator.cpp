#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/eventobjects_p.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/wrapping.h"

#include <cmath>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

bool isMouse(const SyntheticEvent &event, SyntheticEvent::MouseEventType type)
{
    return event.type == SyntheticEvent::Mouse && event.mouseEventType == type;
}

bool isTouch(const SyntheticEvent &event, SyntheticEvent::TouchEventType type)
{
    return event.type == SyntheticEvent::Touch && event.touch.touchEventType == type;
}

/// Several fingers at once make a gesture, not a flick.
bool mayBeginFlick(const SyntheticEvent &event)
{
    return isMouse(event, SyntheticEvent::Press)
        || (isTouch(event, SyntheticEvent::TouchBegin) && event.touch.points.size() == 1);
}

bool endsPress(const SyntheticEvent &event)
{
    return isMouse(event, SyntheticEvent::Release) || isTouch(event, SyntheticEvent::TouchEnd);
}

/// Null for an object that is no Qt Quick item, or is none any more.
QQuickItem *itemOf(const SyntheticEvent &event, const Class *quickItemClass)
{
    void *native = nullptr;
    if (!event.object || !event.object->isA(quickItemClass) || !event.object->get(&native))
        return nullptr;
    return qobject_cast<QQuickItem *>(static_cast<QObject *>(native));
}

/// Cut toward zero, and to what fits: a program may set any content position.
qint32 truncated(qreal value)
{
    using Limits = std::numeric_limits<qint32>;
    if (std::isnan(value))
        return 0;
    return static_cast<qint32>(qBound<qreal>(Limits::min(), value, Limits::max()));
}

} // namespace

QtQuickFlickEventGenerator::QtQuickFlickEventGenerator(SharedPtr<QtEventRecorder> eventRecorder)
    : recorder(std::move(eventRecorder))
    , quickItemClass(Inspector::self()->classByName(QStringLiteral("QQuickItem")))
    , monitor(new FlickMonitor)
{
    monitor->setObserver(this);
}

QtQuickFlickEventGenerator::QtQuickFlickEventGenerator(const QtQuickFlickEventGenerator &) = default;

QtQuickFlickEventGenerator &QtQuickFlickEventGenerator::operator=(const QtQuickFlickEventGenerator &) = default;

QtQuickFlickEventGenerator::~QtQuickFlickEventGenerator()
{
    delete monitor;
}

void QtQuickFlickEventGenerator::peekSyntheticEvent(const SyntheticEvent &event)
{
    if (mayBeginFlick(event))
        monitor->watchFlickablesOf(itemOf(event, quickItemClass));
    else if (endsPress(event))
        monitor->unwatchIdleFlickablesOf(itemOf(event, quickItemClass));
}

void QtQuickFlickEventGenerator::flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item)
{
    compressFlickEvent(flickable, position, item, SyntheticEvent::FlickStarted);
}

void QtQuickFlickEventGenerator::flickEnded(QQuickItem *flickable, const QPointF &position, QQuickItem *item)
{
    compressFlickEvent(flickable, position, item, SyntheticEvent::FlickEnded);
}

void QtQuickFlickEventGenerator::compressFlickEvent(QQuickItem *flickable, const QPointF &position, QQuickItem *item,
                                                    SyntheticEvent::FlickState state)
{
    // A statement, and code of the program that naming runs, may lead to this
    // generator's end, and with it the recorder's.
    const SharedPtr<QtEventRecorder> heldRecorder = recorder;
    SyntheticEvent event;
    event.type = SyntheticEvent::Flick;
    // The flickable is what a script is to flick; the item only tells which
    // press the flick belongs to. It is taken before code of the program can
    // run, as it may destroy the item.
    event.flickObject = wrapAndRegisterQObject(item);
    setEventObject(&event, wrapAndRegisterQObject(flickable));
    event.x = 0;
    event.y = 0;
    event.contentX = truncated(position.x());
    event.contentY = truncated(position.y());
    event.flickState = state;
    heldRecorder->eatEvent(event);
}

} // namespace Vantle::QtWrapper
