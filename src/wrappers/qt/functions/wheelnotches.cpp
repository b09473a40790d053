#include "wrappers/qt/functions/wheelnotches_p.h"

#include <QtCore/QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

constexpr qint64 DegreesPerNotch = 15;
constexpr qint64 MaximumNotches = 200;

/// What is turned by notch number \p i of \p size, in eighths of a degree.
int share(int degrees, qint64 size, qint64 i)
{
    constexpr qint64 eighths = 8;
    const qint64 way = std::abs(static_cast<qint64>(degrees));
    const qint64 turned = std::clamp(way - size * i, qint64(0), size) * eighths;
    const int angle = static_cast<int>(std::min<qint64>(turned, std::numeric_limits<int>::max()));
    return degrees < 0 ? -angle : angle;
}

} // namespace

std::vector<QPoint> wheelNotches(QPoint degrees)
{
    const qint64 way = std::max(std::abs(static_cast<qint64>(degrees.x())), std::abs(static_cast<qint64>(degrees.y())));
    // Whole degrees, which is all that is recorded.
    const qint64 size = std::max(DegreesPerNotch, (way + MaximumNotches - 1) / MaximumNotches);
    std::vector<QPoint> result;
    for (qint64 i = 0; i * size < way; ++i)
        result.emplace_back(share(degrees.x(), size, i), share(degrees.y(), size, i));
    return result;
}

} // namespace Vantle::QtWrapper
