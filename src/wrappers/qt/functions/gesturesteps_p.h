#pragma once

#include "hook/touchbuilder.h"
#include "wrappers/qt/functions/inputdevices_p.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <vector>

namespace Vantle::QtWrapper {

/// One touch event of a gesture.
struct GestureStep
{
    int wait = 0; ///< milliseconds behind the step before
    QList<Finger> fingers;
};

/// The touch events that \p gesture is made of; their positions are in the
/// coordinates of the gesture. What fingers do follows from the steps: a finger
/// comes down with the first of the successive steps that it is in and leaves
/// with the last. One that is in a single step gets a second event to leave.
///
/// A gesture that no hand could make gives nothing, and \p problem says why:
/// one without fingers, with a finger twice in a step, with time that goes back.
std::vector<GestureStep> gestureSteps(const TouchBuilder::MultiTouchInfo &gesture, QString *problem);

} // namespace Vantle::QtWrapper
