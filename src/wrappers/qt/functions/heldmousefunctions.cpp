#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/mousescript_p.h"
#include "wrappers/qt/functions/pointerpath_p.h"

namespace Vantle::QtWrapper {

namespace {

QString nameOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return QStringLiteral("left");
    case Qt::RightButton: return QStringLiteral("right");
    default: return QStringLiteral("middle");
    }
}

QString alreadyHeld(Qt::MouseButton button)
{
    return QStringLiteral("the %1 button is held already").arg(nameOf(button));
}

QString notHeld(Qt::MouseButton button)
{
    return QStringLiteral("the %1 button is not held; mousePress has to come first").arg(nameOf(button));
}

/// The point of the call, in the window that the mouse's events go to: while a
/// button is held that is the one where it was pressed, wherever the mouse is.
std::optional<PointOfAction> pointerTarget(const Interaction &call, const HeldInput &before, QString *reason)
{
    std::optional<PointOfAction> target = pointOfAction(call.object, call.coordinates, reason, Reach::Screen);
    if (target && before.buttons && before.pressWindow)
        target->window = before.pressWindow;
    return target;
}

/// Moves on to \p end with a button held, as a drag does.
void dragTo(MouseScript *script, QPointF begin, QPointF end)
{
    const QPoint way = (end - begin).toPoint();
    for (const Waypoint &waypoint : wayBehindCrossing(end - QPointF(way), way))
        script->moveTo(waypoint.position, waypoint.wait);
}

using MouseWriter = std::function<QString(MouseScript *script, const HeldInput &before, const PointOfAction &end)>;

/// Plays what \p write does with the mouse at the point of the call, which may
/// be covered or outside of the window.
SharedPtr<Object> playAnywhere(const QString &function, const Interaction &call, const MouseWriter &write)
{
    InputPlayer::self()->play({function, call.object, false, [call, write](InputPlan *plan) {
                                   QString reason;
                                   const auto target = pointerTarget(call, plan->before, &reason);
                                   if (!target)
                                       return reason;
                                   MouseScript script(*target, call.button, plan);
                                   return write(&script, plan->before, *target);
                               }});
    return Inspector::self()->voidResult();
}

} // namespace

SharedPtr<Object> mouseMove(const Interaction &call)
{
    const QString function = QStringLiteral("mouseMove");
    if (!isReadyFor(function, call.object, call.coordinates))
        return nullptr;
    return playAnywhere(function, call, [](MouseScript *script, const HeldInput &before, const PointOfAction &end) {
        if (before.buttons)
            dragTo(script, before.mousePosition, end.global);
        else
            script->comeTo(end, before);
        return QString();
    });
}

SharedPtr<Object> mousePress(const Interaction &call)
{
    const auto write = [call](const PointOfAction &start, InputPlan *plan) {
        if (plan->before.buttons.testFlag(call.button))
            return alreadyHeld(call.button);
        MouseScript script(start, call.button, plan);
        script.comeTo(start, plan->before);
        script.hold(call.modifiers, Moment);
        return QString();
    };
    return playAtPoint(QStringLiteral("mousePress"), call, write);
}

SharedPtr<Object> mouseRelease(const Interaction &call)
{
    const QString function = QStringLiteral("mouseRelease");
    if (call.object->isNull()) {
        Inspector::self()->raiseError(QStringLiteral("Cannot %1: the object of type %2 does not exist any more")
                                          .arg(function, call.object->className()));
        return nullptr;
    }
    return playAnywhere(function, call, [call](MouseScript *script, const HeldInput &before, const PointOfAction &end) {
        if (!before.buttons.testFlag(call.button))
            return notHeld(call.button);
        script->pressModifiers(call.modifiers);
        dragTo(script, before.mousePosition, end.global);
        script->letGo(Moment);
        script->releaseModifiers(call.modifiers);
        return QString();
    });
}

} // namespace Vantle::QtWrapper
