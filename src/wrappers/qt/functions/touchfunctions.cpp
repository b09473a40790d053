#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/gesturesteps_p.h"
#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/inputtarget_p.h"
#include "wrappers/qt/functions/pointerpath_p.h"
#include "wrappers/qt/readiness.h"

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

// In milliseconds.
constexpr int Moment = 10;
constexpr int TapHold = 20;
constexpr int DoubleTapGap = 40;
/// So long does the finger claim to rest at the end of a drag that nothing goes
/// on moving by itself.
constexpr int RestAfterDrag = 200;
/// From here on the recorder writes the delay of a drag, in tens of milliseconds.
constexpr int ShortestRecordedDelay = 800;
constexpr int MiddleOfTen = 4;

/// Writes the steps of what fingers do in one window, with modifiers held.
class TouchScript
{
public:
    TouchScript(const PointOfAction &start, InputPlan *plan)
        : m_window(start.window)
        , m_position(start.global)
        , m_plan(plan)
    {
        m_plan->window = start.window;
        m_plan->point = start.local();
    }

    void pressModifiers(Qt::KeyboardModifiers modifiers)
    {
        if (!modifiers)
            return;
        add({0, 0, false,
             [window = m_window, modifiers](InputDevices &devices) { devices.pressModifiers(window, modifiers); }});
    }
    void releaseModifiers(Qt::KeyboardModifiers modifiers)
    {
        if (!modifiers)
            return;
        add({Moment, 0, true,
             [window = m_window, modifiers](InputDevices &devices) { devices.releaseModifiers(window, modifiers); }});
    }

    void press(int wait) { oneFinger(QEventPoint::Pressed, wait, 0); }
    void moveTo(QPointF global, int wait)
    {
        m_position = global;
        oneFinger(QEventPoint::Updated, wait, 0);
    }
    void release(int wait, int rest = 0) { oneFinger(QEventPoint::Released, wait, rest); }

    void touch(const QList<Finger> &fingers, int wait, int rest = 0)
    {
        const bool letsGo = std::all_of(fingers.begin(), fingers.end(),
                                        [](const Finger &finger) { return finger.state == QEventPoint::Released; });
        add({wait, rest, letsGo,
             [window = m_window, fingers](InputDevices &devices) { devices.touch(window, fingers); }});
    }

    QPointF position() const { return m_position; }

private:
    void oneFinger(QEventPoint::State state, int wait, int rest)
    {
        Finger finger;
        finger.id = 1;
        finger.state = state;
        finger.position = m_position;
        touch({finger}, wait, rest);
    }

    void add(InputStep step) { m_plan->steps.push_back(std::move(step)); }

    QPointer<QWindow> m_window;
    QPointF m_position;
    InputPlan *m_plan;
};

SharedPtr<Object> fail(const QString &message)
{
    Inspector::self()->raiseError(message);
    return nullptr;
}

bool isReady(const Interaction &call, const QString &function)
{
    const QPoint point = call.coordinates.value_or(QPoint(-1, -1));
    return ensureValidVisibleAndReady(call.object, point.x(), point.y(), function, nullptr);
}

/// Plays what \p write puts between the modifiers' going down and up again,
/// with the finger where the call wants it.
template<typename Write>
SharedPtr<Object> play(const QString &function, const Interaction &call, Write write)
{
    QString problem;
    if (!isReady(call, function))
        return nullptr;
    if (!pointOfAction(call.object, call.coordinates, &problem))
        return fail(QStringLiteral("Cannot %1 on %2: %3").arg(function, describeObject(call.object), problem));
    InputPlayer::self()->play({function, call.object, true, [call, write](InputPlan *plan) {
                                   QString reason;
                                   const auto start = pointOfAction(call.object, call.coordinates, &reason);
                                   if (!start)
                                       return reason;
                                   TouchScript script(*start, plan);
                                   script.pressModifiers(call.modifiers);
                                   write(&script);
                                   script.releaseModifiers(call.modifiers);
                                   return reason;
                               }});
    return Inspector::self()->voidResult();
}

/// How long the finger stays before it sets off, so that the recorder reads
/// \p delay from it.
int delayBeforeCrossing(int delay)
{
    return delay > ShortestRecordedDelay ? delay + MiddleOfTen : std::max(delay, Moment);
}

/// The gesture's fingers where they are on the screen: its coordinates are those of \p object.
QList<Finger> onScreen(QList<Finger> fingers, const SharedPtr<Object> &object)
{
    for (Finger &finger : fingers)
        finger.position = mapToScreen(object, finger.position).value_or(finger.position);
    return fingers;
}

QString planGesture(const SharedPtr<Object> &object, const std::vector<GestureStep> &steps, InputPlan *plan)
{
    QWindow *const window = windowShowing(object);
    if (!window)
        return QStringLiteral("it is in no window");
    const QPointF begin = onScreen(steps.front().fingers, object).front().position;
    TouchScript script({window, begin}, plan);
    for (const GestureStep &step : steps)
        script.touch(onScreen(step.fingers, object), step.wait);
    return {};
}

} // namespace

SharedPtr<Object> tapObject(const Interaction &call)
{
    return play(QStringLiteral("tapObject"), call, [](TouchScript *script) {
        script->press(Moment);
        script->release(TapHold);
    });
}

SharedPtr<Object> doubleTap(const Interaction &call)
{
    return play(QStringLiteral("doubleTap"), call, [](TouchScript *script) {
        script->press(Moment);
        script->release(TapHold);
        script->press(DoubleTapGap);
        script->release(TapHold);
    });
}

SharedPtr<Object> touchAndDrag(const Interaction &call)
{
    if (call.delay < 0)
        return fail(QStringLiteral("Cannot touchAndDrag: the delay %1 ms is negative").arg(call.delay));
    return play(QStringLiteral("touchAndDrag"), call,
                [distance = call.distance, delay = call.delay](TouchScript *script) {
                    script->press(Moment);
                    script->moveTo(script->position() + crossingOffset(distance), delayBeforeCrossing(delay));
                    for (const Waypoint &waypoint : wayBehindCrossing(script->position(), distance))
                        script->moveTo(waypoint.position, waypoint.wait);
                    script->release(TapHold, RestAfterDrag);
                });
}

SharedPtr<Object> gesture(const Interaction &call)
{
    const QString function = QStringLiteral("gesture");
    QString problem;
    const auto info = TouchBuilder::MultiTouchInfo::fromXml(call.text.toUtf8(), &problem);
    const std::vector<GestureStep> steps = info ? gestureSteps(*info, &problem) : std::vector<GestureStep>();
    if (steps.empty())
        return fail(QStringLiteral("Cannot play the gesture: %1").arg(problem));
    if (!isReady(call, function))
        return nullptr;
    InputPlayer::self()->play({function, call.object, true, [object = call.object, steps](InputPlan *plan) {
                                   return planGesture(object, steps, plan);
                               }});
    return Inspector::self()->voidResult();
}

} // namespace Vantle::QtWrapper
