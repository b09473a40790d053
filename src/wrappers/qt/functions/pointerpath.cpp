#include "wrappers/qt/functions/pointerpath_p.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <algorithm>
#include <array>
#include <cmath>

namespace Vantle::QtWrapper {

namespace {

constexpr int ComingWait = 1;
constexpr int SlowWait = 4;
constexpr int FrameWait = 16;

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

/// The way from \p point to the nearest edge of \p area around it, straight.
QPointF wayToNearestEdge(const QRectF &area, QPointF point)
{
    const std::array ways{QPointF(area.left() - point.x(), 0), QPointF(area.right() - point.x(), 0),
                          QPointF(0, area.top() - point.y()), QPointF(0, area.bottom() - point.y())};
    return *std::min_element(ways.begin(), ways.end(), [](QPointF one, QPointF other) {
        return one.manhattanLength() < other.manhattanLength();
    });
}

} // namespace

std::vector<Waypoint> wayInto(const QRectF &area, QPointF end)
{
    constexpr double furthest = 6;
    std::vector<Waypoint> way;
    const QPointF outward = area.contains(end) ? wayToNearestEdge(area, end) : QPointF();
    // Of pixels whose upper left corner is meant, the last one lies ahead of the edge.
    const double room = std::floor(outward.manhattanLength() - 1);
    if (room >= 1) {
        const double distance = std::min(room, furthest);
        const QPointF direction = outward / outward.manhattanLength();
        way.push_back({end + direction * distance, 0});
        way.push_back({end + direction * std::floor(distance / 2), ComingWait});
    }
    way.push_back({end, way.empty() ? 0 : ComingWait});
    return way;
}

std::vector<Waypoint> wayBehindCrossing(QPointF crossing, QPoint distance)
{
    const double dx = distance.x();
    const double dy = distance.y();
    const double length = std::max(std::abs(dx), std::abs(dy));
    const auto at = [&](double way) {
        return crossing + QPointF(std::round(dx * way / length), std::round(dy * way / length));
    };

    std::vector<Waypoint> way;
    const double slow = std::min<double>(length, dragDistance() + 2);
    for (double pixel = 1; pixel <= slow; ++pixel)
        way.push_back({at(pixel), SlowWait});
    if (length > slow) {
        constexpr double pixelsPerFrame = 12;
        const double frames = std::clamp(std::ceil((length - slow) / pixelsPerFrame), 4.0, 30.0);
        for (double frame = 1; frame <= frames; ++frame)
            way.push_back({at(slow + (length - slow) * frame / frames), FrameWait});
    }
    return way;
}

} // namespace Vantle::QtWrapper
