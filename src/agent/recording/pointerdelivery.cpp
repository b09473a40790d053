#include "agent/recording/pointerdelivery.h"

#include "wrappers/qt/extensions/qtquick/inputdelivery.h"
#include "wrappers/qt/extensions/qtquick/pressroad.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QTouchEvent>
#include <QtGui/QWheelEvent>
#include <QtGui/private/qpointingdevice_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::InputDelivery;
using QtWrapper::SyntheticEvent;

const QQuickWindow *quickWindow(const QWindow *window)
{
    return qobject_cast<const QQuickWindow *>(window);
}

/// What a press at \p point of the scene means; null where nothing answers it.
QQuickItem *answererAt(const QQuickWindow *window, QPointF point, Qt::MouseButton button)
{
    return window ? QtWrapper::answererFor(QtWrapper::pressTakerAt(window, point, button), point) : nullptr;
}

/// The item that has the pointer now; null if none has.
QQuickItem *grabberOf(const QPointingDevice *device, int pointId)
{
    const auto *const known = QPointingDevicePrivate::get(const_cast<QPointingDevice *>(device))->queryPointById(pointId);
    QObject *const grabber = known ? known->exclusiveGrabber.data() : nullptr;
    if (auto *const item = qobject_cast<QQuickItem *>(grabber))
        return item;
    return grabber ? qobject_cast<QQuickItem *>(grabber->parent()) : nullptr;
}

/// Records \p event anew against what \p item is. The record stays as it was
/// if the event can't be recorded any more.
void recordAgainst(QQuickItem *item, QWindow *window, QEvent *event, SyntheticEvent *record)
{
    SyntheticEvent corrected;
    const InputDelivery delivery = InputDelivery::toItem(item);
    if (!QtWrapper::qtEventToSyntheticEvent(window, event, &corrected))
        return;
    corrected.timestamp = record->timestamp;
    *record = corrected;
}

} // namespace

PointerDelivery::Holder::Holder(const SyntheticEvent &record)
    : object(record.object)
    , name(record.objectName)
    , type(record.objectClass)
    , isReady(record.ready)
{
}

void PointerDelivery::Holder::writeTo(SyntheticEvent *record) const
{
    record->object = object;
    record->objectName = name;
    record->objectClass = type;
    record->ready = isReady;
}

PointerDelivery::PointerDelivery(RecordStage *line, Observer foreseen, ItemObserver aimedAt)
    : m_line(line)
    , m_foreseen(std::move(foreseen))
    , m_aimedAt(std::move(aimedAt))
{
}

PointerDelivery::~PointerDelivery() = default;

bool PointerDelivery::take(QWindow *window, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress: takePress(window, static_cast<QMouseEvent *>(event)); return true;
    case QEvent::MouseMove: takeMove(static_cast<QMouseEvent *>(event)); return true;
    case QEvent::MouseButtonRelease: takeRelease(window, static_cast<QMouseEvent *>(event)); return true;
    case QEvent::Wheel: takeWheel(window, static_cast<QWheelEvent *>(event)); return true;
    case QEvent::TouchBegin: takeTouchBegin(window, static_cast<QTouchEvent *>(event)); return true;
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel: takeTouch(window, static_cast<QTouchEvent *>(event)); return true;
    default: return false;
    }
}

void PointerDelivery::takePress(QWindow *window, QMouseEvent *event)
{
    complete();
    QQuickItem *const taker = answererAt(quickWindow(window), event->scenePosition(), event->button());
    m_aimedAt(taker);
    Pending pending;
    {
        const InputDelivery delivery = InputDelivery::toItem(taker);
        if (!QtWrapper::qtEventToSyntheticEvent(window, event, &pending.record))
            return;
    }
    pending.window = window;
    pending.event.reset(event->clone());
    pending.scenePoint = event->scenePosition();
    pending.foreseen = taker;
    pending.device = event->pointingDevice();
    pending.pointId = event->points().isEmpty() ? 0 : event->point(0).id();
    m_foreseen(pending.record);
    keepBack(std::move(pending));
}

void PointerDelivery::takeMove(QMouseEvent *event)
{
    SyntheticEvent record;
    if (!QtWrapper::qtEventToSyntheticEvent(&m_nobody, event, &record))
        return;
    complete();
    m_line->take(record);
}

void PointerDelivery::takeRelease(QWindow *window, QMouseEvent *event)
{
    complete();
    const auto holder = m_pressed.constFind(event->button());
    SyntheticEvent record;
    QObject *const receiver = holder != m_pressed.cend() ? &m_nobody : static_cast<QObject *>(window);
    if (!QtWrapper::qtEventToSyntheticEvent(receiver, event, &record))
        return;
    if (holder != m_pressed.cend()) {
        holder->writeTo(&record);
        m_pressed.erase(holder);
    }
    m_foreseen(record);
    m_line->take(record);
}

