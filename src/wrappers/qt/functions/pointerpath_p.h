#pragma once

#include "wrappers/qt/dragrules.h"

#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <vector>

/// How the pointer comes to a point, and how it or a finger moves in a drag.
namespace Vantle::QtWrapper {

/// A place on the way and how many milliseconds after the one before it the
/// pointer gets there.
struct Waypoint
{
    QPointF position;
    int wait = 0;
};

/// The last steps of the way to \p end, which lies in \p area: in from the
/// nearest edge of the area, and no farther away than it takes to be seen coming.
/// All of them lie in the area, so that nothing beside it sees the pointer go by.
/// The last one is \p end, which is all there is if the area doesn't hold it.
std::vector<Waypoint> wayInto(const QRectF &area, QPointF end);

/// The way from \p crossing, where a drag has become one, by \p distance. Slow
/// at first, since programs see the drag begin at slightly different points,
/// and what it moves follows from there. Ends exactly at the end of the way;
/// empty for no distance.
std::vector<Waypoint> wayBehindCrossing(QPointF crossing, QPoint distance);

} // namespace Vantle::QtWrapper
