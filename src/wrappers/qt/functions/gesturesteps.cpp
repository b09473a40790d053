#include "wrappers/qt/functions/gesturesteps_p.h"

#include <algorithm>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

using Points = std::vector<TouchBuilder::Point>;

const TouchBuilder::Point *find(const Points &points, qint32 id)
{
    const auto hasId = [id](const TouchBuilder::Point &point) { return point.id == id; };
    const auto found = std::find_if(points.begin(), points.end(), hasId);
    return found != points.end() ? &*found : nullptr;
}

bool hasFingerTwice(const Points &points)
{
    return std::any_of(points.begin(), points.end(),
                       [&points](const TouchBuilder::Point &point) { return find(points, point.id) != &point; });
}

/// Why no hand could make the steps; empty if one could.
QString impossibility(const std::vector<TouchBuilder::Step> &steps)
{
    quint32 time = 0;
    bool hasFingers = false;
    for (const TouchBuilder::Step &step : steps) {
        if (step.time < time)
            return QStringLiteral("the step at %1 ms comes behind the one at %2 ms").arg(step.time).arg(time);
        if (hasFingerTwice(step.points))
            return QStringLiteral("the step at %1 ms has the same finger twice").arg(step.time);
        hasFingers |= !step.points.empty();
        time = step.time;
    }
    return hasFingers ? QString() : QStringLiteral("no finger touches anything in it");
}

Finger fingerAt(const TouchBuilder::Point &point, const Points &before, const Points &after)
{
    Finger finger;
    finger.id = point.id;
    finger.position = QPointF(static_cast<qreal>(point.x), static_cast<qreal>(point.y));
    finger.pressure = static_cast<qreal>(point.pressure);
    finger.diameter = std::max(static_cast<qreal>(point.size), 0.0);
    const TouchBuilder::Point *const earlier = find(before, point.id);
    if (!earlier)
        finger.state = QEventPoint::Pressed;
    else if (!find(after, point.id))
        finger.state = QEventPoint::Released;
    else if (earlier->x == point.x && earlier->y == point.y)
        finger.state = QEventPoint::Stationary;
    else
        finger.state = QEventPoint::Updated;
    return finger;
}

/// \p fingers, as they are when those of them that are in a single step, which
/// have just come down, leave again. Empty if there are none.
QList<Finger> leaving(QList<Finger> fingers, const Points &after)
{
    bool leaves = false;
    QList<Finger> result;
    for (Finger &finger : fingers) {
        if (finger.state == QEventPoint::Released)
            continue;
        const bool isPressed = finger.state == QEventPoint::Pressed;
        finger.state = isPressed && !find(after, finger.id) ? QEventPoint::Released : QEventPoint::Stationary;
        leaves |= finger.state == QEventPoint::Released;
        result.append(finger);
    }
    return leaves ? result : QList<Finger>();
}

} // namespace

std::vector<GestureStep> gestureSteps(const TouchBuilder::MultiTouchInfo &gesture, QString *problem)
{
    std::vector<GestureStep> result;
    *problem = impossibility(gesture.steps);
    if (!problem->isEmpty())
        return result;
    const Points nobody;
    quint32 time = 0;
    for (std::size_t i = 0; i < gesture.steps.size(); ++i) {
        const TouchBuilder::Step &step = gesture.steps[i];
        if (step.points.empty())
            continue;
        const Points &before = i > 0 ? gesture.steps[i - 1].points : nobody;
        const Points &after = i + 1 < gesture.steps.size() ? gesture.steps[i + 1].points : nobody;
        GestureStep next;
        next.wait = static_cast<int>(std::min(step.time - time, quint32(std::numeric_limits<int>::max())));
        for (const TouchBuilder::Point &point : step.points)
            next.fingers.append(fingerAt(point, before, after));
        time = step.time;
        result.push_back(next);
        if (const QList<Finger> fingers = leaving(next.fingers, after); !fingers.isEmpty())
            result.push_back({1, fingers});
    }
    return result;
}

} // namespace Vantle::QtWrapper
