#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/dragrules.h"
#include "wrappers/qt/functions/mousescript_p.h"
#include "wrappers/qt/functions/pointerpath_p.h"
#include "wrappers/qt/functions/wheelnotches_p.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <algorithm>
#include <functional>
#include <utility>

namespace Vantle::QtWrapper {

namespace {

constexpr int DoubleClickGap = 30; ///< milliseconds

/// Longer than any press that isn't a long one, for the recorder and for items.
int longHold()
{
    constexpr int margin = 50;
    const QStyleHints *const hints = QGuiApplication::styleHints();
    return std::max(2 * hints->mouseDoubleClickInterval(), hints->mousePressAndHoldInterval()) + margin;
}

/// Plays what \p write does with the mouse at the point that the call wants,
/// with the modifiers held.
SharedPtr<Object> play(const QString &function, const Interaction &call,
                       const std::function<QString(MouseScript *)> &write)
{
    return playAtPoint(function, call, [call, write](const PointOfAction &start, InputPlan *plan) {
        MouseScript script(start, call.button, plan);
        script.pressModifiers(call.modifiers);
        script.comeTo(start, plan->before);
        const QString reason = write(&script);
        script.releaseModifiers(call.modifiers);
        return reason;
    });
}

SharedPtr<Object> playClick(const QString &function, const Interaction &call, int hold)
{
    return play(function, call, [hold](MouseScript *script) {
        script->press(Moment);
        script->release(hold);
        return QString();
    });
}

/// Whether the recorder measures drags of \p object from where they become
/// drags, as it does for items, or from the press.
bool isMeasuredFromCrossing(const SharedPtr<Object> &object)
{
    const Class *const itemClass = Inspector::self()->classByName(QStringLiteral("QQuickItem"));
    return itemClass && object->isA(itemClass);
}

void drag(MouseScript *script, QPoint crossing, QPoint distance, int hold)
{
    script->press(Moment);
    script->moveTo(script->position() + crossing, hold);
    for (const Waypoint &waypoint : wayBehindCrossing(script->position(), distance))
        script->moveTo(waypoint.position, waypoint.wait);
    script->release(PressHold, RestAfterDrag);
}

SharedPtr<Object> playDrag(const QString &function, const Interaction &call, int hold)
{
    const QPoint crossing = crossingOffset(call.distance);
    const QPoint behindCrossing = isMeasuredFromCrossing(call.object) ? call.distance : call.distance - crossing;
    return play(function, call, [crossing, behindCrossing, hold](MouseScript *script) {
        drag(script, crossing, behindCrossing, hold);
        return QString();
    });
}

} // namespace

SharedPtr<Object> mouseClick(const Interaction &call)
{
    return playClick(QStringLiteral("mouseClick"), call, PressHold);
}

SharedPtr<Object> longMouseClick(const Interaction &call)
{
    return playClick(QStringLiteral("longMouseClick"), call, call.hold.value_or(longHold()));
}

SharedPtr<Object> doubleClick(const Interaction &call)
{
    return play(QStringLiteral("doubleClick"), call, [](MouseScript *script) {
        script->press(Moment);
        script->release(PressHold);
        script->press(DoubleClickGap);
        script->release(PressHold);
        return QString();
    });
}

SharedPtr<Object> mouseDrag(const Interaction &call)
{
    return playDrag(QStringLiteral("mouseDrag"), call, Moment);
}

SharedPtr<Object> longMouseDrag(const Interaction &call)
{
    return playDrag(QStringLiteral("longMouseDrag"), call, longHold());
}

SharedPtr<Object> dragAndDrop(const Interaction &call)
{
    const QString function = QStringLiteral("dragAndDrop");
    if (!isReadyFor(function, call.target, call.targetCoordinates))
        return nullptr;
    return play(function, call, [call](MouseScript *script) {
        QString reason;
        const auto end = pointOfAction(call.target, call.targetCoordinates, &reason);
        if (!end)
            return QStringLiteral("the target %1 cannot be reached: %2").arg(describeObject(call.target), reason);
        const QPoint way = (end->global - script->position()).toPoint();
        script->press(Moment);
        script->moveTo(script->position() + crossingOffset(way), Moment);
        const QPoint rest = (end->global - script->position()).toPoint();
        for (const Waypoint &waypoint : wayBehindCrossing(script->position(), rest))
            script->moveTo(waypoint.position, waypoint.wait);
        // A target that has seen the pointer come in also wants to see it move.
        script->moveTo(end->global + QPointF(1, 0), PressHold);
        script->moveTo(end->global, PressHold);
        script->release(PressHold, RestAfterDrag);
        return QString();
    });
}

SharedPtr<Object> mouseWheel(const Interaction &call)
{
    return play(QStringLiteral("mouseWheel"), call, [call](MouseScript *script) {
        int wait = Moment;
        for (const QPoint &angle : wheelNotches(call.wheelDeltas))
            script->turnWheel(angle, std::exchange(wait, NotchWait));
        if (call.goal.content)
            script->endScrolling(call.object, call.goal, NotchWait);
        return QString();
    });
}

} // namespace Vantle::QtWrapper
