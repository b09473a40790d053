#pragma once

#include "wrappers/qt/functions/pointerscript_p.h"

namespace Vantle::QtWrapper {

/// Writes the steps of what the mouse does with one button. Waits are
/// milliseconds from the step before.
class MouseScript : public PointerScript
{
public:
    /// \p plan must outlive the script.
    MouseScript(const PointOfAction &start, Qt::MouseButton button, InputPlan *plan);

    /// Has the mouse come to \p point as a hand brings it: into what is there, by
    /// the edge, and to the point.
    void comeTo(const PointOfAction &point, const HeldInput &before);
    void moveTo(QPointF global, int wait);
    void press(int wait);
    /// The pointer claims to have rested for \p rest milliseconds more.
    void release(int wait, int rest = 0);
    /// \p angle in eighths of a degree.
    void turnWheel(QPoint angle, int wait);

    /// Brings what the wheel has set moving to where it is to end.
    void endScrolling(const SharedPtr<Object> &object, const ScrollGoal &goal, int wait);

    /// Holds the button beyond the end of the action, and the keys of
    /// \p modifiers with it.
    void hold(Qt::KeyboardModifiers modifiers, int wait);
    /// Lets go of a button that is held in this way.
    void letGo(int wait);

private:
    Qt::MouseButton m_button;
};

} // namespace Vantle::QtWrapper
