#include "wrappers/qt/functions/pointerpath_p.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <algorithm>
#include <cmath>

namespace Vantle::QtWrapper {

namespace {

constexpr int SlowWait = 4;
constexpr int FrameWait = 16;

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

} // namespace

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
