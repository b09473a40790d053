#include "agent/recording/dragcrossing.h"

#include "wrappers/qt/dragrules.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

QPoint globalOf(const SyntheticEvent &record)
{
    return {record.globalX, record.globalY};
}

const SyntheticEvent::TouchPoint *primaryPoint(const SyntheticEvent &record)
{
    const auto &points = record.touch.points;
    return record.touch.primaryIndex < points.size() ? &points[record.touch.primaryIndex] : nullptr;
}

/// How far the finger is from where it came down, as the patterns measure it.
QPoint wayOfFinger(const SyntheticEvent &begin, const SyntheticEvent &record)
{
    const SyntheticEvent::TouchPoint *const from = primaryPoint(begin);
    const SyntheticEvent::TouchPoint *const to = primaryPoint(record);
    if (!from || !to)
        return {};
    return {static_cast<int>(to->centerX() - from->centerX()), static_cast<int>(to->centerY() - from->centerY())};
}

/// Where on \p way, from a press to its release, the player crosses the
/// threshold when it plays what is left of the way behind that place.
QPoint crossingOn(QPoint way, int dragDistance)
{
    const QPoint crossing = way - QtWrapper::distanceBehindCrossing(way);
    return crossing.manhattanLength() >= dragDistance ? crossing : QtWrapper::crossingOffset(way);
}

bool isBeyond(QPoint way, int threshold)
{
    return std::max(std::abs(way.x()), std::abs(way.y())) > threshold;
}

/// Where on its way of \p distance behind the crossing the player is first
/// beyond \p threshold along an axis, seen from the press.
QPoint playedStart(QPoint distance, int threshold)
{
    const QPoint crossing = QtWrapper::crossingOffset(distance);
    const int length = std::max(std::abs(distance.x()), std::abs(distance.y()));
    QPoint place = crossing;
    for (int pixel = 1; pixel <= length && !isBeyond(place, threshold); ++pixel)
        place = crossing + QPoint(qRound(1.0 * distance.x() * pixel / length), qRound(1.0 * distance.y() * pixel / length));
    return place;
}

/// Where to cross on \p way so that what is dragged loses in the player's hands
/// what it lost when it set off at \p start.
QPoint crossingWithLoss(QPoint way, QPoint start, int threshold, int dragDistance)
{
    QPoint distance = QtWrapper::distanceBehindCrossing(way);
    for (int round = 0; round < 4; ++round)
        distance = way - start + playedStart(distance, threshold) - QtWrapper::crossingOffset(distance);
    const QPoint crossing = way - distance;
    return crossing.manhattanLength() >= dragDistance ? crossing : crossingOn(way, dragDistance);
}

} // namespace

void DragCrossing::take(const SyntheticEvent &record)
{
    if (record.type == SyntheticEvent::Mouse)
        takeMouse(record);
    else if (record.type == SyntheticEvent::Touch)
        takeTouch(record);
    else
        pass(record);
}

void DragCrossing::takeMouse(const SyntheticEvent &record)
{
    switch (record.mouseEventType) {
    case SyntheticEvent::Press:
        m_press = record;
        m_crossing.reset();
        m_start.reset();
        m_loss = m_lossOf(record);
        pass(record);
        break;
    case SyntheticEvent::Move:
        if (m_press)
            takeMove(record);
        else
            pass(record);
        break;
    case SyntheticEvent::Release:
        if (m_press && m_press->button == record.button)
            endDrag(record);
        pass(record);
        break;
    }
}

void DragCrossing::takeMove(const SyntheticEvent &move)
{
    const QPoint way = globalOf(move) - globalOf(*m_press);
    if (!m_crossing && way.manhattanLength() >= m_dragDistance())
        m_crossing = move;
    if (m_loss && !m_start && isBeyond(way, *m_loss))
        m_start = way;
}

void DragCrossing::endDrag(const SyntheticEvent &release)
{
    const SyntheticEvent press = *std::exchange(m_press, std::nullopt);
    const QPoint way = globalOf(release) - globalOf(press);
    const int dragDistance = m_dragDistance();
    if (way.manhattanLength() < dragDistance)
        return;
    SyntheticEvent move = m_crossing.value_or(release);
    move.mouseEventType = SyntheticEvent::Move;
    move.button = MouseButton::None;
    const QPoint place = globalOf(press)
        + (m_start ? crossingWithLoss(way, *m_start, *m_loss, dragDistance) : crossingOn(way, dragDistance));
    move.globalX = place.x();
    move.globalY = place.y();
    pass(move);
}

void DragCrossing::takeTouch(const SyntheticEvent &record)
{
    switch (record.touch.touchEventType) {
    case SyntheticEvent::TouchBegin:
        m_updates.clear();
        m_begin.reset();
        if (record.touch.points.size() == 1)
            m_begin = record;
        pass(record);
        break;
    case SyntheticEvent::TouchUpdate:
        if (m_begin && record.touch.points.size() > 1)
            passTouchMoves();
        if (m_begin)
            m_updates.push_back(record);
        else
            pass(record);
        break;
    case SyntheticEvent::TouchEnd:
        if (m_begin && record.touch.points.size() > 1)
            passTouchMoves();
        else if (m_begin)
            endTouch(record);
        pass(record);
        break;
    }
}

/// It has become a gesture, in which every move counts.
void DragCrossing::passTouchMoves()
{
    m_begin.reset();
    const std::vector<SyntheticEvent> updates = std::exchange(m_updates, {});
    for (const SyntheticEvent &update : updates)
        pass(update);
}

void DragCrossing::endTouch(const SyntheticEvent &end)
{
    const SyntheticEvent begin = *std::exchange(m_begin, std::nullopt);
    const std::vector<SyntheticEvent> updates = std::exchange(m_updates, {});
    const int dragDistance = m_dragDistance();
    const auto crossing = std::find_if(updates.cbegin(), updates.cend(), [&](const SyntheticEvent &update) {
        return wayOfFinger(begin, update).manhattanLength() >= dragDistance;
    });
    const QPoint way = wayOfFinger(begin, end);
    if (crossing == updates.cend() && way.manhattanLength() < dragDistance)
        return;
    SyntheticEvent move = crossing != updates.cend() ? *crossing : end;
    move.touch.touchEventType = SyntheticEvent::TouchUpdate;
    move.touch.primaryIndex = 0;
    move.touch.points = {*primaryPoint(begin)};
    SyntheticEvent::TouchPoint &finger = move.touch.points.front();
    finger.state = SyntheticEvent::TouchPoint::Updated;
    const std::optional<int> loss = m_lossOf(begin);
    const auto start = std::find_if(updates.cbegin(), updates.cend(), [&](const SyntheticEvent &update) {
        return loss && isBeyond(wayOfFinger(begin, update), *loss);
    });
    const QPoint offset = start != updates.cend()
        ? crossingWithLoss(way, wayOfFinger(begin, *start), *loss, dragDistance)
        : crossingOn(way, dragDistance);
    finger.globalX += offset.x();
    finger.globalY += offset.y();
    finger.x += offset.x();
    finger.y += offset.y();
    pass(move);
}

} // namespace Vantle::Agent
