#include "wrappers/qt/functions/pointerscript_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/readiness.h"

namespace Vantle::QtWrapper {

PointerScript::PointerScript(const PointOfAction &start, InputPlan *plan)
    : m_window(start.window)
    , m_position(start.global)
    , m_plan(plan)
{
    m_plan->window = start.window;
    m_plan->point = start.local();
}

void PointerScript::pressModifiers(Qt::KeyboardModifiers modifiers)
{
    if (!modifiers)
        return;
    add({0, 0, false,
         [window = m_window, modifiers](InputDevices &devices) { devices.pressModifiers(window, modifiers); }});
}

void PointerScript::releaseModifiers(Qt::KeyboardModifiers modifiers)
{
    if (!modifiers)
        return;
    add({Moment, 0, true,
         [window = m_window, modifiers](InputDevices &devices) { devices.releaseModifiers(window, modifiers); }});
}

bool isReadyFor(const QString &function, const SharedPtr<Object> &object, const std::optional<QPoint> &coordinates)
{
    const QPoint point = coordinates.value_or(QPoint(-1, -1));
    return ensureValidVisibleAndReady(object, point.x(), point.y(), function, nullptr);
}

SharedPtr<Object> playAtPoint(const QString &function, const Interaction &call,
                              const std::function<QString(const PointOfAction &start, InputPlan *plan)> &write)
{
    QString problem;
    if (!isReadyFor(function, call.object, call.coordinates))
        return nullptr;
    if (!pointOfAction(call.object, call.coordinates, &problem)) {
        Inspector::self()->raiseError(
            QStringLiteral("Cannot %1 on %2: %3").arg(function, describeObject(call.object), problem));
        return nullptr;
    }
    const auto prepare = [object = call.object, coordinates = call.coordinates, write](InputPlan *plan) {
        QString reason;
        const auto start = pointOfAction(object, coordinates, &reason);
        return start ? write(*start, plan) : reason;
    };
    InputPlayer::self()->play({function, call.object, true, prepare});
    return Inspector::self()->voidResult();
}

} // namespace Vantle::QtWrapper
