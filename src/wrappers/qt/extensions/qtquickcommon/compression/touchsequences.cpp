#include "wrappers/qt/extensions/qtquickcommon/compression/touchsequences_p.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

/// The primary finger, or null when it is not in this event.
const SyntheticEvent::TouchPoint *primaryPoint(const SyntheticEvent &event)
{
    const SyntheticEvent::TouchEvent &touch = event.touch;
    return touch.primaryIndex < touch.points.size() ? &touch.points[touch.primaryIndex] : nullptr;
}

/// \p value without its fraction. What doesn't fit becomes the nearest value that does, and no number 0.
qint32 truncated(double value)
{
    if (std::isnan(value))
        return 0;
    using Limits = std::numeric_limits<qint32>;
    return static_cast<qint32>(
        std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

TouchBuilder::Point gesturePoint(const SyntheticEvent::TouchPoint &point)
{
    TouchBuilder::Point result;
    result.id = point.id;
    result.x = static_cast<float>(point.x);
    result.y = static_cast<float>(point.y);
    result.pressure = static_cast<float>(point.pressure);
    // A contact without extent means that the device doesn't measure it.
    result.size = point.diameter() > 0 ? static_cast<float>(point.diameter()) : -1.0f;
    return result;
}

} // namespace

qint64 TouchOffset::distance() const noexcept
{
    return std::abs(static_cast<qint64>(dx)) + std::abs(static_cast<qint64>(dy));
}

bool isSingleTouchBegin(const SyntheticEvent &event)
{
    return isTouch(event, SyntheticEvent::TouchBegin) && event.touch.points.size() == 1;
}

bool isPrimaryTouchEnd(const SyntheticEvent &event, const SyntheticEvent &begin)
{
    if (!isTouch(event, SyntheticEvent::TouchEnd))
        return false;
    const SyntheticEvent::TouchPoint *lifted = primaryPoint(event);
    const SyntheticEvent::TouchPoint *primary = primaryPoint(begin);
    return lifted && primary && lifted->id == primary->id;
}

std::size_t skipTouchSpan(EventIterator &event, EventIterator end)
{
    std::size_t maxFingers = 0;
    for (; event != end; ++event) {
        if (isTouch(*event, SyntheticEvent::TouchUpdate))
            maxFingers = std::max(maxFingers, event->touch.points.size());
        else if (event->type != SyntheticEvent::Mouse && event->type != SyntheticEvent::Wheel)
            break;
    }
    return maxFingers;
}

TouchOffset primaryDelta(const SyntheticEvent &a, const SyntheticEvent &b)
{
    const SyntheticEvent::TouchPoint *from = primaryPoint(a);
    const SyntheticEvent::TouchPoint *to = primaryPoint(b);
    if (!from || !to)
        return {};
    return {truncated(to->centerX() - from->centerX()), truncated(to->centerY() - from->centerY())};
}

void addGestureStep(TouchBuilder::MultiTouchInfo &info, const SyntheticEvent &begin, const SyntheticEvent &event)
{
    TouchBuilder::Step step;
    step.time = static_cast<quint32>(event.timestamp - begin.timestamp);
    std::transform(event.touch.points.begin(), event.touch.points.end(), std::back_inserter(step.points), gesturePoint);
    info.steps.push_back(std::move(step));
}

} // namespace Vantle::QtWrapper
