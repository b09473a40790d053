#include "wrappers/qt/dragrules.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <cmath>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

int withSignOf(int value, int sign)
{
    return sign < 0 ? -value : value;
}

qint64 length(QPoint way)
{
    return std::abs(static_cast<qint64>(way.x())) + std::abs(static_cast<qint64>(way.y()));
}

} // namespace

QPoint crossingOffset(QPoint distance)
{
    const double dx = std::abs(static_cast<double>(distance.x()));
    const double dy = std::abs(static_cast<double>(distance.y()));
    const int total = dragDistance();
    const int x = dx + dy > 0 ? static_cast<int>(std::lround(total * dx / (dx + dy))) : total;
    return {withSignOf(x, distance.x()), withSignOf(total - x, distance.y())};
}

QPoint distanceBehindCrossing(QPoint way)
{
    const int total = dragDistance();
    if (length(way) < total)
        return {};
    // More ways lead across a distance than there are distances behind it, so
    // that some have to do with that of a neighbour.
    QPoint best;
    qint64 smallestError = std::numeric_limits<qint64>::max();
    for (int x = 0; x <= total; ++x) {
        const QPoint crossing(withSignOf(x, way.x()), withSignOf(total - x, way.y()));
        if (std::abs(crossing.x()) > std::abs(way.x()) || std::abs(crossing.y()) > std::abs(way.y()))
            continue;
        const QPoint distance = way - crossing;
        const qint64 error = length(distance + crossingOffset(distance) - way);
        if (error < smallestError) {
            smallestError = error;
            best = distance;
        }
    }
    return best;
}

} // namespace Vantle::QtWrapper
