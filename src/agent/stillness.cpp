#include "agent/stillness.h"

#include "agent/objecttree.h"
#include "wrappers/qt/wrapping.h"

// Qt's header uses a keyword that we have switched off.
#define emit Q_EMIT
#include <QtCore/private/qabstractanimation_p.h>
#undef emit

namespace Vantle::Agent {

namespace {

// Where frames don't wait for a screen, several of them show the same step of
// an animation.
constexpr qint64 animationTick = 17;

// The first tick gives an animation its start time, and one whose start comes
// late in the same turn of the event loop moves nothing before the third.
constexpr int ticksToMove = 3;

// A flickable sets off so slowly that a few frames show nothing of it, and
// takes a press meanwhile for itself. One that is held moves for ever.
constexpr qint64 restOfFlickable = 250;
constexpr int ticksOfFlickable = 8;

// A window that is not drawn doesn't move its items by animations either; what
// moves them otherwise has had its time then.
constexpr qint64 restWithoutFrames = 250;

// No computer is that busy: the window is on the screen, but the program keeps
// it from being drawn, or animations from running.
constexpr qint64 restOfFrozen = 3000;

QRectF exactRect(const SharedPtr<Object> &object, const QQuickItem *item)
{
    if (!item || !item->window())
        return screenRect(object);
    return item->mapRectToScene(QRectF(QPointF(), item->size())).translated(item->window()->position());
}

// Parts that move for longer may do so for ever, as those of a busy indicator.
constexpr qint64 longestMotionOfParts = 600;

// What has more is no control.
constexpr qsizetype mostParts = 24;

QList<QRectF> partsOf(const QQuickItem *item)
{
    const QList<QQuickItem *> children = item->childItems();
    QList<QRectF> parts;
    for (const QQuickItem *child : children.first(qMin(children.size(), mostParts)))
        parts.append(QRectF(child->position(), child->size()));
    return parts;
}

bool isDrawn(const QQuickWindow *window)
{
    return window && window->isExposed() && !window->size().isEmpty();
}

} // namespace

void AnimationTicks::updateCurrentTime(int time)
{
    if (time > m_time)
        ++m_count;
    m_time = time;
}

Stillness::Stillness() = default;

Stillness::~Stillness() = default;

bool Stillness::isAtRest(const SharedPtr<Object> &object)
{
    QObject *const native = QtWrapper::nativeQObject(object);
    const Place place = placeOf(object);
    const bool isSameWhole = native && native == m_object && place.isSameWhole(m_place);
    if (!isSameWhole)
        m_sinceWholeMoved.start();
    const bool mayPartsMove = isSameWhole && m_sinceWholeMoved.elapsed() > longestMotionOfParts;
    if (isSameWhole && (place.parts == m_place.parts || mayPartsMove)) {
        if (hasHadItsChance()) {
            m_ticks.stop();
            return true;
        }
    } else {
        m_object = native;
        m_place = place;
        m_frames = 0;
        m_ticks.restart();
        m_sinceChange.start();
    }
    if (areOthersAnimated() && m_ticks.state() != QAbstractAnimation::Running)
        m_ticks.start();
    const auto *const item = qobject_cast<QQuickItem *>(native);
    watch(item ? item->window() : qobject_cast<QQuickWindow *>(native));
    return false;
}

void Stillness::forget()
{
    m_object.clear();
    m_ticks.stop();
}

Stillness::Place Stillness::placeOf(const SharedPtr<Object> &object)
{
    auto *item = qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object));
    Place place{exactRect(object, item), {}, item ? partsOf(item) : QList<QRectF>()};
    m_carrier.clear();
    for (; item; item = item->parentItem()) {
        if (!item->inherits("QQuickFlickable"))
            continue;
        // Views also move their content by themselves, to follow their current entry.
        place.contents.append({item->property("contentX").toReal(), item->property("contentY").toReal()});
        if (!m_carrier && item->property("moving").toBool())
            m_carrier = item;
    }
    return place;
}

/// Whether what moves the object would have shown since it was first seen here.
bool Stillness::hasHadItsChance() const
{
    const qint64 time = m_sinceChange.elapsed();
    if (time >= restOfFrozen)
        return true;
    if (m_carrier && time < restOfFlickable)
        return false;
    if (areOthersAnimated() && m_ticks.count() < (m_carrier ? ticksOfFlickable : ticksToMove))
        return false;
    return isDrawn(m_window) ? m_frames > 0 && time >= animationTick : time >= restWithoutFrames;
}

bool Stillness::areOthersAnimated() const
{
    const int own = m_ticks.isTicking() ? 1 : 0;
    return QUnifiedTimer::instance()->runningAnimationCount() > own;
}

void Stillness::watch(QQuickWindow *window)
{
    if (!window)
        return;
    if (m_window != window) {
        if (m_window)
            m_window->disconnect(this);
        m_window = window;
        connect(window, &QQuickWindow::afterAnimating, this, [this] { ++m_frames; });
    }
    window->update();
}

} // namespace Vantle::Agent
