#include "wrappers/qt/functions/mousescript_p.h"

#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/pointerpath_p.h"

namespace Vantle::QtWrapper {

MouseScript::MouseScript(const PointOfAction &start, Qt::MouseButton button, InputPlan *plan)
    : PointerScript(start, plan)
    , m_button(button)
{
}

void MouseScript::comeTo(const PointOfAction &point, const HeldInput &before)
{
    const bool isThere = before.mouseWindow == point.window && before.mousePosition == point.global;
    for (const Waypoint &waypoint : wayInto(isThere || before.buttons ? QRectF() : point.area, point.global))
        moveTo(waypoint.position, waypoint.wait);
}

void MouseScript::moveTo(QPointF global, int wait)
{
    setPosition(global);
    add({wait, 0, false, [window = window(), global](InputDevices &devices) { devices.moveMouse(window, global); }});
}

void MouseScript::press(int wait)
{
    add({wait, 0, false, [window = window(), at = position(), button = m_button](InputDevices &devices) {
             devices.pressButton(window, at, button);
         }});
}

void MouseScript::release(int wait, int rest)
{
    add({wait, rest, true, [window = window(), at = position(), button = m_button](InputDevices &devices) {
             devices.releaseButton(window, at, button);
         }});
}

void MouseScript::turnWheel(QPoint angle, int wait)
{
    add({wait, 0, false,
         [window = window(), at = position(), angle](InputDevices &devices) { devices.turnWheel(window, at, angle); }});
}

void MouseScript::endScrolling(const SharedPtr<Object> &object, const ScrollGoal &goal, int wait)
{
    // What doesn't scroll has nowhere to end.
    add({wait, 0, true, [object, goal](InputDevices &) { scroll(object, goal); }});
}

void MouseScript::hold(Qt::KeyboardModifiers modifiers, int wait)
{
    if (modifiers) {
        add({0, 0, false, [window = window(), button = m_button, modifiers](InputDevices &devices) {
                 devices.holdModifiersWith(button, window, modifiers);
             }});
    }
    press(wait);
}

void MouseScript::letGo(int wait)
{
    release(wait);
    add({0, 0, true, [window = window(), button = m_button](InputDevices &devices) {
             devices.releaseModifiersOf(button, window);
         }});
}

} // namespace Vantle::QtWrapper
