#include "naivemodel.h"

#include "naivehelpers.h"

#include <cstdlib>

using namespace Vantle;

namespace VantleTest {

namespace {

bool touchIs(const E &e, E::TouchEventType type)
{
    return e.type == E::Touch && e.touch.touchEventType == type;
}

bool hasPrimary(const E &e)
{
    return e.touch.primaryIndex < e.touch.points.size();
}

int primaryId(const E &e)
{
    return e.touch.points[e.touch.primaryIndex].id;
}

bool liftsPrimary(const E &e, const E &begin)
{
    return touchIs(e, E::TouchEnd) && hasPrimary(e) && hasPrimary(begin) && primaryId(e) == primaryId(begin);
}

int fingerWayX(const E &a, const E &b)
{
    if (!hasPrimary(a) || !hasPrimary(b))
        return 0;
    const E::TouchPoint &p = a.touch.points[a.touch.primaryIndex];
    const E::TouchPoint &q = b.touch.points[b.touch.primaryIndex];
    return int((q.globalX + 0.5 * q.width) - (p.globalX + 0.5 * p.width));
}

int fingerWayY(const E &a, const E &b)
{
    if (!hasPrimary(a) || !hasPrimary(b))
        return 0;
    const E::TouchPoint &p = a.touch.points[a.touch.primaryIndex];
    const E::TouchPoint &q = b.touch.points[b.touch.primaryIndex];
    return int((q.globalY + 0.5 * q.height) - (p.globalY + 0.5 * p.height));
}

int fingerWay(const E &a, const E &b)
{
    return std::abs(fingerWayX(a, b)) + std::abs(fingerWayY(a, b));
}

/// Passes over what may lie inside a touch sequence; the most fingers of an update go to *fingers.
std::size_t passTouchSpan(const std::vector<E> &q, std::size_t i, std::size_t *fingers)
{
    *fingers = 0;
    while (i < q.size()) {
        if (touchIs(q[i], E::TouchUpdate)) {
            if (q[i].touch.points.size() > *fingers)
                *fingers = q[i].touch.points.size();
        } else if (q[i].type != E::Mouse && q[i].type != E::Wheel) {
            return i;
        }
        ++i;
    }
    return i;
}

} // namespace

NaiveModel::Answer NaiveModel::touchFlick(bool last) const
{
    const Answer endOfQueue{last ? No : Partial, 0, {}};
    const E &begin = queue[0];
    if (!touchIs(begin, E::TouchBegin) || begin.touch.points.size() != 1)
        return {};
    std::size_t fingers = 0;
    const std::size_t start = passTouchSpan(queue, 1, &fingers);
    if (start == queue.size())
        return endOfQueue;
    if (queue[start].type != E::Flick || queue[start].flickState != E::FlickStarted)
        return {};
    const std::size_t lift = passTouchSpan(queue, start + 1, &fingers);
    if (lift == queue.size())
        return endOfQueue;
    if (!liftsPrimary(queue[lift], begin))
        return {};
    const std::size_t end = lift + 1;
    if (end == queue.size())
        return endOfQueue;
    if (queue[end].type != E::Flick || queue[end].flickState != E::FlickEnded)
        return {};
    Statement s = statement("flick", queue[start], begin.timestamp);
    s.numbers = {queue[end].contentX - queue[start].contentX, queue[end].contentY - queue[start].contentY};
    return {Complete, end + 1, {s}};
}

NaiveModel::Answer NaiveModel::touchGesture(bool last) const
{
    const Answer endOfQueue{last ? No : Partial, 0, {}};
    int m = modifiers;
    std::size_t b = 0;
    while (b < queue.size() && modifierKey(queue[b]))
        m |= queue[b++].modifiers;
    if (b == queue.size())
        return endOfQueue;
    if (!touchIs(queue[b], E::TouchBegin))
        return {};
    std::size_t fingers = 0;
    const std::size_t end = passTouchSpan(queue, b + 1, &fingers);
    if (end == queue.size())
        return endOfQueue;
    if (!touchIs(queue[end], E::TouchEnd))
        return {};
    if (queue[b].touch.points.size() <= 1 && fingers <= 1 && queue[end].touch.points.size() <= 1)
        return {};

    TouchBuilder::MultiTouchInfo info(float(queue[b].touch.areaWidth), float(queue[b].touch.areaHeight),
                                      TouchBuilder::Unit(0));
    for (std::size_t i = b; i <= end; ++i) {
        if (queue[i].type != E::Touch)
            continue;
        TouchBuilder::Step step;
        step.time = quint32(queue[i].timestamp - queue[b].timestamp);
        for (const E::TouchPoint &p : queue[i].touch.points) {
            const double size = p.height > p.width ? p.height : p.width;
            step.points.push_back({p.id, float(p.x), float(p.y), float(p.pressure), size > 0 ? float(size) : -1.0f, 0});
        }
        info.steps.push_back(step);
    }
    Statement s;
    s.method = "gesture";
    s.object = queue[b].touch.object.get();
    s.objectName = queue[b].touch.objectName;
    s.gesture = info;
    s.modifiers = Modifier::Value(m);
    s.timestamp = queue[b].timestamp;
    return {Complete, end + 1, {s}};
}

NaiveModel::Answer NaiveModel::doubleTap(bool last) const
{
    const Answer endOfQueue{last ? No : Partial, 0, {}};
    int m = modifiers;
    std::size_t first = 0;
    while (first < queue.size() && modifierKey(queue[first]))
        m |= queue[first++].modifiers;
    if (first == queue.size())
        return endOfQueue;
    if (!touchIs(queue[first], E::TouchBegin) || queue[first].touch.points.size() != 1)
        return {};
    std::size_t fingers = 0;
    const std::size_t lift = passTouchSpan(queue, first + 1, &fingers);
    if (fingers > 1)
        return {};
    if (lift == queue.size())
        return endOfQueue;
    if (!liftsPrimary(queue[lift], queue[first]))
        return {};
    if (fingerWay(queue[first], queue[lift]) >= m_settings.distance)
        return {};
    const std::size_t second = passTouchSpan(queue, lift + 1, &fingers);
    if (fingers > 1)
        return {};
    if (second == queue.size())
        return {last ? No : PartialWithAlarm, 0, {}};
    if (!touchIs(queue[second], E::TouchBegin) || queue[second].touch.points.size() != 1)
        return {};
    if (!same(queue[second].object, queue[first].object))
        return {};
    if (queue[second].timestamp - queue[first].timestamp > m_settings.time)
        return {};
    const std::size_t secondLift = passTouchSpan(queue, second + 1, &fingers);
    if (fingers > 1)
        return {};
    if (secondLift == queue.size())
        return endOfQueue;
    if (!liftsPrimary(queue[secondLift], queue[second]))
        return {};
    if (fingerWay(queue[second], queue[secondLift]) >= m_settings.distance)
        return {};
    Statement s = statement("doubleTap", queue[first], queue[first].timestamp);
    s.objectClass = queue[first].objectClass;
    s.numbers = {queue[first].x, queue[first].y};
    s.modifiers = Modifier::Value(m);
    return {Complete, secondLift + 1, {s}};
}

NaiveModel::Answer NaiveModel::tapOrDrag(bool last) const
{
    int m = modifiers;
    std::size_t b = 0;
    while (b < queue.size() && modifierKey(queue[b]))
        m |= queue[b++].modifiers;
    if (b == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &begin = queue[b];
    if (!touchIs(begin, E::TouchBegin) || begin.touch.points.size() != 1)
        return {};
    std::size_t crossing = 0; // the begin is never it
    for (std::size_t i = b + 1; i < queue.size(); ++i) {
        const E &e = queue[i];
        if (touchIs(e, E::TouchUpdate)) {
            if (e.touch.points.size() > 1)
                return {};
            if (crossing == 0 && fingerWay(begin, e) >= m_settings.distance)
                crossing = i;
        } else if (touchIs(e, E::TouchEnd)) {
            if (!liftsPrimary(e, begin))
                return {};
            Statement s = statement(crossing ? "touchAndDrag" : "tapObject", begin, begin.timestamp);
            s.modifiers = Modifier::Value(m);
            s.numbers = {begin.x, begin.y};
            if (crossing) {
                s.numbers.push_back(fingerWayX(queue[crossing], e));
                s.numbers.push_back(fingerWayY(queue[crossing], e));
                const quint64 still = queue[crossing].timestamp - begin.timestamp;
                s.numbers.push_back(still > 800 ? qint32(still / 10 * 10) : 0);
            } else {
                s.objectClass = begin.objectClass;
            }
            return {Complete, i + 1, {s}};
        } else if (e.type != E::Mouse && e.type != E::Wheel) {
            return {};
        }
    }
    return {last ? No : Partial, 0, {}};
}

} // namespace VantleTest
