#pragma once

#include "wrappers/qt/dragrules.h"

#include <QtCore/QPoint>
#include <QtCore/QPointF>

#include <vector>

/// How the pointer or a finger moves in a drag.
namespace Vantle::QtWrapper {

/// A place on the way and how many milliseconds after the one before it the
/// pointer gets there.
struct Waypoint
{
    QPointF position;
    int wait = 0;
};

/// The way from \p crossing, where a drag has become one, by \p distance. Slow
/// at first, since programs see the drag begin at slightly different points,
/// and what it moves follows from there. Ends exactly at the end of the way;
/// empty for no distance.
std::vector<Waypoint> wayBehindCrossing(QPointF crossing, QPoint distance);

} // namespace Vantle::QtWrapper
