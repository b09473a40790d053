#pragma once

#include "hook/object.h"

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/qnamespace.h>
#include <QtGui/QWindow>

#include <functional>
#include <vector>

namespace Vantle::QtWrapper {

class InputDevices;

/// One moment of an action: what is delivered without the event loop turning.
struct InputStep
{
    /// Milliseconds from the beginning of the step before, or of the action.
    int wait = 0;
    /// How many milliseconds later than that the events claim to be.
    int rest = 0;
    /// Whether it only lets go of what is held.
    bool letsGo = false;
    std::function<void(InputDevices &devices)> deliver;
};

/// What is held beyond the ends of actions, and where the mouse is.
struct HeldInput
{
    QPointer<QWindow> mouseWindow; ///< null before the mouse has been anywhere
    QPointF mousePosition;         ///< on the screen
    Qt::MouseButtons buttons;
    /// The window where the first of the buttons was pressed, which gets all
    /// that the mouse does until the last is up.
    QPointer<QWindow> pressWindow;
    QList<int> keys; ///< without those of modifiers
    Qt::KeyboardModifiers modifiers;
};

/// Where and how an action is carried out, settled when its turn comes.
struct InputPlan
{
    /// What is held when the action begins.
    HeldInput before;
    QPointer<QWindow> window;
    /// The point of action in the window's coordinates.
    QPointF point;
    std::vector<InputStep> steps;
};

/// What one call of a script function makes the player do.
struct InputAction
{
    /// The name of the script function.
    QString function;
    SharedPtr<Object> target;
    /// Whether the target's window must be the active one, as it is when a user
    /// acts on it.
    bool activates = true;
    /// Makes the plan; returns why it can't, empty on success.
    std::function<QString(InputPlan *plan)> prepare;
};

} // namespace Vantle::QtWrapper
