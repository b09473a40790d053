#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/dragrules.h"
#include "wrappers/qt/functions/gesturesteps_p.h"
#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/pointerpath_p.h"
#include "wrappers/qt/functions/pointerscript_p.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace Vantle::QtWrapper {

namespace {

// In milliseconds.
constexpr int DoubleTapGap = 40;
/// From here on the recorder writes the delay of a drag, in tens of milliseconds.
constexpr int ShortestRecordedDelay = 800;
constexpr int MiddleOfTen = 4;

/// Writes the steps of what fingers do.
class TouchScript : public PointerScript
{
public:
    using PointerScript::PointerScript;

    void press(int wait) { oneFinger(QEventPoint::Pressed, wait, 0); }
    void moveTo(QPointF global, int wait)
    {
        setPosition(global);
        oneFinger(QEventPoint::Updated, wait, 0);
    }
    void release(int wait, int rest = 0) { oneFinger(QEventPoint::Released, wait, rest); }

    void touch(const QList<Finger> &fingers, int wait, int rest = 0)
    {
        const bool letsGo = std::all_of(fingers.begin(), fingers.end(),
                                        [](const Finger &finger) { return finger.state == QEventPoint::Released; });
        add({wait, rest, letsGo,
             [window = window(), fingers](InputDevices &devices) { devices.touch(window, fingers); }});
    }

private:
    void oneFinger(QEventPoint::State state, int wait, int rest)
    {
        Finger finger;
        finger.id = 1;
        finger.state = state;
        finger.position = position();
        touch({finger}, wait, rest);
    }
};

SharedPtr<Object> fail(const QString &message)
{
    Inspector::self()->raiseError(message);
    return nullptr;
}

/// Plays what \p write does with a finger at the point that the call wants,
/// with the modifiers held.
SharedPtr<Object> play(const QString &function, const Interaction &call,
                       const std::function<void(TouchScript *)> &write)
{
    return playAtPoint(function, call, [call, write](const PointOfAction &start, InputPlan *plan) {
        TouchScript script(start, plan);
        script.pressModifiers(call.modifiers);
        write(&script);
        script.releaseModifiers(call.modifiers);
        return QString();
    });
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
        script->release(PressHold);
    });
}

SharedPtr<Object> doubleTap(const Interaction &call)
{
    return play(QStringLiteral("doubleTap"), call, [](TouchScript *script) {
        script->press(Moment);
        script->release(PressHold);
        script->press(DoubleTapGap);
        script->release(PressHold);
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
                    script->release(PressHold, RestAfterDrag);
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
    if (!isReadyFor(function, call.object, std::nullopt))
        return nullptr;
    InputPlayer::self()->play({function, call.object, true, [object = call.object, steps](InputPlan *plan) {
                                   return planGesture(object, steps, plan);
                               }});
    return Inspector::self()->voidResult();
}

} // namespace Vantle::QtWrapper