void PointerDelivery::takeWheel(QWindow *window, QWheelEvent *event)
{
    complete();
    QQuickItem *const taker = QtWrapper::wheelTakerAt(quickWindow(window), event->scenePosition());
    Pending pending;
    {
        const InputDelivery delivery = InputDelivery::toItem(taker);
        if (!QtWrapper::qtEventToSyntheticEvent(window, event, &pending.record))
            return;
    }
    pending.window = window;
    pending.event.reset(event->clone());
    pending.scenePoint = event->scenePosition();
    pending.foreseen = taker;
    keepBack(std::move(pending));
}

void PointerDelivery::takeTouchBegin(QWindow *window, QTouchEvent *event)
{
    complete();
    const QPointF point = event->points().isEmpty() ? QPointF() : event->point(0).position();
    QQuickItem *const taker = answererAt(quickWindow(window), point, Qt::LeftButton);
    Pending pending;
    {
        const InputDelivery delivery = InputDelivery::toItem(taker);
        if (!QtWrapper::qtEventToSyntheticEvent(window, event, &pending.record))
            return;
    }
    pending.window = window;
    m_foreseen(pending.record);
    keepBack(std::move(pending));
}

void PointerDelivery::takeTouch(QWindow *window, QTouchEvent *event)
{
    complete();
    SyntheticEvent record;
    QObject *const receiver = m_touched ? &m_nobody : static_cast<QObject *>(window);
    if (!QtWrapper::qtEventToSyntheticEvent(receiver, event, &record))
        return;
    if (m_touched)
        m_touched->writeTo(&record);
    if (event->type() != QEvent::TouchUpdate)
        m_touched.reset();
    m_foreseen(record);
    m_line->take(record);
}

void PointerDelivery::keepBack(Pending pending)
{
    m_pending.emplace(std::move(pending));
    // Behind the delivery, unless something else happens first.
    QMetaObject::invokeMethod(this, &PointerDelivery::complete, Qt::QueuedConnection);
}

void PointerDelivery::noteDelivery(QObject *item, const QEvent &event)
{
    if (!m_pending || !m_pending->event || m_pending->event->type() != event.type())
        return;
    auto *const receiver = qobject_cast<QQuickItem *>(item);
    if (receiver && receiver->window() == m_pending->window)
        m_pending->receivers.append(receiver);
}

void PointerDelivery::complete()
{
    if (!m_pending)
        return;
    // Naming runs code of the program, and so anything may come in meanwhile.
    Pending pending = *std::exchange(m_pending, std::nullopt);
    switch (pending.record.type) {
    case SyntheticEvent::Mouse:
        correctPress(&pending);
        m_pressed.insert(static_cast<int>(static_cast<QMouseEvent *>(pending.event.get())->button()),
                         Holder(pending.record));
        break;
    case SyntheticEvent::Wheel: correctWheel(&pending); break;
    case SyntheticEvent::Touch: m_touched.emplace(pending.record); break;
    default: break;
    }
    if (pending.record.type != SyntheticEvent::Wheel)
        m_wheelTaker.clear();
    m_line->take(pending.record);
}

/// Whoever got the press and did not keep it let it through to the next one.
void PointerDelivery::correctPress(Pending *pending) const
{
    if (!pending->window || !quickWindow(pending->window) || pending->receivers.isEmpty())
        return;
    QQuickItem *const taker = QtWrapper::answererFor(pressTakerOf(*pending), pending->scenePoint);
    if (taker != pending->foreseen)
        recordAgainst(taker, pending->window, pending->event.get(), &pending->record);
}

QQuickItem *PointerDelivery::pressTakerOf(const Pending &pending) const
{
    const auto &receivers = pending.receivers;
    QQuickItem *const last = receivers.last();
    QQuickItem *const grabber = pending.device ? grabberOf(pending.device, pending.pointId) : nullptr;
    if (!pending.foreseen)
        return grabber && receivers.contains(grabber) ? grabber : nullptr;
    if (last == pending.foreseen || !receivers.contains(pending.foreseen) || !last)
        return pending.foreseen;
    // What holds an item may watch over what is pressed in it.
    return grabber && (grabber == last || grabber->isAncestorOf(last)) ? last : grabber;
}

void PointerDelivery::correctWheel(Pending *pending)
{
    QQuickItem *const taker = wheelTakerOf(*pending);
    if (taker != pending->foreseen && pending->window)
        recordAgainst(taker, pending->window, pending->event.get(), &pending->record);
    m_wheelTaker = taker;
}

/// The wheel goes from item to item until one takes it. If it came to the end,
/// nothing could scroll any further: then it means what has scrolled so far.
QQuickItem *PointerDelivery::wheelTakerOf(const Pending &pending) const
{
    const QQuickWindow *const window = quickWindow(pending.window);
    QQuickItem *const last = pending.receivers.isEmpty() ? nullptr : pending.receivers.last().data();
    if (window && last && last != window->contentItem() && QtWrapper::isWheelTaker(last))
        return last;
    if (m_wheelTaker && m_wheelTaker->window() == window
        && m_wheelTaker->contains(m_wheelTaker->mapFromScene(pending.scenePoint)))
        return m_wheelTaker;
    return pending.foreseen;
}

void PointerDelivery::reset()
{
    m_pending.reset();
    m_pressed.clear();
    m_touched.reset();
    m_wheelTaker.clear();
}

} // namespace Vantle::Agent
